// Gives a fuzz target inputs without a fuzzer: the files that are named, and those in named folders.
#include "fuzz/fuzzing.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> casesAt(const fs::path& path) {
    if (!fs::is_directory(path)) return {path};
    return {fs::directory_iterator{path}, {}};
}

void replay(const fs::path& path) {
    std::fprintf(stderr, "%s\n", path.filename().string().c_str());
    std::ifstream file{path, std::ios::binary};
    const std::vector<char> bytes{std::istreambuf_iterator<char>{file}, {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int count, char** arguments) {
    int replayed = 0;
    for (int i = 1; i < count; ++i)
        for (const fs::path& each : casesAt(arguments[i])) {
            replay(each);
            ++replayed;
        }
    qx::tests::demand(replayed > 0, "there is something to replay");
}
