// What the module asked of the editor, in order.
#pragma once

#include <string>
#include <vector>

extern std::vector<std::string> calls;
