// Lines without ends in space.
#pragma once

#include "gelent3d.h"

class AcGeLine3d : public AcGeLinearEnt3d {
public:
    /// The X axis.
    AcGeLine3d() { set(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis); }
    AcGeLine3d(const AcGePoint3d& point, const AcGeVector3d& along) { set(point, along); }
    AcGeLine3d(const AcGePoint3d& first, const AcGePoint3d& second) { set(first, second); }

    AcGeLine3d& set(const AcGePoint3d& point, const AcGeVector3d& along) {
        setLine(point, along);
        return *this;
    }
    AcGeLine3d& set(const AcGePoint3d& first, const AcGePoint3d& second) {
        return set(first, second - first);
    }
};

// Twice the part along the line less the whole: exact where a turn by a rounded pi is not.
inline AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    const AcGeVector3d a = line.direction();
    setToIdentity();
    if (a.lengthSqrd() == 0) return *this;
    setColumn(0, a * (2 * a.x) - AcGeVector3d::kXAxis);
    setColumn(1, a * (2 * a.y) - AcGeVector3d::kYAxis);
    setColumn(2, a * (2 * a.z) - AcGeVector3d::kZAxis);
    return keepFixed(line.pointOnLine());
}
inline AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGeLine3d& line) {
    return AcGeMatrix3d{}.setToMirroring(line);
}
