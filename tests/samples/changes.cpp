#include "samples/changes.h"

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string_view>

namespace qx::tests {
namespace {

/// What follows `"name": ` on the line; empty without such a member.
std::string_view member(std::string_view line, const std::string& name) {
    const std::string key = '"' + name + "\": ";
    const std::size_t at = line.find(key);
    return at == std::string_view::npos ? std::string_view{} : line.substr(at + key.size());
}

std::string text(std::string_view line, const std::string& name) {
    const std::string_view value = member(line, name);
    return value.empty() ? std::string{} : std::string{value.substr(1, value.find('"', 1) - 1)};
}

std::array<double, 3> point(std::string_view line, const std::string& name) {
    std::istringstream list{std::string{member(line, name)}};
    std::array<double, 3> values{};
    char separator = 0;
    for (double& value : values) list >> separator >> value;
    return values;
}

ReportedBox box(std::string_view line, const std::string& name) {
    const std::string_view value = member(line, name);
    return {point(value, "min"), point(value, "max")};
}

std::string rounded(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6f", std::round(value * 1e6) / 1e6 + 0.0);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.ends_with('.')) result.pop_back();
    return result;
}

std::string text(const std::array<double, 3>& point) {
    const std::string flat = rounded(point[0]) + ',' + rounded(point[1]);
    return point[2] == 0 ? flat : flat + ',' + rounded(point[2]);
}

std::string text(const ReportedBox& box) { return text(box.min) + ".." + text(box.max); }

} // namespace

ReportedChanges::ReportedChanges(const std::string& report) {
    std::istringstream lines{report};
    for (std::string line; std::getline(lines, line);) {
        if (!member(line, "command").empty()) ++commands;
        const std::string handle = text(line, "handle"), className = text(line, "class");
        if (text(line, "change") == "modified")
            changed.push_back({commands, handle, className, box(line, "before"), box(line, "after")});
        if (const std::string reason = text(line, "reason"); !reason.empty())
            stayed.push_back({commands, handle, className, reason});
    }
}

std::set<std::string> ReportedChanges::movedHandles() const {
    std::set<std::string> all;
    for (const Change& each : changed)
        if (each.before != each.after) all.insert(each.handle);
    return all;
}

std::size_t ReportedChanges::changingCommands() const {
    std::set<std::size_t> all;
    for (const Change& each : changed) all.insert(each.command);
    return all.size();
}

std::string ReportedChanges::list() const {
    std::string result;
    for (std::size_t command = 1; command <= commands; ++command) {
        result += "command " + std::to_string(command) + '\n';
        for (const Change& each : changed)
            if (each.command == command)
                result += each.handle + ' ' + each.className + ' ' + text(each.before) + " -> " +
                          text(each.after) + '\n';
        for (const Stay& each : stayed)
            if (each.command == command)
                result += each.handle + ' ' + each.className + " stays: " + each.reason + '\n';
    }
    return result;
}

} // namespace qx::tests
