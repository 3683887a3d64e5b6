// Writes a drawing for timing runs. Unless told otherwise, each thousand entities begin with a group of ten.
#include "bench/DrawingGenerator.h"

#include <charconv>
#include <cstdio>
#include <string_view>

namespace {

struct Options {
    qx::bench::DrawingOptions drawing;
    std::string path;
};

bool readNumber(std::string_view text, std::size_t& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool readOptions(int argc, char** argv, Options& options) {
    auto& drawing = options.drawing;
    if (argc < 3 || !readNumber(argv[1], drawing.count)) return false;
    options.path = argv[2];
    drawing.groups = drawing.count / 1000;
    for (int i = 3; i < argc; ++i) {
        const std::string_view name = argv[i];
        const auto number = [&](std::size_t& value) { return i + 1 < argc && readNumber(argv[++i], value); };
        const bool known = name == "--crlf"         ? (drawing.crlf = true)
                           : name == "--ac1015"     ? (drawing.r2000 = true)
                           : name == "--seed"       ? number(drawing.seed)
                           : name == "--groups"     ? number(drawing.groups)
                           : name == "--group-size" ? number(drawing.groupSize)
                                                    : false;
        if (!known) return false;
    }
    return fits(drawing);
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!readOptions(argc, argv, options)) {
        std::fprintf(stderr,
                     "usage: generateDrawing COUNT OUT.dxf [--seed N] [--crlf] [--ac1015] [--groups N] "
                     "[--group-size N]\n(groups x group size must fit into COUNT)\n");
        return 1;
    }
    if (qx::bench::writeDrawing(options.drawing, options.path)) return 0;
    std::fprintf(stderr, "generateDrawing: can't write %s\n", options.path.c_str());
    return 2;
}
