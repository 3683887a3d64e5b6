#include "db/HandleHash.h"

#include <chrono>

namespace qx::db {
namespace {

struct Secret {
    std::uint64_t mask, factor;
};

/// Finalizer of MurmurHash3 (Appleby).
std::uint64_t mixed(std::uint64_t number) {
    number = (number ^ number >> 33) * 0xFF51AFD7ED558CCDu;
    number = (number ^ number >> 33) * 0xC4CEB9FE1A85EC53u;
    return number ^ number >> 33;
}

Secret chosen() {
    static const char place = 0; // somewhere else in each run, where the system cares for that
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    const auto today = std::chrono::system_clock::now().time_since_epoch().count();
    const std::uint64_t mask =
        mixed(static_cast<std::uint64_t>(now) ^ mixed(reinterpret_cast<std::uintptr_t>(&place)));
    return {mask, mixed(mask ^ static_cast<std::uint64_t>(today)) | 1};
}

const Secret secret = chosen();

} // namespace

std::size_t HandleHash::operator()(std::uint64_t handle) const noexcept {
    // Neighbours, which are mostly asked for together, stand in one line of the processor's cache.
    constexpr unsigned lineBits = 3;
    constexpr std::uint64_t inLine = (1u << lineBits) - 1;
    const std::uint64_t line = mixed(((handle >> lineBits) ^ secret.mask) * secret.factor);
    return static_cast<std::size_t>(line << lineBits | (handle & inLine));
}

} // namespace qx::db
