#include "samples/TagList.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace qx::tests {
namespace {

std::string_view trimmed(std::string_view line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.remove_suffix(1);
    while (line.starts_with(' ')) line.remove_prefix(1);
    return line;
}

std::string_view nextLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

double number(std::string_view line) {
    line = trimmed(line);
    double value = std::numeric_limits<double>::quiet_NaN();
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), value);
    return end == line.data() + line.size() ? value : std::numeric_limits<double>::quiet_NaN();
}

double difference(const Tag& left, const Tag& right) {
    const double infinity = std::numeric_limits<double>::infinity();
    if (left.codeLine != right.codeLine) return infinity;
    if (left.valueLine == right.valueLine) return 0;
    const double apart = std::abs(number(left.valueLine) - number(right.valueLine));
    return std::isnan(apart) ? infinity : apart;
}

void describe(Object& object, const Tag& tag) {
    std::string* const member = tag.code() == 5 ? &object.handle : tag.code() == 8 ? &object.layer : nullptr;
    if (member && member->empty()) *member = trimmed(tag.valueLine);
}

} // namespace

int Tag::code() const { return static_cast<int>(number(codeLine)); }

TagList::TagList(std::string content) : bytes{std::move(content)}, objects(1) {
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view codeLine = nextLine(rest), valueLine = nextLine(rest);
        Tag tag{codeLine, valueLine, objects.size() - 1};
        if (tag.code() == 0) {
            objects.push_back({std::string{trimmed(valueLine)}, {}, {}});
            ++tag.object;
        }
        describe(objects.back(), tag);
        tags.push_back(tag);
    }
}

std::set<std::string> TagList::lockedEntities() const {
    std::set<std::string> layers, handles;
    std::string_view name;
    for (const Tag& tag : tags) {
        if (objectOf(tag).type != "LAYER") continue;
        if (tag.code() == 2) name = trimmed(tag.valueLine);
        if (tag.code() == 70 && (static_cast<int>(number(tag.valueLine)) & 4)) layers.emplace(name);
    }
    for (const Object& object : objects)
        if (layers.contains(object.layer)) handles.insert(object.handle);
    return handles;
}

std::set<std::string> movedObjects(const TagList& before, const TagList& after, Rewrites rewrites) {
    const bool turns = rewrites == Rewrites::anglesAsWell;
    std::set<std::string> handles;
    std::size_t i = 0;
    for (const Tag& now : after.tags) {
        if (i == before.tags.size()) break;
        const Tag& old = before.tags[i];
        if (turns && now.isAngle() && !old.isAngle()) {
            handles.insert(after.objectOf(now).handle);
            continue;
        }
        ++i;
        EXPECT_EQ(old.codeLine, now.codeLine) << "line " << 2 * i - 1;
        if (old.valueLine == now.valueLine) continue;
        EXPECT_TRUE(old.isCoordinate() || (turns && old.isAngle()))
            << "line " << 2 * i << ": " << old.valueLine << now.valueLine;
        handles.insert(before.objectOf(old).handle);
    }
    EXPECT_EQ(i, before.tags.size());
    EXPECT_EQ(before.objects.size(), after.objects.size());
    return handles;
}

double greatestDifference(const TagList& left, const TagList& right) {
    if (left.tags.size() != right.tags.size()) return std::numeric_limits<double>::infinity();
    double greatest = 0;
    for (std::size_t i = 0; i < left.tags.size(); ++i)
        greatest = std::max(greatest, difference(left.tags[i], right.tags[i]));
    return greatest;
}

} // namespace qx::tests
