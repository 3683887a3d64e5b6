// What an entity draws, kept as points in the order of its primitives: many on each curve for its box, and
// those by which a shape can be compared with another point by point. It does not matter where a full circle
// begins: such a one is compared by its centre and its axis, which points the other way when the shape is to
// be compared with a mirrored one.
#pragma once

#include "dbents.h"
#include "shape/Sink.h"
#include "shape/boxText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

class RecordedShape final : public qx::shape::Sink {
public:
    static constexpr int samplesPerArc = 720, few = 48;

    /// `axisSign` is that of the determinant of what the points will go through.
    explicit RecordedShape(const AcDbEntity& entity, double axisSign = 1, int samples = samplesPerArc)
        : axisSign_{axisSign}, samples_{samples} {
        entity.shape(*this);
    }

    void segment(const qx::shape::Segment& segment) override {
        add(segment.start);
        add(segment.end);
    }
    void arc(const qx::shape::EllipticArc& arc) override {
        reach += (arc.u.length() + arc.v.length()) * arc.sweep / samples_;
        for (int i = 0; i <= samples_; ++i) {
            const double t = arc.sweep * i / samples_;
            points.push_back(arc.at(std::cos(t), std::sin(t)));
            if (!isCircle(arc)) compared.push_back(points.back());
        }
        if (!isCircle(arc)) return;
        compared.push_back(arc.centre);
        compared.push_back(arc.centre +
                           arc.u.crossProduct(arc.v) * (axisSign_ / std::max(arc.u.length(), 1e-300)));
    }
    void bezier(const qx::shape::Bezier& curve) override {
        double hull = 0;
        for (int i = 1; i <= curve.degree; ++i) {
            const auto at = static_cast<std::size_t>(i);
            hull += curve.points[at].point.distanceTo(curve.points[at - 1].point);
        }
        reach += hull / 20;
        for (int i = 0; i <= samples_ / 12; ++i) add(curve.at(i * 12.0 / samples_));
    }
    void text(const qx::shape::TextRun& run) override {
        for (const AcGePoint3d& corner : run.inkCorners()) add(corner);
    }
    void endless(const qx::shape::Endless& line) override {
        add(line.base);
        add(line.base + line.along);
    }

    std::vector<AcGePoint3d> points, compared;
    double reach = 0; ///< no drawn point is farther than this from one of `points`, segments and text aside

private:
    double axisSign_;
    int samples_;

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

/// The straight edges that it draws, "0,0-1,0 ", hidden ones in brackets.
class Edges final : public qx::shape::Sink {
public:
    explicit Edges(const AcDbEntity& entity) { entity.shape(*this); }
    void segment(const qx::shape::Segment& segment) override {
        std::string both = shapes::pointsText(std::array{segment.start, segment.end});
        both[both.find(' ')] = '-';
        all += segment.isHidden ? "(" + both.substr(0, both.size() - 1) + ") " : both;
    }
    void arc(const qx::shape::EllipticArc&) override {}
    void text(const qx::shape::TextRun&) override {}
    std::string all;
};
