// generate [--check] FOLDER: writes the sample drawings, or says whether the files there are the ones it
// would write.
#include "drawings.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>

namespace {

bool isSame(const std::string& path, const std::string& bytes) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {}) == bytes;
}

bool handle(const std::string& path, const std::string& bytes, bool checkOnly) {
    if (checkOnly) {
        const bool same = isSame(path, bytes);
        std::printf("%s: %s\n", path.c_str(), same ? "up to date" : "differs from what the generator writes");
        return same;
    }
    std::ofstream out(path, std::ios::binary);
    out << bytes << std::flush;
    if (!out) std::fprintf(stderr, "generate: can't write %s\n", path.c_str());
    return static_cast<bool>(out);
}

} // namespace

int main(int count, char** arguments) {
    const bool checkOnly = count == 3 && arguments[1] == std::string_view("--check");
    if (count != 2 && !checkOnly) {
        std::fprintf(stderr, "usage: generate [--check] FOLDER\n");
        return 1;
    }
    const std::string folder = arguments[count - 1];
    const bool site = handle(folder + "/siteplan.dxf", samples::siteplan(), checkOnly);
    const bool floor = handle(folder + "/floorplan.dxf", samples::floorplan(), checkOnly);
    return site && floor ? 0 : 2;
}
