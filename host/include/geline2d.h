// Lines without ends in a plane.
#pragma once

#include "gelent2d.h"

class AcGeLine2d : public AcGeLinearEnt2d {
public:
    /// The X axis.
    AcGeLine2d() { set(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis); }
    AcGeLine2d(const AcGePoint2d& point, const AcGeVector2d& along) { set(point, along); }
    AcGeLine2d(const AcGePoint2d& first, const AcGePoint2d& second) { set(first, second); }

    AcGeLine2d& set(const AcGePoint2d& point, const AcGeVector2d& along) {
        setLine(point, along);
        return *this;
    }
    AcGeLine2d& set(const AcGePoint2d& first, const AcGePoint2d& second) {
        return set(first, second - first);
    }
};

inline void AcGeLinearEnt2d::getPerpLine(const AcGePoint2d& point, AcGeLine2d& perpendicular) const {
    perpendicular.set(point, direction().perpVector());
}
