#include "draw/View.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
using qx::draw::View;

TEST(View, KeepsThePointUnderTheCursorWhileItZooms) {
    View view{800, 600};
    view.fit({{1000, 2000, 0}, {1400, 2100, 0}});
    const AcGePoint2d cursor{123, 456};
    for (const double factor : {1.25, 0.8, 7.0, 1e-4, 1e5}) {
        const AcGePoint3d before = view.toWorld(cursor);
        const double scale = view.scale();
        view.zoom(factor, cursor);
        EXPECT_NEAR(view.scale(), scale * factor, scale * factor * 1e-12);
        EXPECT_LT((view.toWorld(cursor) - before).length(), 1e-9 * before.asVector().length()) << factor;
    }
}

TEST(View, ShowsAllOfABoxInTheMiddleOfAnyWindow) {
    const qx::shape::Box boxes[] = {
        {{0, 0, 0}, {100, 50, 9}}, {{5, -7, 0}, {5, 100, 0}}, {{1e6, 1e6, 0}, {1e6 + 1e-3, 1e6, 0}}};
    for (const auto& box : boxes)
        for (const auto& [width, height] : {std::pair{800, 600}, {10, 2000}}) {
            View view{width, height};
            view.fit(box);
            const AcGePoint2d low = view.toScreen(box.min), high = view.toScreen(box.max);
            EXPECT_NEAR((low.x + high.x) / 2, width / 2.0, 1e-3);
            EXPECT_NEAR((low.y + high.y) / 2, height / 2.0, 1e-3);
            const double filled = std::max((high.x - low.x) / width, (low.y - high.y) / height);
            EXPECT_NEAR(filled, 0.94, 1e-3);
        }
}

TEST(View, MovesWithTheMouseAndKeepsItsCentreWhenTheWindowGrows) {
    View view{800, 600};
    view.zoom(4, {400, 300});
    const AcGePoint3d grabbed = view.toWorld({100, 100});
    view.pan(30, -20);
    EXPECT_LT((view.toScreen(grabbed) - AcGePoint2d{130, 80}).length(), 1e-9);
    const AcGePoint3d middle = view.toWorld({400, 300});
    view.resize(1000, 200);
    EXPECT_LT((view.toScreen(middle) - AcGePoint2d{500, 100}).length(), 1e-9);
}

TEST(View, StaysUsableWhateverItIsAskedFor) {
    const double beyond = std::numeric_limits<double>::infinity();
    View view{0, -5};
    view.fit({});
    view.fit({{-1e300, -1e300, 0}, {1e300, 1e300, 0}});
    view.fit({{7, 7, 0}, {7, 7, 0}});
    for (const double factor : {1e300, 1e-300, 0.0, -1.0, beyond, std::nan("")}) {
        view.zoom(factor, {3, 3});
        view.pan(1e9, -1e9);
        const AcGePoint3d there = view.toWorld({0, 0}), beside = view.toWorld({1, 1});
        EXPECT_TRUE(std::isfinite(there.x) && std::isfinite(there.y)) << factor;
        EXPECT_LT(there.x, beside.x) << factor;
        EXPECT_GT(there.y, beside.y) << factor;
    }
}

} // namespace
