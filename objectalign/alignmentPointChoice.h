// The point of a curve at which things are aligned, asked for at the command line.
#pragma once

#include "objectalign/AlignmentPoint.h"
#include "objectalign/ConstructionEntities.h"

#include <optional>

namespace qx::objectalign {

/// Asks for the curve and for a point on it, again and again until the point lies there. What a polyline's
/// segment or the tangent needs is drawn. Nothing when the person gives up, or when the curve is none of
/// those that can be used; that is said at the command line.
std::optional<AlignmentPoint> chooseAlignmentPoint(ConstructionEntities& construction);

} // namespace qx::objectalign
