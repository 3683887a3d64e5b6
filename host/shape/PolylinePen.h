// Draws straight and arc segments from vertex to vertex. Only the ends of an open polyline may be extended,
// and only where they are straight.
#pragma once

#include "shape/Sink.h"
#include "shape/arcs.h"

#include <cstddef>

namespace qx::shape {

class PolylinePen {
public:
    /// Bulges turn about `normal`, a unit vector. `sink` must outlive the pen.
    PolylinePen(Sink& sink, const AcGeVector3d& normal, bool isClosed)
        : sink_{sink}, normal_{normal}, isClosed_{isClosed} {}

    /// `bulge` belongs to the segment that follows.
    void vertex(const AcGePoint3d& point, double bulge) {
        if (count_ == 0) first_ = point;
        if (count_ > 1) draw(false);
        from_ = to_;
        fromBulge_ = toBulge_;
        to_ = point;
        toBulge_ = bulge;
        ++count_;
    }

    /// Draws what is left; a single vertex is a point.
    void finish() {
        if (count_ == 1) return sink_.segment({to_, to_});
        if (count_ > 1 && isClosed_) vertex(first_, 0);
        if (count_ > 1) draw(!isClosed_);
    }

private:
    void draw(bool isLast) {
        if (isStraight(fromBulge_))
            sink_.segment({from_, to_, !isClosed_ && count_ == 2, isLast});
        else
            sink_.arc(arcFromBulge(from_, to_, fromBulge_, normal_));
    }

    Sink& sink_;
    AcGeVector3d normal_;
    bool isClosed_;
    std::size_t count_ = 0;
    AcGePoint3d first_, from_, to_; ///< the segment that is not drawn yet
    double fromBulge_ = 0, toBulge_ = 0;
};

} // namespace qx::shape
