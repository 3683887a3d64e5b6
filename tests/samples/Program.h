// Runs `qxhost`, with the module, as a process of its own, and compares what comes out with files that are
// kept.
#pragma once

#include "os/TemporaryFolder.h"

#include <string>
#include <vector>

namespace qx::tests {

struct Outcome {
    int exit = -1;
    std::string transcript, errors;
};

/// Runs a command line in the folder, without input.
Outcome runIn(const TemporaryFolder& folder, const std::string& commandLine);

/// Runs the program of this build in the folder.
Outcome runProgram(const TemporaryFolder& folder, const std::string& arguments);

/// What was said besides which objects of the drawing can't be selected.
std::string troublesIn(const Outcome& outcome);

std::string samplePath(const std::string& name);

/// The names of the sample scripts without their ending, in order; of one drawing, or of all.
std::vector<std::string> sampleScripts(const std::string& drawing = {});

/// "floorplan" of "floorplan-tags-centre".
std::string drawingOf(const std::string& script);

/// Fails unless the kept file (named from the top of the tree) holds `actual`; writes it instead when QX_KEEP
/// is set.
void expectKept(const std::string& name, const std::string& actual);

} // namespace qx::tests
