// An SVG path as a viewer sees it: as points, arcs by the centre that follows from their ends and radii.
// Knows the commands M, m, l, h, v and a.
#pragma once

#include "gepnt2d.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <string>
#include <vector>

namespace pictures {

class PathPoints {
public:
    explicit PathPoints(const std::string& path) : next_(path.c_str()) {
        for (char command = 0; skipSpaces(), *next_;) {
            if (std::isalpha(static_cast<unsigned char>(*next_))) command = *next_++;
            if (!follow(command)) break;
        }
        isUnderstood = *next_ == 0;
    }

    std::vector<AcGePoint2d> points;
    std::size_t moves = 0, lines = 0, arcs = 0;
    bool isUnderstood = false;

private:
    bool follow(char command) {
        const AcGePoint2d from = points.empty() ? AcGePoint2d{} : points.back();
        const AcGeVector2d base = from.asVector();
        if (command == 'M')
            ++moves, points.push_back(point());
        else if (command == 'm')
            ++moves, points.push_back(point() + base);
        else if (command == 'l')
            ++lines, points.push_back(point() + base);
        else if (command == 'h')
            ++lines, points.push_back({from.x + number(), from.y});
        else if (command == 'v')
            ++lines, points.push_back({from.x, from.y + number()});
        else if (command == 'a')
            ++arcs, arcFrom(from);
        else
            return false;
        return hasNumbers_;
    }

    void skipSpaces() {
        while (*next_ == ' ') ++next_;
    }
    double number() {
        char* end = nullptr;
        const double value = std::strtod(next_, &end);
        hasNumbers_ = hasNumbers_ && end != next_;
        next_ = end;
        return value;
    }
    AcGePoint2d point() {
        const double x = number();
        return {x, number()};
    }

    // In the frame where the ellipse is the unit circle, the centre lies on the chord's bisector.
    void arcFrom(const AcGePoint2d& from) {
        const double rx = number(), ry = number(), turn = number() * std::numbers::pi / 180;
        const bool isLarge = number() != 0, isPositive = number() != 0;
        const AcGeVector2d chord = point().asVector();
        const double c = std::cos(turn), s = std::sin(turn);
        const AcGeVector2d unit{(c * chord.x + s * chord.y) / rx, (c * chord.y - s * chord.x) / ry};
        const double half = unit.length() / 2, growth = std::max(1.0, half);
        const double rise = std::sqrt(growth * growth - half * half) * (isLarge == isPositive ? -1 : 1);
        const AcGeVector2d centre = unit / 2 + AcGeVector2d{-unit.y, unit.x} / (2 * half) * rise;
        const double begin = std::atan2(-centre.y, -centre.x);
        double sweep = std::atan2(unit.y - centre.y, unit.x - centre.x) - begin;
        if (isPositive && sweep < 0) sweep += 2 * std::numbers::pi;
        if (!isPositive && sweep > 0) sweep -= 2 * std::numbers::pi;
        constexpr int steps = 64;
        for (int i = 1; i <= steps; ++i) {
            const double t = begin + sweep * i / steps;
            const AcGeVector2d p{(centre.x + growth * std::cos(t)) * rx,
                                 (centre.y + growth * std::sin(t)) * ry};
            points.push_back(from + AcGeVector2d{c * p.x - s * p.y, s * p.x + c * p.y});
        }
    }

    const char* next_;
    bool hasNumbers_ = true;
};

/// The first path in a document.
inline std::string pathIn(const std::string& svg) {
    const std::size_t begin = svg.find(" d=\"");
    return begin == std::string::npos ? "" : svg.substr(begin + 4, svg.find('"', begin + 4) - begin - 4);
}

/// Distance from a point to a chain of straight lines.
inline double distance(const AcGePoint2d& p, const std::vector<AcGePoint2d>& chain) {
    double nearest = chain.empty() ? 1e300 : p.distanceTo(chain[0]);
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const AcGeVector2d way = chain[i] - chain[i - 1];
        const double length = way.lengthSqrd();
        const double part =
            length > 0 ? std::clamp((p - chain[i - 1]).dotProduct(way) / length, 0.0, 1.0) : 0;
        nearest = std::min(nearest, p.distanceTo(chain[i - 1] + way * part));
    }
    return nearest;
}

} // namespace pictures
