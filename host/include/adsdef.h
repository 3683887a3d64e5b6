// Plain types of the acedXxx functions.
#pragma once

#include "adesk.h"

using ads_real = double;
using ads_point = ads_real[3];
/// An entity or a selection set, as the acedXxx functions name them.
using ads_name = Adesk::Int64[2];

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    Adesk::Int64 rlname[2];
    Adesk::Int32 rlong;
};

/// One link of a chain of values; `restype` is a type code or a DXF group code.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};
