// The system's error codes in plain English.
#pragma once

#include <string>

namespace qx::os {

/// Why a call failed, as the end of a sentence. Not the system's own text: that follows the user's language.
std::string reasonFor(unsigned long error);

} // namespace qx::os
