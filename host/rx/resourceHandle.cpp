#include "rxmfcapi.h"

namespace {
HINSTANCE currentHandle = nullptr;
}

HINSTANCE AfxGetResourceHandle() { return currentHandle; }

void AfxSetResourceHandle(HINSTANCE instance) { currentHandle = instance; }

HINSTANCE acedGetAcadResourceInstance() { return nullptr; }
