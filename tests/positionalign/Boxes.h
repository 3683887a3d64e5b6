// Text forms for tests: rows of boxes along an axis, and how far boxes have moved.
#pragma once

#include "drawings/OpenedDrawing.h"
#include "positionalign/ItemExtent.h"

namespace qx::tests {
using namespace drawings;

using Item = std::vector<Handle>;

/// Draws a row such as "0..10 15..35L 2..3+4..5 void". Items stand apart by spaces, the members of one item
/// by "+". "0..10" is a line with that extent along the axis, "L" puts it on the locked layer, "void" is a
/// text that draws nothing.
std::vector<Item> drawRow(DrawingText& drawing, const std::string& row, positionalign::Axis axis);

/// Where the things are, to be compared with where they are later.
class Positions {
public:
    Positions(const db::Drawing& drawing, const std::vector<Item>& items);

    /// Per item how far it has moved along the axis, such as "0 25 0"; members that moved differently stand
    /// apart by
    /// "|". A box that changed its size or moved in another direction shows as "?".
    std::string shiftsAlong(positionalign::Axis axis) const;
    /// Per item how far it has moved in space, such as "0,6,-6 1,0,0".
    std::string shifts() const;

private:
    std::string joined(std::string (*text)(const AcGeVector3d&, positionalign::Axis),
                       positionalign::Axis axis) const;

    const db::Drawing& drawing_;
    std::vector<Item> items_;
    std::vector<std::vector<AcDbExtents>> before_;
};

/// To nine decimals, without a trailing part or a negative zero.
std::string shortened(double value);

} // namespace qx::tests
