// What an entity draws, kept as points in the order of its primitives: many on each curve for its box, and
// those by which a shape can be compared with another point by point. It does not matter where a full circle
// begins: such a one is compared by its centre and its axis, which points the other way when the shape is to
// be compared with a mirrored one.
#pragma once

#include "dbents.h"
#include "shape/Sink.h"

#include <cmath>
#include <vector>

class RecordedShape final : public qx::shape::Sink {
public:
    static constexpr int samplesPerArc = 720, samplesPerCurve = 60;

    /// `axisSign` is that of the determinant of what the points will go through.
    explicit RecordedShape(const AcDbEntity& entity, double axisSign = 1) : axisSign_{axisSign} {
        entity.shape(*this);
    }

    void segment(const qx::shape::Segment& segment) override {
        add(segment.start);
        add(segment.end);
    }
    void arc(const qx::shape::EllipticArc& arc) override {
        reach += (arc.u.length() + arc.v.length()) * arc.sweep / samplesPerArc;
        for (int i = 0; i <= samplesPerArc; ++i) {
            const double t = arc.sweep * i / samplesPerArc;
            points.push_back(arc.at(std::cos(t), std::sin(t)));
            if (!isCircle(arc)) compared.push_back(points.back());
        }
        if (!isCircle(arc)) return;
        compared.push_back(arc.centre);
        compared.push_back(arc.centre + arc.u.crossProduct(arc.v) * (axisSign_ / arc.u.length()));
    }
    void bezier(const qx::shape::Bezier& curve) override {
        double hull = 0;
        for (int i = 1; i <= curve.degree; ++i) {
            const auto at = static_cast<std::size_t>(i);
            hull += curve.points[at].point.distanceTo(curve.points[at - 1].point);
        }
        reach += hull / 20;
        for (int i = 0; i <= samplesPerCurve; ++i) add(curve.at(static_cast<double>(i) / samplesPerCurve));
    }
    void text(const qx::shape::TextRun& run) override {
        for (const AcGePoint3d& corner : run.inkCorners()) add(corner);
    }

    std::vector<AcGePoint3d> points, compared;
    double reach = 0; ///< no drawn point is farther than this from one of `points`, segments and text aside

private:
    double axisSign_;

    static bool isCircle(const qx::shape::EllipticArc& arc) {
        const double size = arc.u.length();
        return arc.isClosed() && std::abs(size - arc.v.length()) < 1e-9 * size &&
               std::abs(arc.u.dotProduct(arc.v)) < 1e-9 * size * size;
    }
    void add(const AcGePoint3d& point) {
        points.push_back(point);
        compared.push_back(point);
    }
};
