#include "draw/svgText.h"

#include "draw/svgNumbers.h"
#include "draw/textStretches.h"
#include "os/encoding.h"

#include <algorithm>
#include <cmath>

namespace qx::draw {
namespace {

bool isInXml(char32_t c) { return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF; }

/// The run in the picture: x and y are what one picture unit along the text and one downwards become.
struct Placement {
    AcGePoint2d origin;
    AcGeVector2d x, y;
    double height; ///< of the capitals, before x and y are applied

    bool isVisible() const {
        constexpr double smallest = 0.001;
        return height >= smallest && x.length() * height >= smallest;
    }
};

Placement placementOf(const PictureFrame& frame, const shape::TextRun& run) {
    const AcGeVector2d along = frame.toPicture(run.along), up = frame.toPicture(run.up);
    const double height = up.length();
    return {frame.toPicture(run.origin), along / height, -up / height, height};
}

void putMatrix(std::string& out, const AcGeVector2d& x, const AcGeVector2d& y, const AcGePoint2d& at) {
    constexpr AcGeVector2d right{1, 0}, down{0, 1};
    if ((x - right).length() < 1e-7 && (y - down).length() < 1e-7) {
        putNumber(out += " x=\"", at.x);
        putNumber(out += "\" y=\"", at.y);
    } else {
        out += " transform=\"matrix(";
        for (const double each : {x.x, x.y, y.x, y.y}) putNumber(out, each, 1000000);
        for (const double each : {at.x, at.y}) putNumber(out, each);
        out += ')';
    }
    out += '"';
}

void putStretch(std::string& out, const Placement& place, const TextStretch& stretch) {
    const double widening = stretch.isFullWidth ? sizeOfFullWidth : 1;
    out += "<text";
    putMatrix(out, place.x / widening, place.y, place.origin + place.x * (stretch.begin * place.height));
    putNumber(out += " font-size=\"",
              place.height * (stretch.isFullWidth ? sizeOfFullWidth : sizeOfCapitals));
    putNumber(out += "\" textLength=\"", stretch.advance * place.height * widening);
    out.append("\" lengthAdjust=\"spacingAndGlyphs\">")
        .append(escaped(stretch.characters))
        .append("</text>\n");
}

} // namespace

std::string escaped(std::u32string_view characters) {
    std::u32string result;
    for (const char32_t c : characters) {
        if (c == U'&')
            result += U"&amp;";
        else if (c == U'<')
            result += U"&lt;";
        else if (c == U'>')
            result += U"&gt;";
        else if (c == U'"')
            result += U"&quot;";
        else if (!isControl(c))
            result += isInXml(c) ? c : U'\uFFFD';
    }
    return os::toUtf8(result);
}

void putText(std::string& out, const PictureFrame& frame, const shape::TextRun& run) {
    const Placement place = placementOf(frame, run);
    if (!place.isVisible()) return;
    for (const TextStretch& stretch : stretchesOf(run)) putStretch(out, place, stretch);
}

} // namespace qx::draw
