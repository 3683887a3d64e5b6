#include "shape/Sink.h"

namespace qx::shape {

void Sink::bezier(const Bezier& curve) {
    forEachChord(curve, flatness * sizeOf(hullBox(curve)), [&](const Segment& chord) { segment(chord); });
}

} // namespace qx::shape
