#include "db/Layers.h"

#include "dxf/Encoding.h"
#include "dxf/Tag.h"

#include <cmath>

namespace qx::db {

std::string foldedName(std::string_view utf8) {
    std::string folded{utf8};
    for (char& c : folded)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return folded;
}

std::string nameKey(std::string_view utf8, std::string_view bytes) {
    return utf8.find("\uFFFD") == std::string_view::npos ? foldedName(utf8) : std::string{bytes};
}

LayerState& Layers::stateFor(std::string_view bytes) const {
    std::string name = encoding_.toUtf8(bytes);
    auto [place, isNew] = byFoldedName_.try_emplace(nameKey(name, bytes), nullptr);
    if (isNew) {
        place->second = &states_.emplace_back();
        place->second->name = std::move(name);
        place->second->bytes = bytes;
    }
    return *place->second;
}

bool Layers::add(Record* record, std::string_view bytes) {
    std::string_view name;
    int flags = 0, colour = 7;
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag) && tag.code < 1000;) {
        if (tag.code == 2) name = tag.value;
        const double number = tag.code == 70 || tag.code == 62 ? dxf::toReal(tag.value).value_or(0) : 0;
        if (!(std::abs(number) < 1e6)) continue;
        if (tag.code == 70) flags = static_cast<int>(number);
        if (tag.code == 62) colour = static_cast<int>(number);
    }
    constexpr int frozen = 1, locked = 4;
    LayerState& state = stateFor(name);
    if (state.record) return false;
    state.record = record;
    state.colour = std::abs(colour);
    state.off = colour < 0;
    state.frozen = flags & frozen;
    state.locked = flags & locked;
    return true;
}

// Every entity asks, and neighbours in a file mostly use the same few layers.
const LayerState& Layers::named(std::string_view bytes) const {
    for (const auto& [name, state] : recent_)
        if (state && name == bytes) return *state;
    const LayerState*& known = byBytes_[std::string{bytes}];
    if (!known) known = &stateFor(bytes);
    recent_[nextRecent_++ % recent_.size()] = {std::string{bytes}, known};
    return *known;
}

const LayerState* Layers::of(const Record* record) const {
    for (const LayerState& each : states_)
        if (each.record == record) return &each;
    return nullptr;
}

} // namespace qx::db
