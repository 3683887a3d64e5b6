// What the system gives of standard input, piece by piece; terminalLine.cpp makes lines of it.
#pragma once

#include <string>

namespace qx::console {

/// Waits for input and appends it, which may be nothing when Ctrl+C ends the waiting; false at the end.
bool readPiece(std::string& text);

/// Whether Ctrl+C was pressed since the last time that this was asked.
bool takeInterrupt();

} // namespace qx::console
