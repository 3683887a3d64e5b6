// Which encoding the texts of a file are in. What the file says counts; where it says nothing, or what can't
// be done, the choice comes with a sentence for the person who opens it.
#pragma once

#include "db/Version.h"
#include "dxf/Encoding.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace qx::db {

struct TextEncoding {
    const dxf::Encoding* encoding = nullptr;
    std::string finding;   ///< empty when there is nothing to tell
    bool isMarked = false; ///< it is about a mark at the beginning of the file
};

/// From the bytes of the whole file, and the header's code page (empty: it names none). A byte order mark
/// beats the version, the version beats the code page. Without all three, bytes that are UTF-8 and more than
/// ASCII are taken as that where the version is missing, too, and as ANSI_1252 otherwise.
TextEncoding textEncodingOf(std::string_view file, const Version& version, std::string_view codePage);

/// Lines that hold bytes which stand for no character. The parts of a long text (group 3, and what follows
/// it) are passed over: a character may be cut between them.
struct BrokenLines {
    std::size_t count = 0;
    std::size_t first = 0; ///< offset of the first such byte
};
BrokenLines linesWithBrokenText(std::string_view file, const dxf::Encoding& encoding);

} // namespace qx::db
