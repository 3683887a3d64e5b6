// What a program wants to know about its surroundings.
#pragma once

#include "qxexport.h"

#include <string>
#include <vector>

namespace qx::os {

enum class StandardStream { input, output, error };

/// Whether a person sits at the other end.
QX_HOST_API bool isTerminal(StandardStream stream);

/// The folder of the running executable, UTF-8, without a separator at the end; "." when the system won't
/// say.
QX_HOST_API std::string programFolder();

/// The program's arguments without its name, UTF-8; `count` and `values` are what main() was given.
QX_HOST_API std::vector<std::string> programArguments(int count, char** values);

/// From now on standard input, output and error carry bytes as they are, and a terminal shows them as UTF-8.
QX_HOST_API void useUtf8Streams();

/// From now on a write beyond a limit of the system fails like any other, instead of ending the process.
QX_HOST_API void reportWriteErrors();

} // namespace qx::os
