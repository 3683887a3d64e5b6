// The lines of multiline text, with the host's own metrics: what it shows, broken into lines and placed about
// its insertion point. In the text's own axes: x along the lines, y upwards, lengths in drawing units.
#pragma once

#include "qxexport.h"
#include "qxtextextent.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::text {

struct MultilineFormat {
    double height;                ///< of capitals, where no code says otherwise
    double width = 0;             ///< at which lines are broken; 0: nowhere
    double lineSpacing = 1;       ///< as a factor
    bool hasExactSpacing = false; ///< lines lie equally far apart, whatever the height of their letters
    int attachment = 1;     ///< which point of its box the text hangs from: 1 top left, 2 top centre, ... 9
    double widthFactor = 1; ///< of the characters, where no code says otherwise; as good as 1 unless above 0
    double obliqueDegrees = 0;
    bool operator==(const MultilineFormat&) const = default;
};

/// Characters that are drawn as one, on a baseline that begins at x, y.
struct MultilineRun {
    double x, y;
    double height, widthFactor;
    double slant; ///< how far the top leans to the right, in heights
    TextExtent extent;
    std::size_t begin, size; ///< its characters, among those of the text
};

struct MultilineText {
    std::string characters; ///< what is drawn, in UTF-8, without codes
    std::vector<MultilineRun> runs;
    /// From the top of the first line's capitals to the last baseline, as wide as the longest line.
    double left = 0, right = 0, bottom = 0, top = 0;

    bool isBlank() const { return runs.empty(); }
    std::string_view charactersOf(const MultilineRun& run) const {
        return std::string_view{characters}.substr(run.begin, run.size);
    }
};

/// `raw` is the text with its codes (multilineCodes.h). Lines follow each other at 5/3 of the height of the
/// tallest characters in the lower one, or of the nominal height, times the spacing factor. Text that shows
/// nothing, and text without a height above zero, has no runs and an empty box at the insertion point. Every
/// number is finite as long as the format's are far from the largest that there are.
QX_HOST_API MultilineText layOut(std::u32string_view raw, const MultilineFormat& format);

} // namespace qx::text
