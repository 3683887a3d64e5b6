// Segments in a plane.
#pragma once

#include "gelent2d.h"

class AcGeLineSeg2d : public AcGeLinearEnt2d {
public:
    /// From the origin to (1, 0).
    AcGeLineSeg2d() { set(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis); }
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGeVector2d& way) { set(start, way); }
    AcGeLineSeg2d(const AcGePoint2d& start, const AcGePoint2d& end) { set(start, end); }

    AcGeLineSeg2d& set(const AcGePoint2d& start, const AcGeVector2d& way) { return set(start, start + way); }
    AcGeLineSeg2d& set(const AcGePoint2d& start, const AcGePoint2d& end) {
        setSegment(start, end - start);
        end_ = end;
        return *this;
    }

    AcGePoint2d startPoint() const { return pointOnLine(); }
    AcGePoint2d endPoint() const { return end_; }
    AcGePoint2d midPoint() const { return startPoint() + (endPoint() - startPoint()) / 2; }
    double length() const { return LinearEntity::length(); }

private:
    AcGePoint2d end_;
};
