// How the text of a drawing is stored: as UTF-8 or in a code page. Either may hold
// \U+XXXX, and \M+nXXXX for a double-byte character of one of five East Asian code pages.
#pragma once

#include "qxexport.h"

#include <memory>
#include <string>
#include <string_view>

namespace qx::os {
class Converter;
}

namespace qx::dxf {

class QX_HOST_API Encoding {
public:
    /// By the name of a code page as in $DWGCODEPAGE, in any case. Lives until the process ends.
    static const Encoding& of(std::string_view codePage);
    ~Encoding();
    Encoding(const Encoding&) = delete;
    Encoding& operator=(const Encoding&) = delete;

    /// Whether the system has that page; otherwise ANSI_1252 stands in.
    bool isKnown() const;
    bool isUtf8() const { return !converter_; }

    /// Bytes that stand for no character become U+FFFD; this never fails. The bytes are decoded before
    /// escapes are looked for, since a double-byte character may end in a backslash.
    std::u32string decode(std::string_view bytes) const;
    /// The same for multiline text, which has codes of its own: in "\\\\U+0041" the first backslash only
    /// shows the second, and a backslash or brace that comes from an escape gets a backslash in front, so
    /// that it is no code.
    std::u32string decodeMultiline(std::string_view bytes) const;
    std::string toUtf8(std::string_view bytes) const;
    /// Bytes that toUtf8() reads as that text, which has no backslash. In a code page all that is not ASCII
    /// becomes an escape, whether or not the page has it.
    std::string fromUtf8(std::string_view utf8) const;

private:
    explicit Encoding(const std::string& codePage);
    std::string rawToUtf8(std::string_view bytes) const;
    std::unique_ptr<os::Converter> converter_; ///< null: UTF-8
};

} // namespace qx::dxf
