// The keywords that a prompt accepts, given as one string: "Yes No" or, with names for the person and names
// for the program, "是 否 _Yes No". The capital letters of a keyword are its abbreviation ("CEnter": CE, CEN,
// ...); a keyword without any, or "name,abbreviation", works too. Case makes no difference in what is typed.
#pragma once

#include "qxexport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::ed {

class QX_HOST_API Keywords {
public:
    Keywords() = default;
    explicit Keywords(std::string_view list);

    bool isEmpty() const { return entries_.empty(); }
    /// The program's name of the keyword that was typed; `_` before it asks for the program's name. Nothing
    /// when it is none. The first one in the list wins.
    std::optional<std::string> match(std::string_view typed) const;

private:
    struct Entry {
        std::string name;         ///< upper case
        std::string abbreviation; ///< upper case
        std::string result;       ///< as the list gives it
        std::size_t least = 0;    ///< so much of the name must be typed at least
    };
    std::vector<Entry> entries_;
    std::vector<Entry> programEntries_; ///< what `_` reaches; same order
};

/// Upper case of the ASCII letters; everything else stays.
QX_HOST_API std::string upperCase(std::string_view text);

} // namespace qx::ed
