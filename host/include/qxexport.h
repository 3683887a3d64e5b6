// Marks what the host library shows to programs, modules and tests (QX_HOST_API), and what a module shows to
// the host (QX_MODULE_API). Everything else stays inside. QX_CONSTINIT marks data that is complete before any
// code runs; where it points into the host library, some systems complete that of a module only when they
// load the module.
#pragma once

#if defined(_WIN32)
#if defined(QX_HOST_BUILD)
#define QX_HOST_API __declspec(dllexport)
#define QX_CONSTINIT constinit
#else
#define QX_HOST_API __declspec(dllimport)
#define QX_CONSTINIT
#endif
#define QX_MODULE_API __declspec(dllexport)
#else
#define QX_HOST_API __attribute__((visibility("default")))
#define QX_CONSTINIT constinit
#define QX_MODULE_API __attribute__((visibility("default")))
#endif
