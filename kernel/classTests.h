// Class tests: is an open entity of a class, or of one derived from it?
//
// Each test gives the same entity back, typed, or null when it is of another branch of the hierarchy; null
// gives null. Derivation counts, not the exact class. Nothing is opened or closed.
#pragma once

#include "dbelipse.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbpl.h"

namespace qx::kernel {

template <class T> T* entityAs(AcDbEntity* entity) {
    return entity && entity->isA()->isDerivedFrom(T::desc()) ? static_cast<T*>(entity) : nullptr;
}

inline constexpr auto asLine = entityAs<AcDbLine>;
inline constexpr auto asPolyline = entityAs<AcDbPolyline>;
inline constexpr auto asPolyline2d = entityAs<AcDb2dPolyline>;
inline constexpr auto asPolyline3d = entityAs<AcDb3dPolyline>;
inline constexpr auto asArc = entityAs<AcDbArc>;
inline constexpr auto asCircle = entityAs<AcDbCircle>;
inline constexpr auto asEllipse = entityAs<AcDbEllipse>;
inline constexpr auto asText = entityAs<AcDbText>;
inline constexpr auto asMText = entityAs<AcDbMText>;
inline constexpr auto asBlockReference = entityAs<AcDbBlockReference>;

} // namespace qx::kernel
