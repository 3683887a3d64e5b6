// Runs a program as a person or another program would.
#pragma once

#include <filesystem>
#include <string>

/// Runs a command line in the folder, and gives its exit code. Standard input comes from the file `input`
/// there, what is written goes to the files `output` and `errors`. Words with blanks, and empty ones, stand
/// in single quotes.
int runInFolder(const std::filesystem::path& folder, const std::string& commandLine);
