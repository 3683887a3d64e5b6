// All of the editor's C functions with their types and codes.
#pragma once

#include "acedads.h"
#include "adscodes.h"
#include "adsdef.h"
