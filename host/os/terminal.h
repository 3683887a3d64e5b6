// What a program wants to know about its surroundings.
#pragma once

#include "qxexport.h"

#include <string>

namespace qx::os {

enum class StandardStream { input, output, error };

/// Whether a person sits at the other end.
QX_HOST_API bool isTerminal(StandardStream stream);

/// The folder of the running executable, UTF-8, without a separator at the end; "." when the system won't
/// say.
QX_HOST_API std::string programFolder();

/// From now on a write beyond a limit of the system fails like any other, instead of ending the process.
QX_HOST_API void reportWriteErrors();

} // namespace qx::os
