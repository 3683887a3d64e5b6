// Lines from standard input, and Ctrl+C as an answer instead of an end.
#pragma once

#include <string>

namespace qx::console {

enum class LineRead { line, interrupted, end };

/// From now on Ctrl+C interrupts the reading of a line, or the next one when none is being read.
void catchInterrupts();

/// The next line without its line end. An interrupted line is lost.
LineRead readLine(std::string& line);

} // namespace qx::console
