#include "ed/forms.h"

#include "ed/Keywords.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace qx::ed {
namespace {

// Takes what it is asked for from the front of the form; after the first part that is missing it takes
// nothing more.
class FormReader {
public:
    explicit FormReader(std::string_view form) : rest_{form} {}

    FormReader& mark(char expected) {
        skipBlanks();
        isGood_ = isGood_ && rest_.starts_with(expected);
        if (isGood_) rest_.remove_prefix(1);
        return *this;
    }
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

FormReader& takeHandent(FormReader& reader, std::uint64_t& handle) {
    return reader.mark('(').word("HANDENT").handle(handle).mark(')');
}

} // namespace

std::optional<std::uint64_t> parseHandent(std::string_view form) {
    std::uint64_t handle = 0;
    FormReader reader{form};
    return takeHandent(reader, handle).isComplete() ? std::optional{handle} : std::nullopt;
}

std::optional<TypedPick> parsePick(std::string_view form) {
    TypedPick pick;
    auto& [x, y, z] = pick.point.coordinates;
    FormReader reader{form};
    takeHandent(reader.mark('(').word("LIST"), pick.handle).mark('(').word("LIST").real(x).real(y);
    if (!reader.isAt(')')) reader.real(z);
    return reader.mark(')').mark(')').isComplete() ? std::optional{pick} : std::nullopt;
}

std::optional<TypedSelection> parseSelection(std::string_view form) {
    TypedSelection selection;
    FormReader reader{form};
    reader.mark('(').word("SELECT");
    selection.adds = reader.isAt('a') || reader.isAt('A');
    if (selection.adds) reader.word("ADD");
    while (reader.isAt('(')) takeHandent(reader, selection.handles.emplace_back());
    return reader.mark(')').isComplete() ? std::optional{std::move(selection)} : std::nullopt;
}

} // namespace qx::ed
