// generateIcons FOLDER: writes the module's icons there, one file each.
#include "moduleIcons.h"

#include <cstdio>
#include <fstream>

static bool write(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes << std::flush;
    if (!out) std::fprintf(stderr, "generateIcons: can't write %s\n", path.c_str());
    return static_cast<bool>(out);
}

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: generateIcons FOLDER\n");
        return 1;
    }
    const std::string folder = arguments[1];
    bool allGood = true;
    for (const qx::icons::ModuleIcon& icon : qx::icons::moduleIcons())
        allGood &= write(folder + "/" + icon.name + ".ico", qx::icons::iconFile(icon));
    return allGood ? 0 : 2;
}
