#include "ed/json.h"

#include <charconv>
#include <cmath>

namespace qx::ed::json {

std::string quoted(std::string_view utf8) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (result += '\\') += c;
        else if (c == '\n')
            result += "\\n";
        else if (byte < 0x20)
            ((result += "\\u00") += digits[byte >> 4]) += digits[byte & 15];
        else
            result += c;
    }
    return result + '"';
}

std::string number(double value) {
    if (!std::isfinite(value)) return "null";
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

std::string list(const std::vector<std::string>& parts) {
    std::string result = "[";
    for (const std::string& part : parts) {
        if (result.size() > 1) result += ", ";
        result += part;
    }
    return result + ']';
}

} // namespace qx::ed::json
