// Runs a program and stands between it and the disk.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What happens at one of the program's changes to files: a call that makes, writes, renames, links, removes
/// or flushes a file, or changes its rights. Standard output and errors don't count.
struct Mishap {
    int change;    ///< counted from 0
    int error = 0; ///< what the system answers instead of doing it; 0: the program is killed before it
};

struct TracedEnd {
    int exit = -1; ///< -1: killed
    bool hasHappened = false;
    std::string call; ///< the system call of the mishap
};

/// Runs the program in the folder, with nothing to read; what it writes goes to the files `output` and
/// `errors` there. Nothing when this system doesn't let programs be traced.
std::optional<TracedEnd> runTraced(const std::filesystem::path& folder, const std::vector<std::string>& words,
                                   const Mishap& mishap);
