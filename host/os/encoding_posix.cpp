#include "codePages.h"
#include "encoding.h"

#include <array>
#include <cerrno>
#include <iconv.h>

namespace qx::os {
namespace {

constexpr std::string_view replacementUtf8 = "\xEF\xBF\xBD";

/// The converter library's name of a page; empty for 0.
std::string systemName(unsigned page) {
    if (page == 0) return {};
    if (page == johabPage) return "JOHAB";
    if (page == macRomanPage) return "MACINTOSH";
    if (page == utf8Page) return "UTF-8";
    const bool isIso = page >= firstIsoPage && page <= lastIsoPage;
    return isIso ? "ISO-8859-" + std::to_string(page - firstIsoPage + 1) : "CP" + std::to_string(page);
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

Converter::Converter(std::string_view codePage)
    : handle_{openConversion(systemName(codePageNumber(codePage)))} {
    known_ = handle_ != nullptr;
    if (!known_) handle_ = openConversion(systemName(westernPage));
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
