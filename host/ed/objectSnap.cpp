#include "ed/objectSnap.h"

#include "dbents.h"
#include "dbmtext.h"
#include "shape/NearestSink.h"
#include "shape/intersections.h"
#include "shape/plane.h"

#include <cmath>
#include <vector>

namespace qx::ed {
namespace {

using shape::EllipticArc;
using shape::Segment;
using shape::TextRun;

/// More lines than that within reach are a black spot: nobody means a certain one of their crossings.
constexpr std::size_t mostCrossing = 64;

class SnapSink final : public shape::Sink {
public:
    SnapSink(const AcGePoint3d& cursor, double reach) : cursor_{cursor}, reach_{reach}, distance_{reach} {}

    void segment(const Segment& segment) override {
        if (!passesBy([&](shape::Sink& sink) { sink.segment(segment); })) return;
        offer(SnapKind::endpoint, segment.start);
        offer(SnapKind::endpoint, segment.end);
        offer(SnapKind::midpoint, segment.start + (segment.end - segment.start) / 2);
        near_.push_back({segment});
    }
    void arc(const EllipticArc& arc) override {
        if (!shape::isFinite(arc)) return;
        offer(SnapKind::centre, arc.centre);
        if (!passesBy([&](shape::Sink& sink) { sink.arc(arc); })) return;
        if (!arc.isClosed()) {
            offer(SnapKind::endpoint, arc.start());
            offer(SnapKind::endpoint, arc.end());
            offer(SnapKind::midpoint, arc.at(std::cos(arc.sweep / 2), std::sin(arc.sweep / 2)));
        }
        offerQuadrants(arc);
        centre_ = arc.centre;
        near_.push_back({arc});
    }
    void text(const TextRun& run) override {
        passesBy([&](shape::Sink& sink) { sink.text(run); });
    }
    void offer(SnapKind kind, const AcGePoint3d& point) {
        const double distance = shape::inPlane(point).distanceTo(shape::inPlane(cursor_));
        const bool isFirst = !best_ && distance <= distance_;
        const double same = reach_ * 1e-9; // as far as rounding goes
        if (!isFirst && !(distance < distance_ - same)) return;
        best_ = {kind, point};
        distance_ = distance;
    }

    std::optional<Snap> result() {
        offerCrossings();
        if (best_) return best_;
        if (centre_) return Snap{SnapKind::centre, *centre_};
        if (foot_) return Snap{SnapKind::nearest, *foot_};
        return std::nullopt;
    }

private:
    template <class Hand> bool passesBy(Hand&& hand) {
        shape::NearestSink nearest{cursor_, reach_};
        hand(nearest);
        if (!nearest.hasFoot()) return false;
        if (!foot_ || nearest.distance() < footDistance_) {
            foot_ = nearest.foot();
            footDistance_ = nearest.distance();
        }
        return true;
    }
    // Where a circle reaches farthest to either side, up and down; of an ellipse the ends of its axes, of
    // which u is one when the two are perpendicular.
    void offerQuadrants(const EllipticArc& arc) {
        const double u = arc.u.length(), v = arc.v.length();
        const bool isCircle =
            std::abs(u - v) <= 1e-9 * u && std::abs(arc.u.dotProduct(arc.v)) <= 1e-9 * u * v;
        AcGeVector2d toRight{1, 0}, upwards{0, 1};
        if (isCircle) {
            toRight = AcGeVector2d{arc.u.x, arc.v.x};
            upwards = AcGeVector2d{arc.u.y, arc.v.y};
        }
        for (const AcGeVector2d& way : {toRight, upwards, -toRight, -upwards}) {
            const double length = way.length();
            if (length > 0 && arc.contains(way.x, way.y))
                offer(SnapKind::quadrant, arc.at(way.x / length, way.y / length));
        }
    }
    void offerCrossings() {
        if (near_.size() > mostCrossing) return;
        for (std::size_t i = 0; i < near_.size(); ++i)
            for (std::size_t k = i + 1; k < near_.size(); ++k)
                for (const AcGePoint3d& each : shape::intersections(near_[i], near_[k]))
                    offer(SnapKind::intersection, each);
    }

    AcGePoint3d cursor_;
    double reach_, distance_, footDistance_ = 0;
    std::optional<Snap> best_;
    std::optional<AcGePoint3d> centre_, foot_;
    std::vector<shape::Operand> near_;
};

std::optional<AcGePoint3d> insertionPoint(const AcDbEntity& entity) {
    if (const auto* reference = AcDbBlockReference::cast(&entity)) return reference->position();
    if (const auto* text = AcDbText::cast(&entity)) return text->position();
    if (const auto* text = AcDbMText::cast(&entity)) return text->location();
    return std::nullopt;
}

} // namespace

std::optional<Snap> snapAt(const db::Drawing& drawing, std::span<db::Record* const> entities,
                           const AcGePoint3d& cursor, double reach) {
    SnapSink sink{cursor, reach};
    for (db::Record* record : entities) {
        if (!drawing.isSelectable(record)) continue;
        const AcDbEntity& entity = *drawing.liveEntity(record);
        entity.shape(sink);
        if (const auto point = insertionPoint(entity)) sink.offer(SnapKind::insertion, *point);
    }
    return sink.result();
}

} // namespace qx::ed
