#include "rxmfcapi.h"

// This platform's modules carry no string tables.
int qxLoadString(HINSTANCE, unsigned, ACHAR*, int) { return 0; }
