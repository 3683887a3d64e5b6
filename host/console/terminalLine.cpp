#include "console/terminalLine.h"

#include "console/terminalPieces.h"

#include <utility>

namespace qx::console {
namespace {

bool takeLine(std::string& pending, std::string& line) {
    const std::size_t end = pending.find('\n');
    if (end == std::string::npos) return false;
    line = pending.substr(0, end);
    if (line.ends_with('\r')) line.pop_back();
    pending.erase(0, end + 1);
    return true;
}

} // namespace

LineRead readLine(std::string& line) {
    static std::string pending;
    do {
        if (takeInterrupt()) {
            pending.clear();
            return LineRead::interrupted;
        }
        if (takeLine(pending, line)) return LineRead::line;
    } while (readPiece(pending));
    if (pending.empty()) return LineRead::end;
    line = std::exchange(pending, {});
    return LineRead::line;
}

} // namespace qx::console
