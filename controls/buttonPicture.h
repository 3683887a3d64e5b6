// What an icon button looks like. Paints with the system's colours and leaves nothing behind in the device
// context.
#pragma once

#include <string_view>
#include <windows.h>

namespace qx::controls {

struct ButtonLook {
    std::wstring_view caption;
    HFONT font = nullptr; ///< null: the context's own
    HICON icon = nullptr;
    int iconSize = 0;      ///< pixels, square
    bool hasBorder = true; ///< raised, or sunken when pressed
    bool isPressed = false;
    bool isHovered = false;
    bool isDisabled = false;
    bool isFocused = false;
    bool isDefault = false; ///< the one that Enter presses
};

/// Icon and caption side by side in the middle of `area`; a caption that has no room is cut with an ellipsis.
void paintButton(HDC context, const RECT& area, const ButtonLook& look);

/// The largest of the sizes that our icons are drawn in (16, 20, 24, 32) for a button of this height; never
/// none.
int iconSizeFor(int buttonHeight);

} // namespace qx::controls
