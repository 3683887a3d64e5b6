// The edge by which an object is aligned: where it is turned, and the direction that it has of its own. This
// is the one place that tells the kinds of objects apart; arcs have no such edge, see turnArc().
#pragma once

#include "dbmain.h"
#include "gepnt2d.h"
#include "gepnt3d.h"

#include <optional>

namespace qx::objectalign {

struct AlignmentEdge {
    AcGePoint3d basePoint = {};
    /// The other end; the base point itself where what comes to a line or point is that point alone.
    AcGePoint3d secondPoint = {};
    double edgeAngle = 0;    ///< radians; not always the direction from base to second point
    double extraSpacing = 0; ///< from the edge to the outline
    bool flipAllowed = true; ///< whether a turn may be taken back by a half turn
    bool isRound = false;
    bool isArc = false; ///< then nothing else counts

    /// The turn that brings the edge to the angle, the short way where that is allowed.
    double turnTo(double targetAngle) const;
};

/// What the edge is chosen for. The end or vertex nearer to the reference wins.
struct EdgeRequest {
    enum class Purpose {
        line, ///< distances are measured in the XY plane
        point ///< distances to ends are measured in space; where a kind has no edge of its own, its middle
              ///< counts
    };
    Purpose purpose;
    AcGePoint3d reference;
    double targetAngle; ///< radians
};

/// What an alignment answers for a kind of object that it does not handle: the object was skipped.
inline constexpr int notHandled = 364;

/// The edge between two ends, at its full angle; of equally near ones the second is the base point.
AlignmentEdge edgeBetween(const AcGePoint3d& start, const AcGePoint3d& end, const EdgeRequest& request);

/// Opens the object and finds its edge. notHandled for a kind that is not aligned, and for a polyline whose
/// vertices are all one point; the status of the object or of a vertex that can't be opened; eOk.
int readAlignmentEdge(AcDbObjectId id, const EdgeRequest& request, AlignmentEdge& edge);

/// An object that was turned, and what of it is to come to a point; without a middle it stays where it is.
struct Turned {
    int status;
    std::optional<AcGePoint2d> middle = std::nullopt;
    double extraSpacing = 0;
};

/// Turns the object about the base point of its edge until that has the angle. The middle is that of the
/// edge.
Turned turnByEdge(AcDbObjectId id, const AlignmentEdge& edge, double targetAngle);

} // namespace qx::objectalign
