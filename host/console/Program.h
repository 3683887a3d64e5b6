// The console program: reads a drawing, runs a script or talks to a person, and writes what was asked for.
#pragma once

#include "console/Options.h"
#include "console/ProgressLine.h"
#include "ed/CommandRunner.h"
#include "ed/Report.h"

#include <optional>

namespace qx::console {

enum class Exit { done = 0, wrongUsage = 1, unreadable = 2, scriptFailed = 3, unwritable = 4 };

class Program {
public:
    explicit Program(Options options);
    Exit run();
    /// Tells the modules that it is over. The drawing is left to the end of the process.
    void finish();

private:
    Exit read();
    Exit loadModules();
    Exit runCommands();
    Exit writeResults();
    Exit writeReport(Exit otherwise);
    /// Those of the open drawing that were not yet told.
    void printFindings();
    bool mayReplace(const std::string& path) const;
    /// A path that is given for two things, empty when there is none.
    std::string pathUsedTwice() const;

    Options options_;
    ProgressLine progress_;
    ed::Session session_;
    ed::Report report_;
    std::optional<std::string> scriptText_;
    std::size_t findingsTold_ = 0; ///< of the open drawing
};

} // namespace qx::console
