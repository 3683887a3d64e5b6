// Fixed-size names of the host API and its character type.
#pragma once

#include <cstdint>

using ACHAR = wchar_t;

#ifndef ACRX_T
#define ACRX_T(text) L##text
#endif
#ifndef _T
#define _T(text) L##text
#endif

namespace Adesk {
using Boolean = bool;
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using GsMarker = std::intptr_t;
constexpr bool kFalse = false;
constexpr bool kTrue = true;
} // namespace Adesk
