#include "ed/Keywords.h"

#include <algorithm>

namespace qx::ed {
namespace {

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }

std::vector<std::string_view> words(std::string_view list) {
    std::vector<std::string_view> result;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(' '), list.size());
        if (end > 0) result.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return result;
}

// Any beginning of the name that holds the abbreviation stands for the keyword.
template <class Entry> bool matches(const Entry& entry, const std::string& typed) {
    if (typed.empty()) return false;
    return typed == entry.abbreviation || (typed.size() >= entry.least && entry.name.starts_with(typed));
}

} // namespace

std::string upperCase(std::string_view text) {
    std::string result{text};
    for (char& c : result)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return result;
}

Keywords::Keywords(std::string_view list) {
    const auto entryOf = [](std::string_view word) {
        const std::size_t comma = word.find(',');
        const std::string_view name = word.substr(0, comma);
        std::string abbreviation;
        std::copy_if(name.begin(), name.end(), std::back_inserter(abbreviation), isUpper);
        std::size_t least = name.size();
        if (comma != std::string_view::npos) {
            abbreviation = upperCase(word.substr(comma + 1));
            least = abbreviation.size();
        } else if (!abbreviation.empty())
            least = static_cast<std::size_t>(std::find_if(name.rbegin(), name.rend(), isUpper).base() -
                                             name.begin());
        else
            abbreviation = upperCase(name);
        return Entry{upperCase(name), std::move(abbreviation), std::string{name}, least};
    };
    bool forProgram = false;
    for (std::string_view word : words(list)) {
        if (word.starts_with('_')) {
            forProgram = true;
            word.remove_prefix(1);
        }
        (forProgram ? programEntries_ : entries_).push_back(entryOf(word));
    }
    if (!forProgram) programEntries_ = entries_;
    programEntries_.resize(std::max(programEntries_.size(), entries_.size()));
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (!programEntries_[i].result.empty()) entries_[i].result = programEntries_[i].result;
}

std::optional<std::string> Keywords::match(std::string_view typed) const {
    const bool forProgram = typed.starts_with('_');
    if (forProgram) typed.remove_prefix(1);
    const std::string upper = upperCase(typed);
    for (const Entry& entry : forProgram ? programEntries_ : entries_)
        if (matches(entry, upper)) return entry.result;
    return std::nullopt;
}

} // namespace qx::ed
