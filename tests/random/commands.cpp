// Random runs of both commands. QX_RANDOM_RUNS and QX_RANDOM_SEED say how many, and where the seeds begin.
#include "random/RandomRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace qx::tests {
namespace {

unsigned fromEnvironment(const char* name, unsigned otherwise) {
    const char* text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

/// Writes the drawing and what was typed; how to see it again.
std::string kept(const RandomRun& run, unsigned seed) {
    const auto folder = std::filesystem::temp_directory_path();
    const std::string name = (folder / ("qx-random-" + std::to_string(seed))).string();
    std::ofstream{name + ".dxf", std::ios::binary} << run.bytes();
    std::ofstream{name + ".scr", std::ios::binary} << run.script();
    return "qxhost " + name + ".dxf < " + name + ".scr";
}

TEST(RandomCommands, KeepWhatEveryRunMustKeep) {
    const unsigned first = fromEnvironment("QX_RANDOM_SEED", 1),
                   runs = fromEnvironment("QX_RANDOM_RUNS", QX_RUNS);
    unsigned alignments = 0;
    for (unsigned seed = first; seed != first + runs; ++seed) {
        RandomRun run{seed};
        const std::string faults = run.faults();
        alignments += static_cast<unsigned>(run.alignments);
        if (!faults.empty()) ADD_FAILURE() << "seed " << seed << ": " << faults << "\n" << kept(run, seed);
    }
    RecordProperty("alignments", static_cast<int>(alignments));
    EXPECT_GE(alignments, runs / 4) << "answers that come to nothing try nothing";
}
} // namespace
} // namespace qx::tests
