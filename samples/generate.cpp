// generate [--check] FOLDER: writes the sample drawings, or says whether the files there are the ones it
// would write.
#include "drawings.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>

namespace {

struct Named {
    const char* file;
    std::string (*draw)();
};
constexpr Named drawings[] = {{"/siteplan.dxf", samples::siteplan},
                              {"/floorplan.dxf", samples::floorplan},
                              {"/schematic.dxf", samples::schematic}};

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
    bool allGood = true;
    for (const auto& [name, draw] : drawings) allGood &= handle(folder + name, draw(), checkOnly);
    return allGood ? 0 : 2;
}
