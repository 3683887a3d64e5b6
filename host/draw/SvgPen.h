// Draws primitives as SVG: lines and arcs go into one path, lines of text into elements beside it. Numbers
// have three decimals of a picture unit. Seen along Z: an arc that is tilted becomes the ellipse it looks
// like.
//
// Each arc is cut where it crosses its principal axes. The pieces are at most quarters, so that rounded ends
// can't bend them noticeably, which they would do to halves and to slim ellipses. Bézier curves are cut into
// cubic ones that are the same to within a hundredth of a picture unit. A segment without length is a small
// cross, unless it is a repeated vertex in the middle of a line. What is not drawable is left out.
#pragma once

#include "draw/PictureFrame.h"
#include "shape/Sink.h"

#include <string>

namespace qx::draw {

class QX_HOST_API SvgPen final : public shape::Sink {
public:
    /// `frame` must outlive the pen.
    explicit SvgPen(const PictureFrame& frame) : frame_(frame) {}

    void segment(const shape::Segment& segment) override;
    void arc(const shape::EllipticArc& arc) override;
    void text(const shape::TextRun& run) override;
    /// The part within the frame.
    void endless(const shape::Endless& line) override;
    void bezier(const shape::Bezier& curve) override;

    /// Appends what was drawn since the last call as elements with these attributes ("" or a space and
    /// name="value").
    void putElements(std::string& out, std::string_view attributes);

private:
    struct Spot {
        long long x = 0, y = 0; ///< thousandths of a picture unit
        bool operator==(const Spot&) const = default;
    };
    static Spot spotAt(const AcGePoint2d& p);
    void putOffset(const Spot& to);
    void moveTo(const Spot& to);
    void lineTo(const Spot& to);
    void arcTo(const Spot& to, const std::string& command);
    void curveTo(const shape::Bezier& cubic);
    void flushMark();

    const PictureFrame& frame_;
    std::string path_, texts_;
    Spot at_;
    bool hasMark_ = false; ///< a cross is due at the current point unless a line goes on from it
};

} // namespace qx::draw
