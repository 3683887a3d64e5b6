#include "shape/NearestSink.h"

#include "shape/plane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qx::shape {
namespace {

/// A parameter of a curve as cosine and sine.
struct Direction {
    double cosine, sine;
};

/// An arc's ellipse in the plane, brought to perpendicular axes and turned and mirrored so that the point
/// whose distance is asked for has coordinates x, y >= 0. Parameters here are counted from the long axis.
class PrincipalEllipse {
public:
    PrincipalEllipse(const EllipticArc& arc, const AcGePoint2d& from) {
        const AcGeVector2d u = inPlane(arc.u), v = inPlane(arc.v);
        setPhase(u, v);
        const AcGeVector2d major = u * phase_.cosine + v * phase_.sine;
        const AcGeVector2d minor = v * phase_.cosine - u * phase_.sine;
        longRadius_ = major.length();
        shortRadius_ = minor.length();
        const AcGeVector2d xAxis = longRadius_ > 0 ? major / longRadius_ : AcGeVector2d::kXAxis;
        const AcGeVector2d yAxis = cross(xAxis, minor) < 0 ? -xAxis.perpVector() : xAxis.perpVector();
        const AcGeVector2d offset = from - inPlane(arc.centre);
        setPoint(offset.dotProduct(xAxis), offset.dotProduct(yAxis));
    }

    /// Parameter, in the arc's own count, of the point of the whole ellipse that is nearest: it lies in the
    /// same quarter as the point, where the derivative of the distance changes its sign exactly once.
    Direction nearest() const {
        if (isCircle_) return circleDirection();
        return inArc(minimumBetween({1, 0}, {0, 1}));
    }

    /// The only other place where the distance may have a local minimum: the quarter across the long axis,
    /// between the end of the short axis and the parameter where the two terms of the derivative balance.
    Direction secondNearest() const {
        const double a = std::cbrt(x_ * longRadius_), b = std::cbrt(y_ * shortRadius_),
                     size = std::hypot(a, b);
        const Direction balance = size > 0 ? Direction{a / size, -b / size} : Direction{1, 0};
        return inArc(minimumBetween({0, -1}, balance));
    }

private:
    // Half of the angle with cosine (uu - vv) / spread and sine 2 uv / spread, without trigonometry and
    // without cancellation.
    void setPhase(const AcGeVector2d& u, const AcGeVector2d& v) {
        const double difference = u.lengthSqrd() - v.lengthSqrd(), mixed = 2 * u.dotProduct(v);
        const double spread = std::hypot(difference, mixed);
        isCircle_ = spread <= 1e-14 * (u.lengthSqrd() + v.lengthSqrd());
        if (isCircle_) return;
        const double large = std::sqrt((1 + std::abs(difference) / spread) / 2);
        const double small = std::abs(mixed) / (2 * spread * large);
        phase_ = difference >= 0 ? Direction{large, small} : Direction{small, large};
        if (mixed < 0) phase_.sine = -phase_.sine;
    }

    void setPoint(double x, double y) {
        x_ = std::abs(x);
        y_ = std::abs(y);
        if (x < 0) xSign_ = -1;
        if (y < 0) ySign_ = -1;
    }

    /// Half the derivative of the squared distance by the parameter.
    double slope(const Direction& d) const {
        const double flattening = longRadius_ * longRadius_ - shortRadius_ * shortRadius_;
        return (x_ * longRadius_ - flattening * d.cosine) * d.sine - y_ * shortRadius_ * d.cosine;
    }

    // Bisection with directions in place of angles: halving one means adding two. `falling` and `rising` are
    // at most a quarter turn apart.
    Direction minimumBetween(Direction falling, Direction rising) const {
        for (int i = 0; i < 54; ++i) {
            const double c = falling.cosine + rising.cosine, s = falling.sine + rising.sine;
            const double size = std::sqrt(c * c + s * s);
            const Direction middle{c / size, s / size};
            (slope(middle) < 0 ? falling : rising) = middle;
        }
        return rising;
    }

    Direction circleDirection() const {
        const double size = std::hypot(x_, y_);
        return size > 0 ? inArc({x_ / size, y_ / size}) : inArc({1, 0});
    }

    Direction inArc(const Direction& d) const {
        const double c = d.cosine * xSign_, s = d.sine * ySign_;
        return {c * phase_.cosine - s * phase_.sine, s * phase_.cosine + c * phase_.sine};
    }

    Direction phase_{1, 0};
    double longRadius_ = 0, shortRadius_ = 0;
    double x_ = 0, y_ = 0, xSign_ = 1, ySign_ = 1;
    bool isCircle_ = false;
};

bool isInside(const std::array<AcGePoint3d, 4>& corners, const AcGePoint2d& p) {
    int left = 0, right = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const AcGePoint2d a = inPlane(corners[i]), b = inPlane(corners[(i + 1) % 4]);
        const double side = cross(b - a, p - a);
        left += side > 0;
        right += side < 0;
    }
    return (left == 0) != (right == 0); // neither occurs for a box without area only
}

} // namespace

void NearestSink::offer(const AcGePoint3d& candidate) {
    const double distance = (inPlane(candidate) - inPlane(from_)).length();
    if (!(distance < distance_)) return;
    distance_ = distance;
    foot_ = candidate;
    hasFoot_ = true;
}

void NearestSink::segment(const Segment& segment) {
    if (!isFinite(segment)) return;
    const AcGeVector3d way = segment.end - segment.start;
    const AcGeVector2d flat = inPlane(way), offset = inPlane(from_) - inPlane(segment.start);
    const double along = flat.dotProduct(offset), all = flat.lengthSqrd();
    if (!(along > 0)) return offer(segment.start);
    if (along >= all) return offer(segment.end);
    offer(segment.start + way * (along / all));
}

void NearestSink::endless(const Endless& line) {
    if (!isFinite(line)) return;
    const AcGeVector2d flat = inPlane(line.along);
    const double along = flat.dotProduct(inPlane(from_) - inPlane(line.base)), all = flat.lengthSqrd();
    const bool isAtBase = all == 0 || (along < 0 && !line.goesBothWays);
    offer(isAtBase ? line.base : line.base + line.along * (along / all));
}

void NearestSink::arc(const EllipticArc& arc) {
    if (!isFinite(arc)) return;
    const AcGePoint2d from = inPlane(from_);
    const double reach = inPlane(arc.u).length() + inPlane(arc.v).length();
    if ((from - inPlane(arc.centre)).length() - reach > distance_) return;
    offer(arc.start());
    offer(arc.end());
    const PrincipalEllipse ellipse{arc, from};
    Direction d = ellipse.nearest();
    if (!arc.contains(d.cosine, d.sine)) d = ellipse.secondNearest();
    if (arc.contains(d.cosine, d.sine)) offer(arc.at(d.cosine, d.sine));
}

namespace {

/// In the plane.
double distanceTo(const Box& box, const AcGePoint3d& p) {
    const double x = std::max({box.min.x - p.x, p.x - box.max.x, 0.0});
    const double y = std::max({box.min.y - p.y, p.y - box.max.y, 0.0});
    return std::hypot(x, y);
}

} // namespace

void NearestSink::bezier(const Bezier& curve) {
    if (!isFinite(curve)) return;
    offer(curve.start());
    offer(curve.end());
    const double tolerance = flatness * sizeOf(hullBox(curve));
    subdivide(curve, [&](const Bezier& piece, bool isSmall) {
        if (distanceTo(hullBox(piece), from_) >= distance_) return false;
        if (!isSmall && bendOf(piece) > tolerance) return true;
        segment({piece.start(), piece.end()});
        return false;
    });
}

void NearestSink::text(const TextRun& run) {
    if (run.extent.blank || !isFinite(run)) return;
    const auto corners = run.inkCorners();
    if (isInside(corners, inPlane(from_))) return offer({from_.x, from_.y, run.origin.z});
    for (std::size_t i = 0; i < 4; ++i) segment({corners[i], corners[(i + 1) % 4]});
}

} // namespace qx::shape
