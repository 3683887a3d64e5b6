// A dialog template as text: a line for the dialog, then one for each control in its order.
#pragma once

#include <string>
#include <vector>

/// Of an extended template. A control reads `1232 radio group tab "text" 35,37 25x10`; style bits without a
/// name follow as a number, so that none is overlooked. A template that ends too early gives a last line "cut
/// short".
std::vector<std::string> dialogText(const std::string& bytes);
