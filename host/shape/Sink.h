// Who wants to know what an object looks like: the object hands over its primitives one by one, in world
// coordinates.
#pragma once

#include "shape/Primitives.h"

namespace qx::shape {

class Sink {
public:
    virtual ~Sink() = default;
    virtual void segment(const Segment& segment) = 0;
    virtual void arc(const EllipticArc& arc) = 0;
    virtual void text(const TextRun& run) = 0;
    /// Passed over by those who ask how far something reaches.
    virtual void endless(const Endless&) {}
    /// True when nothing that could still come would change the result: the caller may stop.
    virtual bool isFull() const { return false; }
};

} // namespace qx::shape
