#include "db/Version.h"

#include <algorithm>
#include <charconv>

namespace qx::db {

namespace {

/// The number of AC1009; 1000 for the spellings with a point, which are all older; 0 for anything else.
int numberIn(std::string_view acadver) {
    constexpr int oldest = 1000;
    if (acadver.starts_with("AC1.") || acadver.starts_with("AC2.")) return oldest;
    int number = 0;
    const char* end = acadver.data() + acadver.size();
    if (acadver.size() != 6 || !acadver.starts_with("AC1")) return 0;
    const auto [stop, error] = std::from_chars(acadver.data() + 2, end, number);
    return error == std::errc{} && stop == end ? number : 0;
}

std::string quoted(std::string_view text) {
    constexpr std::size_t most = 20;
    std::string shown{text.substr(0, most)};
    std::ranges::replace_if(
        shown, [](char c) { return c < 0x20 || c > 0x7E; }, '?');
    return '"' + shown + (text.size() > most ? "..." : "") + '"';
}

} // namespace

Version::Version(std::string_view acadver) : isStated_{!acadver.empty()} {
    const int number = numberIn(acadver);
    number_ = number == 0 ? r12 : std::min(number, newest);
    if (!isStated_)
        finding_ = "the drawing does not say its version; it is read like one of R12 (AC1009)";
    else if (number == 0)
        finding_ = "the version " + quoted(acadver) + " is not known; it is read like R12 (AC1009)";
    else if (number > newest)
        finding_ =
            "the version " + quoted(acadver) + " is too new to be known; it is read like 2018 (AC1032)";
}

} // namespace qx::db
