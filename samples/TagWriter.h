// Writes the tags of a text DXF file into memory: code line, value line, nothing else.
// Text comes in as UTF-8 and leaves in the file's encoding; reals have at most twelve decimals and never an
// exponent. The writer knows neither sections nor entities, and does not check that codes and values fit.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace samples {

using Handle = std::uint64_t;

struct Point {
    double x = 0;
    double y = 0;
};
inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }

enum class LineEnd { lf, crlf };
enum class Encoding { utf8, gbk };

class TagWriter {
public:
    TagWriter(LineEnd lineEnd, Encoding encoding);
    ~TagWriter();
    TagWriter(TagWriter&&) noexcept;

    void text(int code, std::string_view utf8);
    void integer(int code, std::int64_t value);
    void real(int code, double value);
    void handle(int code, Handle value);
    void point(int code, Point p);  ///< groups code and code + 10
    void point3(int code, Point p); ///< the same, and z = 0 as code + 20
    void raw(const TagWriter& other) { bytes_ += other.bytes_; }

    const std::string& bytes() const { return bytes_; }
    void clear() { bytes_.clear(); }

private:
    struct Converter;
    void code(int value);
    void endLine() { bytes_ += lineEnd_; }

    std::string_view lineEnd_;
    std::unique_ptr<Converter> converter_; // null: the file is UTF-8
    std::string bytes_;
};

} // namespace samples
