// What every fuzz target is made of: the function that libFuzzer, or replay.cpp, calls with one input, and a
// check that ends the program with a sentence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace qx::tests {

inline void demand(bool holds, const char* sentence) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", sentence);
    std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace qx::tests
