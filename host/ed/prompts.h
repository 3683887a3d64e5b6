// Questions with one answer: a point, a number, a keyword, a text. An answer that doesn't fit is refused and
// asked for again; in a script the refusal ends the script, and the answer is then a cancel.
#pragma once

#include "ed/CommandLine.h"
#include "ed/Keywords.h"
#include "ed/points.h"

#include <string>

namespace qx::ed {

struct Request {
    std::string prompt;
    Keywords keywords{};
    bool mayBeNone = true; ///< Enter is an answer
    bool mayBeZero = true;
    bool mayBeNegative = true;
};

enum class Answered { value, none, keyword, cancel };

template <class Value> struct Answer {
    Answered kind = Answered::cancel;
    Value value{};
    std::string keyword;
};

QX_HOST_API Answer<TypedPoint> askPoint(CommandLine& line, const Request& request);
QX_HOST_API Answer<double> askReal(CommandLine& line, const Request& request);
/// The value is the keyword; the answer's kind is keyword too.
QX_HOST_API Answer<std::string> askKeyword(CommandLine& line, const Request& request);
QX_HOST_API Answer<std::string> askText(CommandLine& line, const Request& request);

} // namespace qx::ed
