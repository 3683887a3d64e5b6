#include "draw/svgText.h"

#include "draw/svgNumbers.h"
#include "dxf/Encoding.h"
#include "os/encoding.h"
#include "text/shownText.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace qx::draw {
namespace {

// The height of text is that of its capitals, which take about 0.72 of a font's size. Full-width glyphs fill
// the whole size, but are to stand as high as the capitals, so they are set larger and narrower than their
// square.
constexpr double sizeOfCapitals = 1 / 0.72, sizeOfFullWidth = 1.15;

bool isControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }
bool isInXml(char32_t c) { return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF; }

/// Characters that need the same font size, from `begin` ems on.
struct Stretch {
    std::u32string characters;
    double begin = 0, advance = 0;
    bool isFullWidth = false;
};

std::vector<Stretch> stretchesOf(std::u32string_view shown) {
    std::vector<Stretch> all;
    double begin = 0;
    for (const char32_t c : shown) {
        const double advance = text::measure({&c, 1}).advance;
        const bool isFullWidth = advance >= 1;
        const bool goesOn = !all.empty() && (advance == 0 || all.back().isFullWidth == isFullWidth);
        if (!isControl(c)) {
            if (!goesOn) all.push_back({{}, begin, 0, isFullWidth});
            all.back().characters += c;
            all.back().advance = begin + advance - all.back().begin;
        }
        begin += advance;
    }
    return all;
}

Stretch withoutOuterSpaces(Stretch stretch) {
    const double space = text::measure(U" ").advance;
    const std::size_t first = std::min(stretch.characters.find_first_not_of(U' '), stretch.characters.size());
    stretch.begin += space * static_cast<double>(first);
    const std::size_t last = stretch.characters.find_last_not_of(U' ') + 1;
    stretch.advance -= space * static_cast<double>(first + stretch.characters.size() - last);
    stretch.characters = stretch.characters.substr(first, last - std::min(first, last));
    return stretch;
}

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

void putStretch(std::string& out, const Placement& place, const Stretch& stretch) {
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
    const auto* encoding = static_cast<const dxf::Encoding*>(run.encoding);
    const std::u32string shown =
        encoding ? text::shownText(encoding->decode(run.bytes)) : os::toUtf32(run.bytes);
    for (const Stretch& stretch : stretchesOf(shown))
        if (const Stretch inked = withoutOuterSpaces(stretch); !inked.characters.empty())
            putStretch(out, place, inked);
}

} // namespace qx::draw
