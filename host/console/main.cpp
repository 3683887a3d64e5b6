#include "console/Program.h"
#include "os/crashes.h"
#include "os/terminal.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
    using namespace qx::console;
    qx::os::endOnCrash();
    qx::os::useUtf8Streams();
    auto options = parseOptions(qx::os::programArguments(count, arguments));
    if (!options) {
        std::fprintf(stderr, "qxhost: %s\n%s", options.error().c_str(), usage);
        return static_cast<int>(Exit::wrongUsage);
    }
    if (options->showHelp) {
        std::fputs(usage, stdout);
        return 0;
    }
    if (options->showVersion) {
        std::puts("qxhost " QX_VERSION);
        return 0;
    }
    qx::os::reportWriteErrors();
    Program program{*options};
    const Exit exit = program.run();
    program.finish();
    // Freeing a large drawing object by object takes longer than everything else that is left to do.
    std::_Exit(static_cast<int>(exit));
}
