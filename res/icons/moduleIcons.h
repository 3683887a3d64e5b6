// The module's icons: the product's, and the pictures on its buttons. Drawn pixel by pixel for each size,
// from one set of bars, guide lines and colours that can be told from a light background and from a dark one.
#pragma once

#include "Canvas.h"

#include <span>
#include <string>

namespace qx::icons {

struct ModuleIcon {
    const char* name;             ///< of the file, without its extension
    void (*draw)(Canvas& canvas); ///< on a transparent canvas of 16, 20, 24 or 32 pixels
};

std::span<const ModuleIcon> moduleIcons();

/// All four sizes in one file, the smallest first.
std::string iconFile(const ModuleIcon& icon);

} // namespace qx::icons
