// The layers of a drawing, by name and with their state. Names compare without regard to the case of Latin,
// Greek and Cyrillic letters.
#pragma once

#include "db/Record.h"

#include <array>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace qx::dxf {
class Encoding;
}

namespace qx::db {

/// State of a layer, at a stable address.
struct LayerState {
    std::string name;  ///< UTF-8
    std::string bytes; ///< the name as the file has it
    Record* record = nullptr;
    int colour = 7;
    bool off = false, frozen = false, locked = false;
    bool isVisible() const { return !off && !frozen; }
};

class QX_HOST_API Layers {
public:
    explicit Layers(const dxf::Encoding& encoding) : encoding_{encoding} {}
    /// Takes in a record of the layer table, with its bytes. False for a name that has a record already.
    bool add(Record* record, std::string_view bytes);
    /// By the name as an entity's bytes have it. A name that the table does not know gives a visible,
    /// unlocked layer of that name.
    const LayerState& named(std::string_view bytes) const;
    const std::deque<LayerState>& all() const { return states_; }
    /// Null for a record that is no layer.
    const LayerState* of(const Record* record) const;

private:
    LayerState& stateFor(std::string_view bytes) const;

    const dxf::Encoding& encoding_;
    mutable std::deque<LayerState> states_;
    mutable std::unordered_map<std::string, LayerState*> byFoldedName_;
    mutable std::unordered_map<std::string, const LayerState*> byBytes_;      ///< as entities spell it
    mutable std::array<std::pair<std::string, const LayerState*>, 8> recent_; ///< the layers asked for last
    mutable std::size_t nextRecent_ = 0;
};

/// Latin, Greek and Cyrillic letters in lower case, whatever the system's language; other characters stay.
std::string foldedName(std::string_view utf8);
/// What two spellings of the same name have in common: the folded name, or the bytes themselves where not all
/// of them could be decoded, so that different names don't become one.
std::string nameKey(std::string_view utf8, std::string_view bytes);

} // namespace qx::db
