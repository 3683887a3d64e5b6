#include "db/Layers.h"

#include "dxf/Encoding.h"
#include "dxf/Tag.h"
#include "os/encoding.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace qx::db {

namespace {

/// Capitals whose small letters lie so far behind them; where that is 1 they take turns, capitals first.
struct Capitals {
    char32_t first, last, distance;
};
constexpr Capitals capitals[] = {
    {'A', 'Z', 32}, // Latin
    {0xC0, 0xD6, 32},    {0xD8, 0xDE, 32},     {0x100, 0x12E, 1},  {0x132, 0x136, 1},  {0x139, 0x147, 1},
    {0x14A, 0x176, 1},   {0x179, 0x17D, 1},    {0x1CD, 0x1DB, 1},  {0x1DE, 0x1EE, 1},  {0x1F8, 0x21E, 1},
    {0x222, 0x232, 1},   {0x246, 0x24E, 1},    {0x386, 0x386, 38}, // Greek
    {0x388, 0x38A, 37},  {0x38C, 0x38C, 64},   {0x38E, 0x38F, 63}, {0x391, 0x3A1, 32}, {0x3A3, 0x3AB, 32},
    {0x3D8, 0x3EE, 1},   {0x400, 0x40F, 80}, // Cyrillic
    {0x410, 0x42F, 32},  {0x460, 0x480, 1},    {0x48A, 0x4BE, 1},  {0x4C0, 0x4C0, 15}, {0x4C1, 0x4CD, 1},
    {0x4D0, 0x52E, 1},   {0x1E00, 0x1E94, 1},  // Latin with two marks
    {0x1EA0, 0x1EFE, 1}, {0xFF21, 0xFF3A, 32}, // Latin as wide as Chinese
};

char32_t smallLetter(char32_t c) {
    constexpr char32_t wideY = 0x178, smallWideY = 0xFF, lastSigma = 0x3C2;
    if (c == wideY) return smallWideY;
    if (c == lastSigma) return lastSigma + 1;
    const auto* found = std::ranges::lower_bound(capitals, c, {}, &Capitals::last);
    if (found == std::end(capitals) || c < found->first) return c;
    return found->distance == 1 ? c + (c - found->first + 1) % 2 : c + found->distance;
}

} // namespace

std::string foldedName(std::string_view utf8) {
    std::string folded{utf8};
    if (os::isAscii(utf8)) {
        for (char& c : folded) c = static_cast<char>(smallLetter(static_cast<unsigned char>(c)));
        return folded;
    }
    std::u32string text = os::toUtf32(utf8);
    for (char32_t& c : text) c = smallLetter(c);
    return os::toUtf8(text);
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
