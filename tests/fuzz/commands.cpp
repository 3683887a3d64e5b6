// A drawing, a line with a percent sign, a script; without that line, a script that moves and turns whatever
// is there.
#include "fuzz/ScriptedSession.h"
#include "fuzz/fuzzing.h"

#include <utility>

using namespace qx;

namespace {

constexpr std::string_view separator = "\n%\n";
constexpr std::string_view usualScript = "KV_PositionAlign\nO\nL\n1\nALL\n\n100,50\n"
                                         "KV_PositionAlign\nG\nHD\nALL\n\n"
                                         "KV_ObjectAlign\nO\nS\n2\nL\nALL\n\n0,0\n\n"
                                         "KV_ObjectAlign\nO\nW\n\nP\nALL\n\n\n0,0\n3,4\n1,1\n0,0\n0,0\n\n";

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = tests::textOf(data, size);
    const std::size_t end = input.find(separator);
    const bool hasScript = end != input.npos;
    const std::string_view bytes = hasScript ? input.substr(0, end + 1) : input;
    auto drawing = db::Drawing::fromBytes(bytes, "fuzz.dxf");
    if (!drawing) return 0;
    tests::ScriptedSession session{std::move(*drawing)};
    session.run(hasScript ? input.substr(end + separator.size()) : usualScript);
    tests::demandGoodOrder(session, bytes);
    return 0;
}
