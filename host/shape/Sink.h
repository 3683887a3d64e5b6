// Who wants to know what an object looks like: the object hands over its primitives one by one, in world
// coordinates.
#pragma once

#include "shape/Bezier.h"

namespace qx::shape {

class QX_HOST_API Sink {
public:
    virtual ~Sink() = default;
    virtual void segment(const Segment& segment) = 0;
    virtual void arc(const EllipticArc& arc) = 0;
    virtual void text(const TextRun& run) = 0;
    /// Passed over by those who ask how far something reaches.
    virtual void endless(const Endless&) {}
    /// Unless a sink knows better, a curve is its chords, none farther from it than `flatness` of its size.
    virtual void bezier(const Bezier& curve);
    /// True when nothing that could still come would change the result: the caller may stop.
    virtual bool isFull() const { return false; }
};

} // namespace qx::shape
