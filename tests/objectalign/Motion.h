// How far a thing has turned and where its points have gone, measured on what it draws.
#pragma once

#include "db/RecordedShape.h"
#include "drawings/DrawingText.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace qx::tests {

inline std::vector<AcGePoint3d> shapeOf(const db::Drawing& drawing, drawings::Handle handle) {
    return RecordedShape{*drawing.liveEntity(drawing.find(handle))}.compared;
}

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

} // namespace qx::tests
