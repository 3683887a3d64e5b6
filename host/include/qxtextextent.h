// What a line of text takes up, in em (one em is one text height), from the left end of its baseline.
#pragma once

namespace qx::text {

struct TextExtent {
    double advance = 0;                                          ///< where the next character would begin
    double inkLeft = 0, inkRight = 0, inkBottom = 0, inkTop = 0; ///< box of what is drawn
    bool blank = true; ///< nothing is drawn; the ink box is all zero
};

} // namespace qx::text
