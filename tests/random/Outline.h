// A few points of all that an entity draws, in the order of its primitives: those by which one sees whether
// it was moved without being bent.
#pragma once

#include "dbents.h"
#include "shape/Sink.h"

#include <cmath>
#include <vector>

namespace qx::tests {

class Outline final : public shape::Sink {
public:
    explicit Outline(const AcDbEntity& entity) { entity.shape(*this); }

    void segment(const shape::Segment& segment) override {
        points.push_back(segment.start);
        points.push_back(segment.end);
    }
    /// It does not matter where a full circle begins.
    void arc(const shape::EllipticArc& arc) override {
        if (arc.isClosed()) {
            points.push_back(arc.centre);
            points.push_back(arc.centre + arc.u.crossProduct(arc.v) / std::max(arc.u.length(), 1e-300));
            return;
        }
        for (int i = 0; i <= 4; ++i)
            points.push_back(arc.at(std::cos(arc.sweep * i / 4), std::sin(arc.sweep * i / 4)));
    }
    void text(const shape::TextRun& run) override {
        for (const AcGePoint3d& corner : run.inkCorners()) points.push_back(corner);
    }

    void bezier(const shape::Bezier& curve) override {
        for (const shape::WeightedPoint& each : curve.controls()) points.push_back(each.point);
    }
    void endless(const shape::Endless& line) override {
        points.push_back(line.base);
        points.push_back(line.base + line.along);
    }

    std::vector<AcGePoint3d> points;
};

} // namespace qx::tests
