// What holds whatever the drawing: tried on random ones. A failure names the seed.
#include "positionalign/actions.h"
#include "tests/positionalign/Boxes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <set>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace positionalign;

constexpr unsigned seeds = 30;
constexpr double tolerance = 1e-7;

/// Lines and circles at any place and height, most of them in groups that share no member.
class RandomDrawing {
public:
    explicit RandomDrawing(unsigned seed) : random_{seed} {
        for (int i = 2 + below(6); i > 0; --i) {
            Item members;
            for (int m = 1 + below(4); m > 0; --m) members.push_back(anything());
            content_.group("G" + std::to_string(100 + i), members);
            groups.push_back(members);
        }
        for (const Item& group : groups) all.insert(all.end(), group.begin(), group.end());
        for (int i = below(5); i > 0; --i) all.push_back(anything());
        std::shuffle(all.begin(), all.end(), random_);
        drawing = std::make_unique<OpenedDrawing>(content_);
    }

    AcGePoint3d point() { return {real(), real(), real()}; }
    double real() { return std::uniform_real_distribution{-1000.0, 1000.0}(random_); }
    AcDbObjectIdArray ids() const { return drawing->ids(all); }
    std::map<Handle, AcDbExtents> boxes() const {
        std::map<Handle, AcDbExtents> found;
        for (const Handle each : all) found[each] = boxOf(**drawing, each);
        return found;
    }

    std::vector<Item> groups;
    Item all;
    std::unique_ptr<OpenedDrawing> drawing;

private:
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    Handle anything() {
        return below(2) ? content_.line(point(), point()) : content_.circle(point(), std::abs(real()));
    }

    std::mt19937 random_;
    DrawingText content_;
};

double difference(const AcDbExtents& a, const AcDbExtents& b) {
    return std::max((a.minPoint() - b.minPoint()).length(), (a.maxPoint() - b.maxPoint()).length());
}

double sizeChange(const AcDbExtents& a, const AcDbExtents& b) {
    return ((a.maxPoint() - a.minPoint()) - (b.maxPoint() - b.minPoint())).length();
}

void forEachAction(const std::function<void(Action, SelectionMode)>& visit) {
    for (int action = 1; action <= static_cast<int>(Action::verticalDistribution); ++action)
        for (const SelectionMode mode : {SelectionMode::objects, SelectionMode::groups})
            visit(static_cast<Action>(action), mode);
}

std::string named(unsigned seed, Action action, SelectionMode mode) {
    return "seed " + std::to_string(seed) + ", action " + std::to_string(static_cast<int>(action)) +
           (mode == SelectionMode::objects ? ", objects" : ", groups");
}

TEST(Laws, ThingsMoveWithoutChangingSizeAndGroupsWithoutChangingTheirLayout) {
    for (unsigned seed = 1; seed <= seeds; ++seed)
        forEachAction([&](Action action, SelectionMode mode) {
            RandomDrawing random{seed};
            const auto before = random.boxes();
            applyAction({action, true, random.real(), mode}, random.ids(), random.point());
            const auto after = random.boxes();
            for (const auto& [handle, box] : before)
                EXPECT_LE(sizeChange(box, after.at(handle)), tolerance) << named(seed, action, mode);
            if (mode == SelectionMode::objects) return;
            for (const Item& group : random.groups)
                for (const Handle member : group) {
                    const auto shift = after.at(member).minPoint() - before.at(member).minPoint();
                    const auto first = after.at(group[0]).minPoint() - before.at(group[0]).minPoint();
                    EXPECT_LE((shift - first).length(), tolerance) << named(seed, action, mode);
                    EXPECT_EQ(shift.z, 0) << named(seed, action, mode);
                }
        });
}

/// Where the items stand along the axis, in ascending order.
std::vector<ItemExtent> row(const RandomDrawing& random, SelectionMode mode, Axis axis) {
    std::vector<ItemExtent> extents;
    const auto add = [&](const Item& item) {
        const AcDbObjectIdArray ids = random.drawing->ids(item);
        extents.push_back(measured({ids.begin(), ids.end()}, axis));
    };
    if (mode == SelectionMode::groups)
        std::for_each(random.groups.begin(), random.groups.end(), add);
    else
        for (const Handle each : random.all) add({each});
    std::sort(extents.begin(), extents.end(), [](auto& a, auto& b) { return a.centre < b.centre; });
    return extents;
}

TEST(Laws, DistributionKeepsTheOuterEdgesAndTheOrderAndEqualsTheGaps) {
    for (unsigned seed = 1; seed <= seeds; ++seed)
        for (const SelectionMode mode : {SelectionMode::objects, SelectionMode::groups})
            for (const Axis axis : {Axis::x, Axis::y}) {
                RandomDrawing random{seed};
                const Action action =
                    axis == Axis::x ? Action::horizontalDistribution : Action::verticalDistribution;
                const auto before = row(random, mode, axis);
                const auto boxesBefore = random.boxes();
                applyAction({action, false, 0, mode}, random.ids(), {1, 2, 3});
                const auto boxes = random.boxes();

                // In their old order at their new places, by the widths and one gap. Where there is too
                // little room, items may have passed their neighbours.
                double room = before.back().max - before.front().min, at = before.front().min;
                for (const auto& each : before) room -= each.max - each.min;
                const double gap = room / (static_cast<double>(before.size()) - 1);
                std::multiset<double> expected, found;
                for (const auto& each : before)
                    expected.insert(std::exchange(at, at + each.max - each.min + gap));
                for (const auto& each : row(random, mode, axis)) found.insert(each.min);
                EXPECT_TRUE(std::equal(expected.begin(), expected.end(), found.begin(), found.end(),
                                       [](double a, double b) { return std::abs(a - b) <= tolerance; }))
                    << named(seed, action, mode);
                for (const auto& [handle, box] : boxes) {
                    const auto shift = box.minPoint() - boxesBefore.at(handle).minPoint();
                    EXPECT_EQ(axis == Axis::x ? shift.y : shift.x, 0) << named(seed, action, mode);
                }
                if (gap <= 0) continue;
                applyAction({action, false, 0, mode}, random.ids(), {1, 2, 3});
                for (const auto& [handle, box] : random.boxes())
                    EXPECT_LE(difference(box, boxes.at(handle)), tolerance) << named(seed, action, mode);
            }
}

TEST(Laws, EveryEdgeOrCentreOfAnObjectLiesWhereTheActionPutsIt) {
    const struct {
        Action action;
        Corner corner;
        Axis axis;
        double offsetSign;
    } cases[] = {
        {Action::left, Corner::min, Axis::x, +1},
        {Action::right, Corner::max, Axis::x, -1},
        {Action::top, Corner::max, Axis::y, -1},
        {Action::bottom, Corner::min, Axis::y, +1},
        {Action::horizontalCentre, Corner::centre, Axis::x, 0},
        {Action::verticalCentre, Corner::centre, Axis::y, 0},
        {Action::centre, Corner::centre, Axis::x, 0},
        {Action::centre, Corner::centre, Axis::y, 0},
    };
    for (unsigned seed = 1; seed <= seeds; ++seed)
        for (const auto& each : cases)
            for (const SelectionMode mode : {SelectionMode::objects, SelectionMode::groups}) {
                RandomDrawing random{seed};
                const AcGePoint3d base = random.point();
                const double offset = random.real();
                applyAction({each.action, true, offset, mode}, random.ids(), base);
                const double expected = coordinate(base, each.axis) + each.offsetSign * offset;
                for (const ItemExtent& item : row(random, mode, each.axis))
                    EXPECT_NEAR(item.at(each.corner), expected, tolerance) << named(seed, each.action, mode);
            }
}
} // namespace
} // namespace qx::tests
