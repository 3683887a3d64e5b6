// Text between the encodings a drawing may come in, UTF-8 (inside) and ACHAR (at the API).
// Nothing here fails: what can't be decoded becomes U+FFFD, one for each byte or unit.
#pragma once

#include "qxexport.h"

#include <string>
#include <string_view>

namespace qx::os {

/// UTF-8 to code points; surrogates and overlong forms count as undecodable.
QX_HOST_API std::u32string toUtf32(std::string_view utf8);
/// UTF-8 to the API's strings: UTF-16 where wchar_t has two bytes, code points where it has four.
QX_HOST_API std::wstring toWide(std::string_view utf8);
QX_HOST_API std::string toUtf8(std::u32string_view codePoints);
QX_HOST_API std::string toUtf8(std::wstring_view wide);

/// With U+FFFD in the place of each control character but the kept ones, so that text from a file can't give
/// orders to a terminal.
QX_HOST_API std::string withoutControls(std::string_view utf8, std::string_view kept = {});

QX_HOST_API bool isAscii(std::string_view bytes);
/// How many bytes at the front are ASCII. Whole files are asked for, so it goes by many bytes at once.
QX_HOST_API std::size_t asciiLength(std::string_view bytes);
/// Where the first byte stands that toUtf32() would not decode; the size when there is none.
QX_HOST_API std::size_t brokenUtf8In(std::string_view bytes);

/// Decodes the bytes of one code page, as drawings name it: "ANSI_936", "ANSI_1252", "DOS437", "ISO8859-5",
/// "GB2312", "UTF-8", ... in any case. Not for use by two threads at once.
class QX_HOST_API Converter {
public:
    /// An unknown name stands for ANSI_1252.
    explicit Converter(std::string_view codePage);
    Converter(Converter&& other) noexcept;
    Converter& operator=(Converter&& other) noexcept;
    ~Converter();

    /// Whether the system knows the page that was asked for.
    bool isKnown() const { return known_; }
    std::string toUtf8(std::string_view bytes);

private:
    std::string decoded(std::string_view bytes);

    void* handle_ = nullptr; // the system's; null decodes ASCII only
    bool known_ = true;
};

} // namespace qx::os
