// What a command must never do: change an object that is not open for writing, delete one that a drawing
// holds, leave one open. Such a call throws through the command; whoever runs commands catches it, rolls the
// command back and says the sentence.
#pragma once

#include "qxexport.h"

#include <stdexcept>
#include <string>

namespace qx::db {

class QX_HOST_API Violation : public std::logic_error {
public:
    explicit Violation(const std::string& sentence) : std::logic_error{sentence} {}
    ~Violation() override;
};

} // namespace qx::db
