// Printing on the command line.
#pragma once

#include "adscodes.h"
#include "adsdef.h"
#include "qxexport.h"

/// Prints as printf does, without adding a line end: %s takes a wide string. A line feed at the beginning
/// starts a line, but leaves no blank one when the cursor stands at the start of a line already. RTNORM;
/// RTERROR without a session.
QX_HOST_API int acutPrintf(const ACHAR* format, ...);

/// Frees a string that the host gave, and sets the pointer to null.
QX_HOST_API void acutDelString(ACHAR*& text);
