#include "objectalign/AlignmentEdge.h"

#include "dbobjptr.h"
#include "gept3dar.h"
#include "kernel/classTests.h"
#include "kernel/midpoint.h"
#include "kernel/plane.h"
#include "kernel/polylineVertices.h"
#include "kernel/rotations.h"
#include "objectalign/angles.h"

#include <algorithm>
#include <memory>
#include <numbers>
#include <vector>

namespace qx::objectalign {
namespace {
using kernel::inPlane;
using kernel::inSpace;
using kernel::unitAt;
using Purpose = EdgeRequest::Purpose;

double distance(const EdgeRequest& request, const AcGePoint3d& point) {
    return request.purpose == Purpose::point ? point.distanceTo(request.reference)
                                             : inPlane(point).distanceTo(inPlane(request.reference));
}

double angleFromTo(const AcGePoint3d& from, const AcGePoint3d& to) { return inPlane(to - from).angle(); }

/// Upright text near the end of a turn is turned on rather than stood on its head.
bool mayFlipText(const EdgeRequest& request) { return request.targetAngle <= THREE_HALF_PI; }

AlignmentEdge edgeOf(const AcDbLine& line, const EdgeRequest& request) {
    return edgeBetween(line.startPoint(), line.endPoint(), request);
}

/// A rotation as it is seen in the XY plane: what looks at its drawing from behind, as mirrored things do,
/// turns the other way, from the negative x axis on.
double seenFromAbove(double rotation, const AcGeVector3d& normal) {
    return normal.z < 0 ? unitAt(std::numbers::pi - rotation).angle() : rotation;
}

/// A block turned past a half turn counts with the negative of what exceeds it, and so ends oblique: that is
/// how such blocks are told from upright ones.
AlignmentEdge edgeOf(const AcDbBlockReference& block, const EdgeRequest&) {
    const double rotation = seenFromAbove(block.rotation(), block.normal());
    return {block.position(), block.position(), rotation > PI ? PI - rotation : rotation};
}

/// Where the drawn text ends on its own baseline; the base point for text that draws nothing.
AcGePoint3d endOfBaseline(const AcDbText& text, double angle) {
    const AcGePoint3d base = text.position();
    AcDbEntity* copy = nullptr;
    const auto level = AcGeMatrix3d{}.setToRotation(-angle, AcGeVector3d{0, 0, 1}, base);
    if (text.getTransformedCopy(level, copy) != Acad::eOk) return base;
    const std::unique_ptr<AcDbEntity> owned{copy};
    AcDbExtents box;
    if (copy->getGeomExtents(box) != Acad::eOk) return base;
    const double right = box.maxPoint().x - base.x, left = box.minPoint().x - base.x;
    return base + inSpace(unitAt(angle) * (right > -left ? right : left));
}

AlignmentEdge edgeOf(const AcDbText& text, const EdgeRequest& request) {
    const double rotation = seenFromAbove(text.rotation(), text.normal());
    const bool needsEnd = request.purpose == Purpose::point;
    return {.basePoint = text.position(),
            .secondPoint = needsEnd ? endOfBaseline(text, rotation) : text.position(),
            .edgeAngle = rotation,
            .flipAllowed = mayFlipText(request)};
}

AlignmentEdge edgeOf(const AcDbMText& text, const EdgeRequest& request) {
    enum Corner { topLeft, topRight, bottomLeft, bottomRight, count };
    AcGePoint3dArray corners;
    text.getBoundingPoints(corners);
    const bool isDrawn = corners.length() == count;
    const AcGePoint3d left = isDrawn ? corners[bottomLeft] : text.location();
    const AcGePoint3d right = isDrawn ? corners[bottomRight] : text.location();
    const AcGeVector2d along =
        inPlane(right).isEqualTo(inPlane(left)) ? inPlane(text.direction()) : inPlane(right - left);
    return {.basePoint = left,
            .secondPoint = right,
            .edgeAngle = along.angle(),
            .flipAllowed = mayFlipText(request)};
}

AlignmentEdge edgeOf(const AcDbCircle& circle, const EdgeRequest&) {
    return {.basePoint = circle.center(),
            .secondPoint = circle.center(),
            .edgeAngle = 0,
            .extraSpacing = circle.radius(),
            .isRound = true};
}

AlignmentEdge edgeOf(const AcDbEllipse& ellipse, const EdgeRequest& request) {
    const AcGeVector3d major = ellipse.majorAxis();
    AlignmentEdge edge = edgeBetween(ellipse.center() + major, ellipse.center() - major, request);
    edge.edgeAngle = inPlane(major).angle();
    edge.extraSpacing = ellipse.minorRadius();
    return edge;
}

// ---- polylines

/// The vertices without those that repeat the one before; the last is before the first.
std::vector<AcGePoint3d> distinct(const AcGePoint3dArray& vertices) {
    std::vector<AcGePoint3d> distinct;
    for (const AcGePoint3d& vertex : vertices)
        if (distinct.empty() || !inPlane(vertex).isEqualTo(inPlane(distinct.back())))
            distinct.push_back(vertex);
    while (distinct.size() > 1 && inPlane(distinct.back()).isEqualTo(inPlane(distinct.front())))
        distinct.pop_back();
    return distinct;
}

/// The vertices of a polyline ranked by their distance from the reference in the XY plane. Of equally near
/// ones the first counts, the others have no rank.
class RankedVertices {
public:
    RankedVertices(std::vector<AcGePoint3d> vertices, const AcGePoint3d& reference)
        : vertices_{std::move(vertices)} {
        for (const AcGePoint3d& vertex : vertices_)
            distances_.push_back(inPlane(vertex).distanceTo(inPlane(reference)));
    }

    /// Needs two vertices at different places.
    bool hasEdge() const { return vertices_.size() > 1; }
    std::size_t nearest() const { return indexOf(std::min_element(distances_.begin(), distances_.end())); }
    std::size_t before(std::size_t i) const { return i > 0 ? i - 1 : vertices_.size() - 1; }
    std::size_t after(std::size_t i) const { return i + 1 < vertices_.size() ? i + 1 : 0; }
    const AcGePoint3d& operator[](std::size_t i) const { return vertices_[i]; }

    /// Of the two neighbours the nearer one, of equally near ones the one after.
    std::size_t nearerNeighbour(std::size_t i) const {
        return distances_[before(i)] < distances_[after(i)] ? before(i) : after(i);
    }
    /// The first neighbour by rank; nearerNeighbour() when neither has one.
    std::size_t firstNeighbourByRank(std::size_t i) const {
        const std::size_t previous = before(i), next = after(i);
        if (hasRank(previous) && hasRank(next))
            return distances_[previous] < distances_[next] ? previous : next;
        return hasRank(previous) ? previous : hasRank(next) ? next : nearerNeighbour(i);
    }

private:
    std::size_t indexOf(std::vector<double>::const_iterator found) const {
        return static_cast<std::size_t>(found - distances_.begin());
    }
    bool hasRank(std::size_t i) const {
        return indexOf(std::find(distances_.begin(), distances_.end(), distances_[i])) == i;
    }

    std::vector<AcGePoint3d> vertices_;
    std::vector<double> distances_;
};

int findEdgeOfPolyline(AcDbEntity& polyline, const EdgeRequest& request, AlignmentEdge& edge) {
    AcGePoint3dArray all;
    const auto status = kernel::readPolylineVertices(polyline, all);
    if (status != Acad::eOk) return status;
    const RankedVertices vertices{distinct(all), request.reference};
    if (!vertices.hasEdge()) return notHandled;
    const std::size_t base = vertices.nearest();
    const std::size_t second = request.purpose == Purpose::line ? vertices.nearerNeighbour(base)
                                                                : vertices.firstNeighbourByRank(base);
    edge = {vertices[base], vertices[second]};
    edge.edgeAngle = foldedEdgeAngle(angleFromTo(edge.basePoint, edge.secondPoint));
    return Acad::eOk;
}

std::optional<AlignmentEdge> edgeOf(AcDbEntity& entity, const EdgeRequest& request) {
    if (const auto* line = kernel::asLine(&entity)) return edgeOf(*line, request);
    if (const auto* block = kernel::asBlockReference(&entity)) return edgeOf(*block, request);
    if (const auto* text = kernel::asText(&entity)) return edgeOf(*text, request);
    if (const auto* text = kernel::asMText(&entity)) return edgeOf(*text, request);
    if (kernel::asArc(&entity)) return AlignmentEdge{.isArc = true};
    if (const auto* circle = kernel::asCircle(&entity)) return edgeOf(*circle, request);
    if (const auto* ellipse = kernel::asEllipse(&entity)) return edgeOf(*ellipse, request);
    return std::nullopt;
}

} // namespace

double AlignmentEdge::turnTo(double targetAngle) const {
    const double turnAngle = targetAngle - edgeAngle;
    return flipAllowed ? turnedTheShortWay(turnAngle) : turnAngle;
}

AlignmentEdge edgeBetween(const AcGePoint3d& start, const AcGePoint3d& end, const EdgeRequest& request) {
    const bool startIsNearer = distance(request, end) > distance(request, start);
    AlignmentEdge edge{startIsNearer ? start : end, startIsNearer ? end : start};
    edge.edgeAngle = angleFromTo(edge.basePoint, edge.secondPoint);
    return edge;
}

int readAlignmentEdge(AcDbObjectId id, const EdgeRequest& request, AlignmentEdge& edge) {
    const AcDbObjectPointer<AcDbEntity> entity{id};
    if (entity.openStatus() != Acad::eOk) return entity.openStatus();
    if (kernel::isPolyline(*entity.object())) return findEdgeOfPolyline(*entity.object(), request, edge);
    const auto found = edgeOf(*entity.object(), request);
    if (found) edge = *found;
    return found ? Acad::eOk : notHandled;
}

Turned turnByEdge(AcDbObjectId id, const AlignmentEdge& edge, double targetAngle) {
    const double turnAngle = edge.turnTo(targetAngle);
    AcGePoint2d middle = inPlane(kernel::midpointXY(edge.basePoint, edge.secondPoint));
    middle.rotateBy(turnAngle, inPlane(edge.basePoint));
    return {kernel::rotateEntity(id, edge.basePoint, turnAngle), middle, edge.extraSpacing};
}

} // namespace qx::objectalign
