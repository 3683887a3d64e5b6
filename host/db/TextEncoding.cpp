#include "db/TextEncoding.h"

#include "os/encoding.h"

#include <algorithm>

namespace qx::db {

using dxf::Encoding;

TextEncoding textEncodingOf(std::string_view file, const Version& version, std::string_view codePage) {
    const Encoding& utf8 = Encoding::of("UTF-8");
    if (version.isUtf8()) return {&utf8, {}};
    if (file.starts_with("\xEF\xBB\xBF"))
        return {&utf8, "the file begins with the mark of UTF-8; its texts are read so"};
    if (!codePage.empty()) {
        const Encoding& named = Encoding::of(codePage);
        if (named.isKnown()) return {&named, {}};
        std::string shown{codePage.substr(0, 20)};
        std::ranges::replace_if(
            shown, [](char c) { return c < 0x20 || c > 0x7E; }, '?');
        return {&named, "the code page \"" + shown + "\" is not known here; texts are read as ANSI_1252"};
    }
    const Encoding& western = Encoding::of("ANSI_1252");
    if (os::isAscii(file)) return {&western, {}};
    const bool isGuessed = !version.isStated() && os::brokenUtf8In(file) == file.size();
    return {isGuessed ? &utf8 : &western,
            std::string{"the drawing does not say how its texts are encoded; they are read as "} +
                (isGuessed ? "UTF-8" : "ANSI_1252")};
}

BrokenLines linesWithBrokenUtf8(std::string_view file) {
    BrokenLines lines;
    std::size_t at = os::brokenUtf8In(file);
    for (lines.first = at; at < file.size(); at += os::brokenUtf8In(file.substr(at))) {
        ++lines.count;
        at = std::min(file.find('\n', at), file.size());
    }
    return lines;
}

} // namespace qx::db
