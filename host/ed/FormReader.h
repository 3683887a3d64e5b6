// Reads a form in parentheses part by part. Takes what it is asked for from the front; after the first part
// that is missing it takes nothing more. Blanks between the parts are passed over.
#pragma once

#include "ed/Keywords.h"
#include "ed/points.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace qx::ed {

class FormReader {
public:
    explicit FormReader(std::string_view form) : rest_{form} {}

    FormReader& mark(char expected) {
        skipBlanks();
        isGood_ = isGood_ && rest_.starts_with(expected);
        if (isGood_) rest_.remove_prefix(1);
        return *this;
    }
    /// In any case.
    FormReader& word(std::string_view upper) {
        skipBlanks();
        isGood_ = isGood_ && upperCase(rest_.substr(0, upper.size())) == upper;
        if (isGood_) rest_.remove_prefix(upper.size());
        return *this;
    }
    FormReader& handle(std::uint64_t& value) {
        mark('"');
        const char* end = rest_.data() + rest_.size();
        const auto [stop, error] = std::from_chars(rest_.data(), end, value, 16);
        isGood_ = isGood_ && error == std::errc{} && stop != end && *stop == '"';
        if (isGood_) rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()) + 1);
        return *this;
    }
    FormReader& number(int& value) {
        skipBlanks();
        const auto [stop, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        isGood_ = isGood_ && error == std::errc{};
        if (isGood_) rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
        return *this;
    }
    /// Between quotes.
    FormReader& text(std::string& value) {
        mark('"');
        const std::size_t end = rest_.find('"');
        isGood_ = isGood_ && end != std::string_view::npos;
        if (!isGood_) return *this;
        value = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return *this;
    }
    FormReader& real(double& value) {
        skipBlanks();
        const auto number = parseReal(rest_.substr(0, rest_.find_first_of(" )")));
        isGood_ = isGood_ && number;
        if (!isGood_) return *this;
        value = *number;
        rest_.remove_prefix(std::min(rest_.find_first_of(" )"), rest_.size()));
        return *this;
    }
    /// False also when a part was missing.
    bool isAt(char next) {
        skipBlanks();
        return isGood_ && rest_.starts_with(next);
    }
    bool isComplete() const { return isGood_ && rest_.empty(); }

private:
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

    std::string_view rest_;
    bool isGood_ = true;
};

} // namespace qx::ed
