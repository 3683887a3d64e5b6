#include "text/multiline.h"

#include "text/LineBreaker.h"
#include "text/multilineCodes.h"

#include <algorithm>
#include <cmath>

namespace qx::text {
namespace {

// A factor beyond what drawings may hold is cut to that, and none is as good as 1.
MultilineFormat repaired(MultilineFormat format) {
    format.lineSpacing = format.lineSpacing > 0 ? std::clamp(format.lineSpacing, 0.25, 4.0) : 1;
    format.attachment = std::clamp(format.attachment, 1, 9);
    return format;
}

void place(MultilineText& text, const std::vector<LineBreaker::Line>& lines, double top, int attachment) {
    const double across = (attachment - 1) % 3 / 2.0, down = (attachment - 1) / 3 / 2.0;
    const double height = top - lines.back().baseline;
    const double rise = height * down - top;
    double width = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t end = i + 1 < lines.size() ? lines[i + 1].firstRun : text.runs.size();
        for (std::size_t run = lines[i].firstRun; run < end; ++run) {
            text.runs[run].x -= lines[i].width * across;
            text.runs[run].y += rise;
        }
        width = std::max(width, lines[i].width);
    }
    text.left = -width * across;
    text.right = text.left + width;
    text.top = height * down;
    text.bottom = text.top - height;
}

} // namespace

MultilineText layOut(std::u32string_view raw, const MultilineFormat& format) {
    MultilineText text;
    if (!(format.height > 0) || !std::isfinite(format.height)) return text;
    const MultilineFormat used = repaired(format);
    LineBreaker breaker{used, text};
    readMultiline(raw, used, breaker);
    if (text.isBlank()) return text;
    place(text, breaker.lines(), breaker.top(), used.attachment);
    text.runs.shrink_to_fit();
    text.characters.shrink_to_fit();
    return text;
}

} // namespace qx::text
