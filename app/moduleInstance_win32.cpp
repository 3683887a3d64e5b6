// A module's instance is the address that its file is mapped to.
#include "dbxEntryPoint.h"

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;

HINSTANCE _hdllInstance = reinterpret_cast<HINSTANCE>(&__ImageBase);
