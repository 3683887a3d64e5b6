#include "db/TextEncoding.h"

#include "dxf/Tag.h"
#include "os/encoding.h"

#include <algorithm>
#include <vector>

namespace qx::db {

using dxf::Encoding;

TextEncoding textEncodingOf(std::string_view file, const Version& version, std::string_view codePage) {
    const Encoding& utf8 = Encoding::of("UTF-8");
    if (version.isUtf8()) return {&utf8, {}};
    if (file.starts_with("\xEF\xBB\xBF"))
        return {&utf8, "the file begins with the mark of UTF-8; its texts are read so", true};
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

namespace {

/// Finds the bytes that a code page does not have. Asks the page once about each character that occurs.
class CodePageSearch {
public:
    explicit CodePageSearch(const Encoding& encoding) : encoding_{encoding} {}

    /// Where the first such byte is; the size when there is none.
    std::size_t operator()(std::string_view bytes) {
        for (std::size_t at = 0; at < bytes.size();) {
            at += os::asciiLength(bytes.substr(at));
            if (at == bytes.size()) break;
            const std::size_t length = has(bytes.substr(at, 1)) ? 1 : has(bytes.substr(at, 2)) ? 2 : 0;
            if (length == 0) return at;
            at += length;
        }
        return bytes.size();
    }

private:
    bool has(std::string_view character) {
        std::size_t index = static_cast<unsigned char>(character.front());
        if (character.size() > 1) index = index << 8 | static_cast<unsigned char>(character.back());
        char& known = known_[index];
        if (known == 0) known = encoding_.toUtf8(character).find("\uFFFD") == std::string::npos ? 'y' : 'n';
        return known == 'y';
    }

    const Encoding& encoding_;
    std::vector<char> known_ = std::vector<char>(std::size_t{1} << 16);
};

/// The line that ends before `end`, which goes back to its beginning.
std::string_view lineBefore(std::string_view file, std::size_t& end) {
    if (end == 0) return {};
    const std::size_t last = end - 1, before = last == 0 ? file.npos : file.rfind('\n', last - 1);
    end = before == file.npos ? 0 : before + 1;
    std::string_view line = file.substr(end, last - end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return dxf::trimmed(line);
}

bool isPartOfLongText(std::string_view file, std::size_t at) {
    std::size_t begin = at == 0 ? file.npos : file.rfind('\n', at - 1);
    begin = begin == file.npos ? 0 : begin + 1;
    if (lineBefore(file, begin) == "3") return true;
    lineBefore(file, begin);
    return lineBefore(file, begin) == "3";
}

template <class Search> BrokenLines linesWhere(std::string_view file, Search&& search) {
    BrokenLines lines{0, file.size()};
    for (std::size_t at = search(file); at < file.size(); at += search(file.substr(at))) {
        if (!isPartOfLongText(file, at)) {
            ++lines.count;
            lines.first = std::min(lines.first, at);
        }
        at = std::min(file.find('\n', at), file.size());
    }
    return lines;
}

} // namespace

BrokenLines linesWithBrokenText(std::string_view file, const Encoding& encoding) {
    if (encoding.isUtf8()) return linesWhere(file, os::brokenUtf8In);
    return linesWhere(file, CodePageSearch{encoding});
}

} // namespace qx::db
