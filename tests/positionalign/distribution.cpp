#include "positionalign/distribution.h"
#include "tests/positionalign/Boxes.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace positionalign;

struct DistributionCase {
    const char* name;
    const char* row;
    const char* shifts;
};

/// One member of each item is selected; as groups, the n-th item is the n-th group of the dictionary.
std::string distributed(const DistributionCase& each, Axis axis, bool asGroups) {
    DrawingText content;
    const std::vector<Item> items = drawRow(content, each.row, axis);
    Item selected;
    for (const Item& item : items) {
        if (asGroups) content.group("G" + std::to_string(100 + selected.size()), item);
        selected.push_back(item.back());
    }
    const OpenedDrawing drawing{content};
    const Positions before{*drawing, items};
    (asGroups ? distributeGroups : distributeObjects)(drawing.ids(selected), axis);
    EXPECT_EQ(drawing->openCount(), 0u) << each.name;
    return before.shiftsAlong(axis);
}

// Items of one member behave alike in both forms and along both axes.
const DistributionCase casesOfBothForms[] = {
    {"equal gaps between three", "0..10 15..35 90..100", "0 25 0"},
    {"the order of the selection does not matter", "90..100 0..10 15..35", "0 0 25"},
    {"ordered by centre, not by edge", "0..100 10..20 200..210", "60 0 0"},
    {"widths differ", "0..2 3..5 6..26 99..101", "0 24 48 0"},
    {"equal centres: the later one stays but counts", "0..10 2..8 30..40", "0 0 -10"},
    {"equal centres: the first one takes part, wider or not", "2..8 0..10 30..40", "0 0 -11"},
    {"equal centres at the far end", "0..10 30..40 32..38", "0 -10 0"},
    {"all centres equal", "0..10 2..8 4..6", "0 0 0"},
    {"negative gap", "0..10 1..11 8..18", "0 3 0"},
    {"one moves nothing", "5..9", "0"},
    {"a locked item stays, the next one follows it", "0..10 15..35L 90..100", "0 0 -25"},
    {"a locked first item changes nothing", "0..10L 15..35 90..100", "0 25 0"},
    {"far from the origin", "1e9..1000000010 1000000015..1000000035 1000000090..1000000100", "0 25 0"},
    // The values of an empty box make the gap so large that every move is refused.
    {"an item without extents spoils the row", "0..10 void 30..40", "0 0 0"},
};

TEST(Distribution, OfItemsOfOneMember) {
    for (const auto& each : casesOfBothForms)
        for (const Axis axis : {Axis::x, Axis::y})
            for (const bool asGroups : {false, true})
                EXPECT_EQ(distributed(each, axis, asGroups), each.shifts) << each.name;
}

TEST(Distribution, OfGroups) {
    const DistributionCase cases[] = {
        {"members move together", "0..4+6..10 15..20+30..35+18..19 90..100", "0 25 0"},
        {"ordered by midway of the members' centres", "0..2+0..100 30..34 200..210", "0 118 0"},
        {"equal keys from different boxes", "0..10 4..6+4.5..5.5 30..40", "0 0 -10"},
        {"a locked member stays, the others move", "0..10 15..20+30..35L 90..100", "0 25|0 -15"},
        {"a locked member that still sticks out leads", "0..10 15..20+30..60L 90..100", "0 12.5|0 -12.5"},
        // Its empty box neither widens the group nor keeps it from moving.
        {"a member without extents", "0..10 30..40+void 90..100", "0 15 0"},
    };
    for (const auto& each : cases)
        for (const Axis axis : {Axis::x, Axis::y})
            EXPECT_EQ(distributed(each, axis, true), each.shifts) << each.name;
}

TEST(Distribution, AMemberOfTwoGroupsIsMeasuredWhereItIsByThen) {
    DrawingText content;
    const std::vector<Item> items = drawRow(content, "0..10 20..30 40..50 92..102", Axis::x);
    const Handle shared = items[1][0], second = items[2][0];
    content.group("A", items[0]);
    content.group("B", {shared});
    content.group("C", {second, shared});
    content.group("D", items[3]);
    const OpenedDrawing drawing{content};
    const Positions before{*drawing, items};
    distributeGroups(drawing.ids({items[0][0], shared, items[3][0]}), Axis::x);
    // Widths 10, 10, 30, 10 in 102: gap 14. B moves by 4 to 24..34 and takes the shared line from C, which
    // then spans 24..50 and has to begin at 48.
    EXPECT_EQ(before.shiftsAlong(Axis::x), "0 28 24 -4");
}

} // namespace
} // namespace qx::tests
