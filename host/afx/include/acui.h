// The host's user-interface library.
#pragma once

#include "qxexport.h"

/// To be called by a module that shows dialogs, when it is attached. Safe to call more than once.
QX_HOST_API void InitAcUiDLL();
