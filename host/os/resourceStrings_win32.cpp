#include "rxmfcapi.h"

#include <windows.h>

int qxLoadString(HINSTANCE instance, unsigned id, ACHAR* buffer, int capacity) {
    ACHAR first = 0;
    // Without a string the call would still close the buffer.
    return ::LoadStringW(instance, id, &first, 2) > 0 ? ::LoadStringW(instance, id, buffer, capacity) : 0;
}
