// How a point is typed: `x,y` or `x,y,z` in the user coordinate system, `@dx,dy[,dz]` from the last point,
// `*x,y[,z]` in world coordinates. Numbers are decimal, with `.` as the point, and finite.
#pragma once

#include "gepnt3d.h"
#include "qxexport.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace qx::ed {

/// A point as typed, not yet brought into any coordinate system.
struct TypedPoint {
    enum class Frame { user, relative, world };
    Frame frame = Frame::user;
    std::array<double, 3> coordinates{}; ///< z is 0 when it was not given

    friend bool operator==(const TypedPoint&, const TypedPoint&) = default;
};

/// Nothing for text that is no point.
QX_HOST_API std::optional<TypedPoint> parsePoint(std::string_view text);

/// A finite decimal number that takes the whole text; nothing for anything else.
QX_HOST_API std::optional<double> parseReal(std::string_view text);

/// A point as it can be typed: with as many digits as tell it from its neighbours.
QX_HOST_API std::string textOf(const AcGePoint3d& point, char between = ',');

} // namespace qx::ed
