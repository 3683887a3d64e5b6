// The version of a drawing, as its variable $ACADVER names it, and what follows from it for reading it and
// for writing new objects into it.
#pragma once

#include "qxexport.h"

#include <string>
#include <string_view>

namespace qx::db {

class QX_HOST_API Version {
public:
    /// A version that is missing or unknown counts as R12, the last one that needs next to nothing; one that
    /// is newer than all that are known as the newest of these.
    explicit Version(std::string_view acadver = {});

    /// One sentence when the version was not to be taken at its word, otherwise empty.
    const std::string& finding() const { return finding_; }
    bool isStated() const { return isStated_; }

    /// R13: handles for all objects, subclass markers, a table of block records.
    bool hasSubclasses() const { return number_ >= 1012; }
    /// And the dictionaries that name them.
    bool hasGroups() const { return hasSubclasses(); }
    bool hasLightweightPolylines() const { return number_ >= 1014; }
    /// Entities name the block record that owns them.
    bool hasOwners() const { return number_ >= 1015; }
    /// Texts are UTF-8, not in the code page that the header names.
    bool isUtf8() const { return number_ >= 1021; }

private:
    static constexpr int r12 = 1009, newest = 1032;
    int number_ = r12; ///< the digits of AC1009
    bool isStated_ = false;
    std::string finding_;
};

} // namespace qx::db
