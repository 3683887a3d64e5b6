// A script over a drawing that has one of everything.
#include "fuzz/ScriptedSession.h"
#include "fuzz/fuzzing.h"
#include "os/files.h"

#include <utility>

using namespace qx;

namespace {

const os::Bytes& sample() {
    static const auto bytes = os::readFile(QX_SOURCE_DIR "/samples/schematic.dxf");
    tests::demand(static_cast<bool>(bytes), "the sample can be read");
    return *bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = sample().view();
    tests::ScriptedSession session{std::move(*db::Drawing::fromBytes(bytes, "fuzz.dxf"))};
    session.run(tests::textOf(data, size));
    tests::demandGoodOrder(session, bytes);
    return 0;
}
