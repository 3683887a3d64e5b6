// Segments in space.
#pragma once

#include "gelent3d.h"

class AcGeLineSeg3d : public AcGeLinearEnt3d {
public:
    /// From the origin to (1, 0, 0).
    AcGeLineSeg3d() { set(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis); }
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGeVector3d& way) { set(start, way); }
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGePoint3d& end) { set(start, end); }

    AcGeLineSeg3d& set(const AcGePoint3d& start, const AcGeVector3d& way) { return set(start, start + way); }
    AcGeLineSeg3d& set(const AcGePoint3d& start, const AcGePoint3d& end) {
        setSegment(start, end - start);
        end_ = end;
        return *this;
    }

    AcGePoint3d startPoint() const { return pointOnLine(); }
    AcGePoint3d endPoint() const { return end_; }
    AcGePoint3d midPoint() const { return startPoint() + (endPoint() - startPoint()) / 2; }
    double length() const { return LinearEntity::length(); }

private:
    AcGePoint3d end_;
};
