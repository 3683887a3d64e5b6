// What a line of text takes up, in em (one em is one text height).
#pragma once

namespace qx::text {
/// Origin at the left end of the baseline. A blank text draws nothing; its ink box means nothing then.
struct TextExtent {
    double advance = 0;
    double inkLeft = 0, inkRight = 0, inkBottom = 0, inkTop = 0;
    bool blank = true;
};
} // namespace qx::text
