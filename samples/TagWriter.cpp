#include "TagWriter.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <iconv.h>
#include <stdexcept>
#include <system_error>

namespace samples {

struct TagWriter::Converter {
    iconv_t state = iconv_open("GBK", "UTF-8");

    Converter() {
        if (state == reinterpret_cast<iconv_t>(-1))
            throw std::system_error(errno, std::generic_category(), "GBK");
    }
    ~Converter() { iconv_close(state); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    void append(std::string& out, std::string_view utf8) const {
        std::string from(utf8), to(utf8.size() * 2, '\0');
        char *in = from.data(), *end = to.data();
        std::size_t inLeft = from.size(), outLeft = to.size();
        if (iconv(state, &in, &inLeft, &end, &outLeft) == static_cast<std::size_t>(-1))
            throw std::runtime_error("not in GBK: " + from);
        out.append(to, 0, to.size() - outLeft);
    }
};

TagWriter::TagWriter(LineEnd lineEnd, Encoding encoding)
    : lineEnd_(lineEnd == LineEnd::crlf ? "\r\n" : "\n"),
      converter_(encoding == Encoding::gbk ? std::make_unique<Converter>() : nullptr) {}
TagWriter::~TagWriter() = default;
TagWriter::TagWriter(TagWriter&&) noexcept = default;

namespace {

void appendPadded(std::string& out, std::int64_t value, std::size_t width) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const auto length = static_cast<std::size_t>(end - digits);
    out.append(width > length ? width - length : 0, ' ').append(digits, length);
}

} // namespace

void TagWriter::code(int value) {
    appendPadded(bytes_, value, 3);
    endLine();
}

void TagWriter::text(int groupCode, std::string_view utf8) {
    code(groupCode);
    const bool ascii = std::all_of(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) == 0; });
    if (ascii || !converter_)
        bytes_ += utf8;
    else
        converter_->append(bytes_, utf8);
    endLine();
}

void TagWriter::integer(int groupCode, std::int64_t value) {
    code(groupCode);
    appendPadded(bytes_, value, groupCode >= 90 && groupCode <= 99 ? 9 : 6);
    endLine();
}

void TagWriter::real(int groupCode, double value) {
    code(groupCode);
    char digits[400];
    auto end = std::to_chars(digits, digits + sizeof digits, value + 0.0, std::chars_format::fixed, 12).ptr;
    while (end[-1] == '0' && end[-2] != '.') --end;
    bytes_.append(digits, end);
    endLine();
}

void TagWriter::handle(int groupCode, Handle value) {
    code(groupCode);
    char digits[17];
    auto end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    std::transform(digits, end, digits, [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
    bytes_.append(digits, end);
    endLine();
}

void TagWriter::point(int groupCode, Point p) {
    real(groupCode, p.x);
    real(groupCode + 10, p.y);
}

void TagWriter::point3(int groupCode, Point p) {
    point(groupCode, p);
    real(groupCode + 20, 0);
}

} // namespace samples
