#include "encoding.h"

#include <array>
#include <cerrno>
#include <iconv.h>

namespace qx::os {
namespace {

constexpr std::string_view replacementUtf8 = "\xEF\xBF\xBD";

struct PageName {
    std::string_view prefix; // as drawings write it, in capitals; the rest of the name is taken over
    std::string_view system;
};

// In this order: whole names stand before the families they would fall into.
constexpr std::array pageNames = {
    PageName{"ANSI_1361", "JOHAB"}, PageName{"ANSI_", "CP"},          PageName{"DOS932", "CP932"},
    PageName{"DOS", "CP"},          PageName{"ISO_8859", "ISO-8859"}, PageName{"ISO8859", "ISO-8859"},
    PageName{"8859_", "ISO-8859-"}, PageName{"GB2312", "CP936"},      PageName{"BIG5", "CP950"},
    PageName{"KSC5601", "CP949"},   PageName{"JOHAB", "JOHAB"},       PageName{"MAC-ROMAN", "MACINTOSH"},
    PageName{"UTF-8", "UTF-8"},     PageName{"ASCII", "CP1252"},
};

std::string systemName(std::string_view codePage) {
    std::string name{codePage};
    for (char& c : name)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    for (const PageName& page : pageNames)
        if (name.starts_with(page.prefix)) return std::string{page.system} + name.substr(page.prefix.size());
    return {};
}

void* openConversion(const std::string& name) {
    if (name.empty()) return nullptr;
    const iconv_t handle = ::iconv_open("UTF-8", name.c_str());
    return handle == reinterpret_cast<iconv_t>(-1) ? nullptr : handle;
}

/// Decodes up to the first byte that can't be, which becomes U+FFFD; advances `in` past both.
void decodeRun(iconv_t handle, std::string_view& in, std::string& out) {
    std::array<char, 1024> chunk;
    auto* from = const_cast<char*>(in.data()); // the call's type is older than const
    std::size_t left = in.size();
    std::size_t result = 0;
    do {
        char* to = chunk.data();
        std::size_t room = chunk.size();
        result = ::iconv(handle, &from, &left, &to, &room);
        out.append(chunk.data(), chunk.size() - room);
    } while (result == static_cast<std::size_t>(-1) && errno == E2BIG);
    in.remove_prefix(in.size() - left);
    // Pages with combining marks hold a letter back until they have seen what follows.
    char* to = chunk.data();
    std::size_t room = chunk.size();
    ::iconv(handle, nullptr, nullptr, &to, &room);
    out.append(chunk.data(), chunk.size() - room);
    if (in.empty()) return;
    out += replacementUtf8;
    in.remove_prefix(1);
}

} // namespace

Converter::Converter(std::string_view codePage) : handle_{openConversion(systemName(codePage))} {
    known_ = handle_ != nullptr;
    if (!known_) handle_ = openConversion("CP1252");
}

Converter::~Converter() {
    if (handle_) ::iconv_close(handle_);
}

std::string Converter::decoded(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    if (!handle_) {
        for (const char c : bytes) (c & 0x80) ? out += replacementUtf8 : out += c;
        return out;
    }
    while (!bytes.empty()) decodeRun(handle_, bytes, out);
    return out;
}

} // namespace qx::os
