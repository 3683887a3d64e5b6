// Marks what the host library shows to programs, modules and tests (QX_HOST_API), and what a module shows to
// the host (QX_MODULE_API). Everything else stays inside.
#pragma once

#if defined(_WIN32)
#if defined(QX_HOST_BUILD)
#define QX_HOST_API __declspec(dllexport)
#else
#define QX_HOST_API __declspec(dllimport)
#endif
#define QX_MODULE_API __declspec(dllexport)
#else
#define QX_HOST_API __attribute__((visibility("default")))
#define QX_MODULE_API __attribute__((visibility("default")))
#endif
