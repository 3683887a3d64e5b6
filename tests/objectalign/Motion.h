// How far a thing has turned and where its points have gone, measured on what it draws.
#pragma once

#include "db/RecordedShape.h"
#include "drawings/OpenedDrawing.h"

#include <cmath>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace qx::tests {
using namespace drawings;

/// To so many decimals, without trailing zeros or a negative zero.
inline std::string rounded(double value, int decimals) {
    const double unit = std::pow(10, decimals);
    char text[60];
    std::snprintf(text, sizeof text, "%.12g", std::round(value * unit) / unit + 0.0);
    return text;
}

/// "1,2" for a point in the XY plane, "1,2,3" elsewhere.
inline std::string told(const AcGePoint3d& p) {
    const std::string z = rounded(p.z, 4);
    return rounded(p.x, 4) + "," + rounded(p.y, 4) + (z == "0" ? "" : "," + z);
}

/// The other way: points that stand apart by blanks.
inline std::vector<AcGePoint3d> pointsFrom(const std::string& text) {
    std::vector<AcGePoint3d> points;
    std::istringstream words{text};
    for (std::string word; words >> word;) {
        AcGePoint3d& p = points.emplace_back();
        std::sscanf(word.c_str(), "%lf,%lf,%lf", &p.x, &p.y, &p.z);
    }
    return points;
}
inline AcGePoint3d pointFrom(const std::string& text) { return pointsFrom(text).at(0); }

/// A turn about the Z axis and a translation in the XY plane.
class Motion {
public:
    /// From points to where they are later. A turn shows only between points that are not all one.
    Motion(const std::vector<AcGePoint3d>& before, const std::vector<AcGePoint3d>& after) {
        if (before.empty() || before.size() != after.size()) return;
        std::size_t far = 0;
        for (std::size_t i = 0; i < before.size(); ++i)
            if (inPlane(before[i] - before[0]).length() > inPlane(before[far] - before[0]).length()) far = i;
        from_ = before[0];
        to_ = after[0];
        const AcGeVector2d old = inPlane(before[far] - from_), now = inPlane(after[far] - to_);
        if (!old.isZeroLength()) turn = std::remainder(now.angle() - old.angle(), 2 * std::numbers::pi);
        isRigid = true;
        for (std::size_t i = 0; i < before.size(); ++i)
            isRigid = isRigid && image(before[i]).distanceTo(after[i]) <= 1e-7; // false for what is no number
    }

    AcGePoint3d image(const AcGePoint3d& p) const {
        return to_ + (p - from_).rotateBy(turn, AcGeVector3d::kZAxis);
    }

    double turn = 0;      ///< radians, a half turn at most
    bool isRigid = false; ///< nothing is bent, and every z has stayed

private:
    static AcGeVector2d inPlane(const AcGeVector3d& v) { return {v.x, v.y}; }
    AcGePoint3d from_, to_;
};

/// An entity whose shape was recorded.
class Watched {
public:
    Watched(const OpenedDrawing& drawing, Handle handle)
        : drawing_{drawing}, handle_{handle}, before_{points()} {}

    Motion motion() const { return {before_, points()}; }

private:
    std::vector<AcGePoint3d> points() const {
        return RecordedShape{*drawing_->liveEntity(drawing_->find(handle_))}.compared;
    }

    const OpenedDrawing& drawing_;
    Handle handle_;
    std::vector<AcGePoint3d> before_;
};

/// "-0.5 3,4": the turn to seven decimals, and where the point has gone.
inline std::string told(const Motion& motion, const AcGePoint3d& point) {
    return motion.isRigid ? rounded(motion.turn, 7) + " " + told(motion.image(point)) : "bent";
}

} // namespace qx::tests
