// What a report says about moved objects, as values and as a list that a person can read and compare.
#pragma once

#include <array>
#include <set>
#include <string>
#include <vector>

namespace qx::tests {

struct ReportedBox {
    std::array<double, 3> min, max;
    bool operator==(const ReportedBox&) const = default;
};

struct Change {
    std::size_t command; ///< counted from 1
    std::string handle, className;
    ReportedBox before, after;
};

struct Stay {
    std::size_t command;
    std::string handle, className, reason;
};

struct ReportedChanges {
    /// Reads the JSON that the program writes: one object per line.
    explicit ReportedChanges(const std::string& report);

    /// Of those whose box is another one than before: a move by nothing is reported too.
    std::set<std::string> movedHandles() const;
    std::size_t changingCommands() const;
    /// One line per object, under a line per command: "580 AcDbBlockReference 0,0..2,1 -> 3,0..5,1", rounded
    /// to 1e-6.
    std::string list() const;

    std::size_t commands = 0;
    std::vector<Change> changed;
    std::vector<Stay> stayed;
};

} // namespace qx::tests
