#include "controls/buttonPicture.h"

#include "controls/GdiLedger.h"
#include "controls/MemoryPicture.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {
using namespace qx::controls;

constexpr int margin = 4; ///< around the button, which must stay as it was
constexpr COLORREF outside = RGB(1, 2, 3), accent = RGB(200, 20, 20);

/// A full square, as an icon.
HICON squareIcon(int size) {
    const HDC screen = ::GetDC(nullptr);
    const HBITMAP colour = ::CreateCompatibleBitmap(screen, size, size);
    const HBITMAP mask = ::CreateBitmap(size, size, 1, 1, nullptr);
    const HDC context = ::CreateCompatibleDC(screen);
    const RECT all{0, 0, size, size};
    const HBRUSH brush = ::CreateSolidBrush(accent);
    const HGDIOBJ old = ::SelectObject(context, colour);
    ::FillRect(context, &all, brush);
    ::SelectObject(context, mask);
    ::FillRect(context, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
    ::SelectObject(context, old);
    ICONINFO info{TRUE, 0, 0, mask, colour};
    const HICON icon = ::CreateIconIndirect(&info);
    ::DeleteObject(brush);
    ::DeleteObject(colour);
    ::DeleteObject(mask);
    ::DeleteDC(context);
    ::ReleaseDC(nullptr, screen);
    return icon;
}

struct Picture {
    int width, height; ///< of the button
    std::vector<DWORD> pixels;

    DWORD at(int x, int y) const {
        return pixels[static_cast<std::size_t>((y + margin) * (width + 2 * margin) + x + margin)] & 0xFFFFFF;
    }
};

/// The button of this size on a strange ground.
Picture painted(int width, int height, ButtonLook look) {
    Picture picture{width, height, {}};
    const int fullWidth = width + 2 * margin, fullHeight = height + 2 * margin;
    const qx::tests::MemoryPicture canvas{fullWidth, fullHeight};
    const HDC context = canvas.context();
    const HBRUSH ground = ::CreateSolidBrush(outside);
    const RECT all{0, 0, fullWidth, fullHeight}, area{margin, margin, margin + width, margin + height};
    ::FillRect(context, &all, ground);
    look.icon = squareIcon(look.iconSize = 16);
    look.font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    const COLORREF textColour = ::GetTextColor(context);
    paintButton(context, area, look);
    EXPECT_EQ(::GetTextColor(context), textColour);
    picture.pixels = canvas.pixels();
    ::DestroyIcon(look.icon);
    ::DeleteObject(ground);
    return picture;
}

const ButtonLook states[] = {
    {.caption = L"水平居中"},
    {.caption = L"水平居中", .isHovered = true},
    {.caption = L"水平居中", .isPressed = true, .isHovered = true},
    {.caption = L"水平居中", .isFocused = true},
    {.caption = L"水平居中", .isDisabled = true},
    {.caption = L"水平居中", .isDefault = true},
    {.caption = L"水平居中", .hasBorder = false},
};

TEST(ButtonPicture, TellsTheStatesApartAndStaysInside) {
    std::set<std::vector<DWORD>> pictures;
    for (const ButtonLook& state : states) {
        const Picture picture = painted(75, 23, state);
        pictures.insert(picture.pixels);
        for (int x = -margin; x < picture.width + margin; ++x)
            for (const int y : {-margin, -1, picture.height, picture.height + margin - 1})
                ASSERT_EQ(picture.at(x, y), 0x010203u) << x << ',' << y;
        for (int y = 0; y < picture.height; ++y)
            for (const int x : {-1, picture.width}) ASSERT_EQ(picture.at(x, y), 0x010203u) << x << ',' << y;
    }
    EXPECT_EQ(pictures.size(), std::size(states));
}

/// First and last column in which the wanted pixels are.
struct Columns {
    int first = 1000, last = -1;
};

template <class IsWanted> Columns columnsOf(const Picture& picture, IsWanted isWanted) {
    Columns columns;
    for (int x = 3; x < picture.width - 3; ++x)
        for (int y = 4; y < picture.height - 4; ++y)
            if (isWanted(picture.at(x, y))) columns = {std::min(columns.first, x), x};
    return columns;
}

Columns iconOf(const Picture& picture) {
    return columnsOf(picture, [](DWORD pixel) { return (pixel >> 16) > (pixel & 0xFF) + 40; });
}

Columns captionOf(const Picture& picture, int behind) {
    Columns columns = columnsOf(picture, [](DWORD pixel) { return (pixel >> 16 & 0xFF) < 110; });
    columns.first = std::max(columns.first, behind + 1);
    return columns;
}

// At 96 and at 144 dots per inch, as the smallest of our buttons is.
TEST(ButtonPicture, PutsTheCaptionBesideTheIconInTheMiddle) {
    for (const int height : {23, 34}) {
        const int width = height * 75 / 23;
        const Picture picture = painted(width, height, {.caption = L"对齐"});
        const Columns icon = iconOf(picture);
        ASSERT_EQ(icon.last - icon.first + 1, 16);
        const Columns caption = captionOf(picture, icon.last);
        EXPECT_GT(caption.last, icon.last + 10) << "the caption is there";
        EXPECT_NEAR(icon.first, width - 1 - caption.last, 3) << "as much room on the left as on the right";
    }
}

TEST(ButtonPicture, CutsACaptionThatHasNoRoom) {
    const Picture picture = painted(75, 23, {.caption = L"单独对象对齐（自动选择基线）"});
    const Columns icon = iconOf(picture);
    EXPECT_EQ(icon.last - icon.first + 1, 16);
    EXPECT_LT(captionOf(picture, icon.last).last, 75 - 3);
}

TEST(ButtonPicture, PressedMovesTheContent) {
    const Columns up = iconOf(painted(75, 23, states[0])), down = iconOf(painted(75, 23, states[2]));
    EXPECT_EQ(down.first, up.first + 1);
}

TEST(ButtonPicture, GivesBackWhatItTakes) {
    const qx::tests::GdiLedger ledger{::GetModuleHandleW(nullptr)};
    const HDC left = ::CreateCompatibleDC(nullptr);
    EXPECT_EQ(ledger.alive(), 1u) << "the ledger sees what is not given back";
    ::DeleteDC(left);
    for (const ButtonLook& state : states) painted(75, 23, state);
    EXPECT_GT(ledger.taken(), std::size(states));
    EXPECT_EQ(ledger.alive(), 0u);
    EXPECT_EQ(ledger.strange(), 0u);
}

TEST(ButtonPicture, TakesTheLargestIconThatFits) {
    struct Case {
        int height, size;
    };
    for (const Case& c : {Case{10, 16}, {22, 16}, {25, 16}, {26, 20}, {30, 24}, {34, 24}, {38, 32}, {90, 32}})
        EXPECT_EQ(iconSizeFor(c.height), c.size) << c.height;
}

} // namespace
