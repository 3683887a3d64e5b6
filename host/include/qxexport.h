// Marks what the host library shows to programs, modules and tests. Everything else stays inside it.
#pragma once

#if defined(_WIN32)
#if defined(QX_HOST_BUILD)
#define QX_HOST_API __declspec(dllexport)
#else
#define QX_HOST_API __declspec(dllimport)
#endif
#else
#define QX_HOST_API __attribute__((visibility("default")))
#endif
