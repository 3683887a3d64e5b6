// Object snaps: the exact point that a person means who clicks near it. Seen along Z; the point has the z of
// the object.
#pragma once

#include "db/Drawing.h"

#include <optional>
#include <span>

namespace qx::ed {

enum class SnapKind { endpoint, midpoint, centre, quadrant, intersection, insertion, nearest };

struct Snap {
    SnapKind kind;
    AcGePoint3d point; ///< world coordinates
};

/// Of the ends, middles, centres, quadrant and insertion points of these entities and the intersections of
/// what passes within `reach` of the cursor the one nearest to it, within reach; of several equally near the
/// one listed first. Where there is none: the centre of a circle or arc that passes within reach, then the
/// nearest point of whatever does. Nothing where nothing is in reach. World coordinates.
QX_HOST_API std::optional<Snap> snapAt(const db::Drawing& drawing, std::span<db::Record* const> entities,
                                       const AcGePoint3d& cursor, double reach);

} // namespace qx::ed
