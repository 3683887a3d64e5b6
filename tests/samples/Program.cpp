#include "samples/Program.h"

#include "console/runInFolder.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace qx::tests {
namespace fs = std::filesystem;
namespace {

std::string firstDifference(const std::string& kept, const std::string& actual) {
    std::istringstream left{kept}, right{actual};
    std::string keptLine, actualLine;
    for (int number = 1;; ++number) {
        const bool more = !std::getline(left, keptLine).fail(),
                   moreActual = !std::getline(right, actualLine).fail();
        if (!more && !moreActual) return {};
        if (more && moreActual && keptLine == actualLine) continue;
        return "  line " + std::to_string(number) + "\n  kept: " + (more ? keptLine : "(nothing)") +
               "\n  now:  " + (moreActual ? actualLine : "(nothing)") + '\n';
    }
}

} // namespace

Outcome runIn(const TemporaryFolder& folder, const std::string& commandLine) {
    put(folder / "input", "");
    const int exit = runInFolder(folder.path(), commandLine);
    return {exit, contentOf(folder / "output"), contentOf(folder / "errors")};
}

Outcome runProgram(const TemporaryFolder& folder, const std::string& arguments) {
    return runIn(folder, "'" QX_QXHOST "' " + arguments);
}

std::string troublesIn(const Outcome& outcome) {
    std::istringstream lines{outcome.errors};
    std::string troubles;
    for (std::string line; std::getline(lines, line);)
        if (!line.ends_with(") can't be selected")) troubles += line + '\n';
    return troubles;
}

std::string samplePath(const std::string& name) { return QX_SOURCE_DIR "/samples/" + name; }

std::vector<std::string> sampleScripts(const std::string& drawing) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator{QX_SOURCE_DIR "/samples"}) {
        const fs::path file = entry.path();
        if (file.extension() == ".scr" && file.filename().string().starts_with(drawing))
            names.push_back(file.stem().string());
    }
    std::ranges::sort(names);
    return names;
}

std::string drawingOf(const std::string& script) { return script.substr(0, script.find('-')); }

void expectKept(const std::string& name, const std::string& actual) {
    const std::string path = QX_SOURCE_DIR "/" + name;
    if (std::getenv("QX_KEEP"))
        put(path, actual);
    else if (const std::string kept = contentOf(path); kept != actual)
        ADD_FAILURE() << name << " is not what the program gives.\n"
                      << firstDifference(kept, actual)
                      << "If the program is right, `QX_KEEP=1 build/linux/bin/test_samples` writes it anew.";
}

} // namespace qx::tests
