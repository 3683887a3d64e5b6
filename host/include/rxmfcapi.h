// Resource handles: which module's dialogs, icons and strings are looked up first. On platforms without
// resources the current handle is a plain value of the process that is kept and given back, nothing more.
#pragma once

#include "adesk.h"
#include "qxexport.h"

struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;

/// The current resource handle; the host's own until somebody sets another.
QX_HOST_API HINSTANCE AfxGetResourceHandle();
QX_HOST_API void AfxSetResourceHandle(HINSTANCE instance);

/// The host's own resources.
QX_HOST_API HINSTANCE acedGetAcadResourceInstance();

/// Copies a string of a module's string table, cut to `capacity` characters with the closing 0. Gives its
/// length, 0 when there is no such string (the buffer is then unchanged).
QX_HOST_API int qxLoadString(HINSTANCE instance, unsigned id, ACHAR* buffer, int capacity);
