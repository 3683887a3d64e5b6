#include "dbobjptr.h"
#include "positionalign/actions.h"
#include "tests/positionalign/Scene.h"

#include <gtest/gtest.h>

#include <span>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace positionalign;

struct AlignmentCase {
    const char* name;
    Action action;
    double offset;
    const char* shifts; ///< of a, b, c and d of the scene
};

const AcGePoint3d base{50, 60, 1};

/// Of d, c, b and with that all of group AB; as objects also of a.
void check(std::span<const AlignmentCase> cases, SelectionMode mode) {
    for (const auto& each : cases) {
        const Scene scene;
        const OpenedDrawing drawing{scene.content};
        const Positions before{*drawing, scene.items};
        std::vector<Handle> selected{scene.d, scene.c, scene.b};
        if (mode == SelectionMode::objects) selected.insert(selected.begin() + 1, scene.a);
        applyAction({each.action, true, each.offset, mode}, drawing.ids(selected), base);
        EXPECT_EQ(before.shifts(), each.shifts) << each.name;
        EXPECT_EQ(drawing->openCount(), 0u) << each.name;
    }
}

// The other actions on objects: see the runs of the command.
TEST(Alignment, OfObjects) {
    const AlignmentCase cases[] = {
        {"centre shifts twice by the base point's z", Action::centre, 0,
         "30,25,2 50,56,2 -70,-45,2 49.5,59.5,2"},
        {"centring makes no use of an offset", Action::centre, 4, "30,25,2 50,56,2 -70,-45,2 49.5,59.5,2"},
        {"no action", Action::none, 4, "0,0,0 0,0,0 0,0,0 0,0,0"},
    };
    check(cases, SelectionMode::objects);
}

TEST(Alignment, OfGroups) {
    const AlignmentCase cases[] = {
        {"top, set off downwards", Action::top, 4, "0,6,0 0,6,0 0,-54,0 0,0,0"},
        {"bottom, set off upwards", Action::bottom, 4, "0,64,0 0,64,0 0,-36,0 0,0,0"},
        {"left, set off to the right", Action::left, 4, "59,0,0 59,0,0 -46,0,0 0,0,0"},
        {"right, set off to the left", Action::right, 4, "16,0,0 16,0,0 -94,0,0 0,0,0"},
        {"horizontal centre between the members' centres", Action::horizontalCentre, 0,
         "40,0,0 40,0,0 -70,0,0 0,0,0"},
        {"vertical centre", Action::verticalCentre, 0, "0,40.5,0 0,40.5,0 0,-45,0 0,0,0"},
        {"centre", Action::centre, 0, "40,40.5,0 40,40.5,0 -70,-45,0 0,0,0"},
        {"centring makes no use of an offset", Action::centre, 4, "40,40.5,0 40,40.5,0 -70,-45,0 0,0,0"},
    };
    check(cases, SelectionMode::groups);
}

TEST(Alignment, AModeThatIsNoneDoesNothing) {
    const Scene scene;
    const OpenedDrawing drawing{scene.content};
    const std::string bytes = drawing->toBytes();
    applyAction({Action::top, true, 0, SelectionMode{-1}}, drawing.ids({scene.a}), base);
    EXPECT_EQ(drawing->toBytes(), bytes);
}

/// Left alignment to x = 0 of a row along x.
struct OddMemberCase {
    const char* name;
    const char* row;
    const char* asObjects;
    const char* asGroups;
};

TEST(Alignment, LockedAndEmptyMembers) {
    const OddMemberCase cases[] = {
        {"a locked object stays", "10..20L 30..40", "0 -30", "0 -30"},
        {"a locked member still counts for the edge", "10..20L+15..30 5..6", "0|-15 -5", "0|-10 -5"},
        {"an object without extents stays", "void 30..40", "0 -30", "0 -30"},
        {"a member without extents does not move the edge", "void+30..40 7..8", "0|-30 -7", "-30 -7"},
    };
    for (const auto& each : cases)
        for (const SelectionMode mode : {SelectionMode::objects, SelectionMode::groups}) {
            DrawingText content;
            const std::vector<Item> items = drawRow(content, each.row, Axis::x);
            Item all;
            for (const Item& item : items) {
                content.group("G" + std::to_string(all.size()), item);
                all.insert(all.end(), item.begin(), item.end());
            }
            const OpenedDrawing drawing{content};
            const Positions before{*drawing, items};
            applyAction({Action::left, true, 0, mode}, drawing.ids(all), {0, 0, 0});
            EXPECT_EQ(before.shiftsAlong(Axis::x),
                      mode == SelectionMode::objects ? each.asObjects : each.asGroups)
                << each.name;
        }
}

TEST(Alignment, AMemberOfTwoGroupsMovesWithEach) {
    DrawingText content;
    const std::vector<Item> items = drawRow(content, "10..20 30..40 50..60", Axis::x);
    content.group("B", {items[2][0], items[1][0]});
    content.group("A", {items[0][0], items[1][0]});
    content.group("EMPTY", {});
    const OpenedDrawing drawing{content};
    const Positions before{*drawing, items};
    applyAction({Action::left, true, 0, SelectionMode::groups}, drawing.ids({items[1][0]}), {0, 0, 0});
    // A goes first, by -10; by then B begins at 20.
    EXPECT_EQ(before.shiftsAlong(Axis::x), "-10 -30 -20");
}

} // namespace
} // namespace qx::tests
