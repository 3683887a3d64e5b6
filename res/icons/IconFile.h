// The bytes of an icon file.
#pragma once

#include "Canvas.h"

#include <string>

namespace qx::icons {

/// Images in the order given, each with 32 bits per pixel and a mask for displays without transparency. A
/// program that asks for no particular size gets the first. At most 32 pixels wide.
std::string iconFile(const std::vector<Canvas>& images);

} // namespace qx::icons
