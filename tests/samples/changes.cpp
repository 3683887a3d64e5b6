#include "samples/changes.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <sstream>
#include <string_view>

namespace qx::tests {
namespace {

ReportedBox boxFrom(const std::smatch& match, std::size_t first) {
    const auto corner = [&](std::size_t at) {
        std::array<double, 3> values{};
        std::istringstream text{match[at]};
        for (double& value : values) {
            std::string part;
            std::getline(text, part, ',');
            value = std::strtod(part.c_str(), nullptr);
        }
        return values;
    };
    return {corner(first), corner(first + 1)};
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

const std::string box = R"(\{"min": \[([^\]]*)\], "max": \[([^\]]*)\]\})";
const std::regex changedLine{R"-("handle": "(\w+)", "class": "(\w+)", "change": "modified", "before": )-" +
                             box + ", \"after\": " + box};
const std::regex stayedLine{R"-("handle": "(\w+)", "class": "(\w+)", "reason": "([^"]*)")-"};

} // namespace

ReportedChanges::ReportedChanges(const std::string& report) {
    std::istringstream lines{report};
    std::smatch found;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("{\"command\": ") != std::string::npos) ++commands;
        if (std::regex_search(line, found, changedLine))
            changed.push_back({commands, found[1], found[2], boxFrom(found, 3), boxFrom(found, 5)});
        if (std::regex_search(line, found, stayedLine))
            stayed.push_back({commands, found[1], found[2], found[3]});
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
