// The command line of qxhost.
#pragma once

#include "os/Result.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::console {

struct Options {
    std::string drawing; ///< empty: none
    std::optional<std::string> script;
    std::optional<std::string> save, svg, report;
    std::vector<std::string> modules; ///< empty: the default one
    bool force = false;
    bool showVersion = false;
    bool showHelp = false;
};

/// The arguments without the program's name; a failure says what is wrong with them.
Result<Options> parseOptions(const std::vector<std::string>& arguments);

extern const char* const usage;

} // namespace qx::console
