#include "console/runInFolder.h"

#include <cstdlib>
#include <sys/wait.h>

int runInFolder(const std::filesystem::path& folder, const std::string& commandLine) {
    const std::string command =
        "cd '" + folder.string() + "' && " + commandLine + " < input > output 2> errors";
    return WEXITSTATUS(std::system(command.c_str()));
}
