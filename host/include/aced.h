// The editor: what commands ask it for, how they are registered, and the documents they run in.
#pragma once

#include "accmd.h"
#include "acdocman.h"
#include "adslib.h"
