#include "draw/SvgPen.h"

#include "draw/svgNumbers.h"
#include "draw/svgText.h"
#include "shape/plane.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace qx::draw {
namespace {

using shape::cross;
using std::numbers::pi;

/// The ellipse centre + u cos t + v sin t by its principal axes: at t = phase it is farthest from the centre.
struct PrincipalAxes {
    double phase, major, minor, turnDegrees;
};

// The squared distance from the centre is a constant plus (uu - vv) / 2 cos 2t + uv sin 2t.
PrincipalAxes principalAxes(const AcGeVector2d& u, const AcGeVector2d& v) {
    const double uu = u.lengthSqrd(), vv = v.lengthSqrd(), uv = u.dotProduct(v);
    const bool isCircle = std::hypot(2 * uv, uu - vv) <= 1e-7 * (uu + vv);
    const double phase = isCircle ? 0 : std::atan2(2 * uv, uu - vv) / 2;
    const AcGeVector2d axis = u * std::cos(phase) + v * std::sin(phase);
    const double major = axis.length();
    const double minor = major > 0 ? std::abs(cross(u, v)) / major : 0;
    return {phase, major, minor, isCircle ? 0 : std::remainder(std::atan2(axis.y, axis.x) * 180 / pi, 180)};
}

/// Up to the end point. A piece is never more than half of its ellipse.
std::string arcCommand(const PrincipalAxes& axes, bool isClockwiseAsSeen) {
    std::string command = "a";
    putNumber(command, axes.major);
    putNumber(command, axes.minor);
    putNumber(command, axes.turnDegrees, 1000000);
    return command += isClockwiseAsSeen ? " 0 1 " : " 0 0 ";
}

constexpr int mostCuts = 10;

/// The cubic with the ends of the curve, and its derivatives there; a cubic without weights itself.
shape::Bezier cubicLike(const shape::Bezier& curve) {
    const auto controls = curve.controls();
    const auto& first = controls.front();
    const auto& last = controls.back();
    const auto& second = controls[1];
    const auto& lastButOne = controls[controls.size() - 2];
    const double share = curve.degree / 3.0;
    return shape::cubic(first.point, (second.point - first.point) * (share * second.weight / first.weight),
                        last.point,
                        (last.point - lastButOne.point) * (share * lastButOne.weight / last.weight));
}

bool isLike(const shape::Bezier& cubic, const shape::Bezier& curve, double tolerance) {
    for (const double t : {0.2, 0.5, 0.8})
        if (!(cubic.at(t).distanceTo(curve.at(t)) <= tolerance)) return false;
    return true;
}

} // namespace

SvgPen::Spot SvgPen::spotAt(const AcGePoint2d& p) {
    return {std::llround(p.x * 1000), std::llround(p.y * 1000)};
}

void SvgPen::putOffset(const Spot& to) {
    putScaled(path_, to.x - at_.x, 1000);
    putScaled(path_, to.y - at_.y, 1000);
    at_ = to;
}

void SvgPen::moveTo(const Spot& to) {
    if (!path_.empty() && to == at_) {
        hasMark_ = false;
        return;
    }
    flushMark();
    path_ += 'M';
    putScaled(path_, to.x, 1000);
    putScaled(path_, to.y, 1000);
    at_ = to;
}

void SvgPen::lineTo(const Spot& to) {
    path_ += 'l';
    putOffset(to);
}

void SvgPen::arcTo(const Spot& to, const std::string& command) {
    if (to == at_) return;
    path_ += command;
    putOffset(to);
}

void SvgPen::flushMark() {
    if (std::exchange(hasMark_, false)) path_ += "m-3 0h6m-3-3v6m0-3";
}

void SvgPen::segment(const shape::Segment& segment) {
    if (segment.isHidden || !isDrawable(segment)) return;
    const AcGeVector3d way = segment.end - segment.start;
    const Spot start = spotAt(frame_.toPicture(segment.start));
    const bool goesOn = !path_.empty() && start == at_ && !hasMark_;
    moveTo(start);
    if (way.x != 0 || way.y != 0 || way.z != 0)
        lineTo(spotAt(frame_.toPicture(segment.end)));
    else if (!goesOn)
        hasMark_ = true;
}

void SvgPen::endless(const shape::Endless& line) {
    if (!isFinite(line)) return;
    if (const auto part = partWithin(frame_.world(), line)) segment(*part);
}

void SvgPen::arc(const shape::EllipticArc& arc) {
    if (!isDrawable(arc)) return;
    constexpr double slimmest = 0.2; // below it, rounded ends would bend a piece more than a line errs
    constexpr double largest = 1e6; // beyond it, a visible piece bends so little that a few chords are closer
    const AcGeVector2d u = frame_.toPicture(arc.u), v = frame_.toPicture(arc.v);
    const PrincipalAxes axes = principalAxes(u, v);
    const bool isOutsize = axes.major > largest, isStraight = isOutsize || axes.minor < slimmest;
    const std::string command = isStraight ? "" : arcCommand(axes, cross(u, v) > 0);
    const auto join = [&](const AcGePoint3d& to) {
        const Spot spot = spotAt(frame_.toPicture(to));
        isStraight ? lineTo(spot) : arcTo(spot, command);
    };

    moveTo(spotAt(frame_.toPicture(arc.start())));
    constexpr double smallest = 1e-6; // of what is worth a piece of its own
    const double step = isOutsize ? arc.sweep / 16 : pi / 2;
    double cut = isOutsize ? step : axes.phase - std::floor(axes.phase / step) * step;
    if (cut < smallest) cut += step;
    for (; cut < arc.sweep - smallest; cut += step) join(arc.at(std::cos(cut), std::sin(cut)));
    join(arc.isClosed() ? arc.start() : arc.end());
}

void SvgPen::curveTo(const shape::Bezier& cubic) {
    path_ += 'c';
    const Spot from = at_;
    for (std::size_t i = 1; i <= 3; ++i) {
        at_ = from;
        putOffset(spotAt(frame_.toPicture(cubic.points[i].point)));
    }
}

void SvgPen::bezier(const shape::Bezier& curve) {
    if (!isDrawable(curve)) return;
    const double tolerance = 0.01 / frame_.scale();
    moveTo(spotAt(frame_.toPicture(curve.start())));
    subdivide(
        curve,
        [&](const shape::Bezier& piece, bool isSmall) {
            const shape::Bezier cubic = cubicLike(piece);
            if (!isSmall && !isLike(cubic, piece, tolerance)) return true;
            curveTo(cubic);
            return false;
        },
        mostCuts);
}

void SvgPen::text(const shape::TextRun& run) {
    if (isDrawable(run)) putText(texts_, frame_, run);
}

void SvgPen::putElements(std::string& out, std::string_view attributes) {
    flushMark();
    if (!path_.empty()) out.append("<path").append(attributes).append(" d=\"").append(path_).append("\"/>\n");
    if (!texts_.empty() && attributes.empty()) out += texts_;
    if (!texts_.empty() && !attributes.empty())
        out.append("<g").append(attributes).append(">").append(texts_).append("</g>\n");
    path_.clear();
    texts_.clear();
}

} // namespace qx::draw
