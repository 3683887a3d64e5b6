#include "console/terminalLine.h"

#include "console/terminalPieces.h"

#include <utility>

namespace qx::console {
namespace {

/// What was read and is no line yet. Time grows with the input, whether it is one long line or many short
/// ones.
class Pending {
public:
    bool isEmpty() const { return begin_ == bytes_.size(); }
    void clear() { takeRest(); }
    bool readPiece() {
        bytes_.erase(0, std::exchange(begin_, 0));
        looked_ = bytes_.size();
        return console::readPiece(bytes_);
    }
    bool takeLine(std::string& line) {
        const std::size_t end = bytes_.find('\n', looked_);
        if (end == std::string::npos) return false;
        line = bytes_.substr(begin_, end - begin_);
        if (line.ends_with('\r')) line.pop_back();
        begin_ = looked_ = end + 1;
        return true;
    }
    std::string takeRest() {
        bytes_.erase(0, std::exchange(begin_, 0));
        looked_ = 0;
        return std::exchange(bytes_, {});
    }

private:
    std::string bytes_;
    std::size_t begin_ = 0;  ///< of the next line
    std::size_t looked_ = 0; ///< no line ends before
};

} // namespace

LineRead readLine(std::string& line) {
    static Pending pending;
    do {
        if (takeInterrupt()) {
            pending.clear();
            return LineRead::interrupted;
        }
        if (pending.takeLine(line)) return LineRead::line;
    } while (pending.readPiece());
    if (pending.isEmpty()) return LineRead::end;
    line = pending.takeRest();
    return LineRead::line;
}

} // namespace qx::console
