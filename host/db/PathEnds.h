// Where a path begins and ends, from the points that it goes through.
#pragma once

#include "acadstrc.h"
#include "gepnt3d.h"

#include <optional>

namespace qx::db {

class PathEnds {
public:
    void add(const AcGePoint3d& point) {
        if (!start_) start_ = point;
        end_ = point;
    }
    /// eNotApplicable, and `point` as it was, for a path without points.
    Acad::ErrorStatus giveStart(AcGePoint3d& point) const { return give(start_, point); }
    Acad::ErrorStatus giveEnd(AcGePoint3d& point) const { return give(end_, point); }

private:
    static Acad::ErrorStatus give(const std::optional<AcGePoint3d>& from, AcGePoint3d& to) {
        if (!from) return Acad::eNotApplicable;
        to = *from;
        return Acad::eOk;
    }
    std::optional<AcGePoint3d> start_, end_;
};

} // namespace qx::db
