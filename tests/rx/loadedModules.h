// What the system itself says about a module.
#pragma once

#include <string>

/// Whether the file is mapped into this process.
bool isInProcess(const std::string& path);

/// Gives back one load of the file, whose owner has given up the right to.
void unloadOnce(const std::string& path);
