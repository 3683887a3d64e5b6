#include "codePages.h"

#include <array>
#include <charconv>
#include <string>

namespace qx::os {
namespace {

constexpr unsigned firstPage = 437, lastPage = johabPage; // of those that go by their number

struct PageName {
    std::string_view prefix; // as drawings write it, in capitals; a number follows where `page` is none
    unsigned page;
    bool isIso = false;
};

constexpr std::array pageNames = {
    PageName{"ANSI_", 0},           PageName{"DOS", 0},
    PageName{"ISO8859-", 0, true},  PageName{"ISO_8859-", 0, true},
    PageName{"ISO-8859-", 0, true}, PageName{"ISO8859_", 0, true},
    PageName{"ISO_8859_", 0, true}, PageName{"8859_", 0, true},
    PageName{"GB2312", 936},        PageName{"GBK", 936},
    PageName{"BIG5", 950},          PageName{"KSC5601", 949},
    PageName{"JOHAB", johabPage},   PageName{"MAC-ROMAN", macRomanPage},
    PageName{"UTF-8", utf8Page},    PageName{"UTF8", utf8Page},
    PageName{"ASCII", westernPage},
};

unsigned numbered(const PageName& family, std::string_view digits) {
    unsigned number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (stop != end || error != std::errc{}) return 0;
    if (family.isIso) return number >= 1 && number <= 16 ? firstIsoPage + number - 1 : 0;
    return number >= firstPage && number <= lastPage ? number : 0;
}

} // namespace

unsigned codePageNumber(std::string_view name) {
    std::string capitals{name};
    for (char& c : capitals)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    const std::string_view all = capitals;
    for (const PageName& each : pageNames) {
        if (!all.starts_with(each.prefix)) continue;
        const std::string_view rest = all.substr(each.prefix.size());
        if (each.page == 0) return numbered(each, rest);
        if (rest.empty()) return each.page;
    }
    return 0;
}

} // namespace qx::os
