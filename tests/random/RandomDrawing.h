// A drawing with some objects of every class that a file may hold, on all kinds of layers, in groups that
// overlap, that are empty or name what is not there, and sometimes a user coordinate system of its own. Equal
// seeds give equal drawings.
#pragma once

#include "drawings/DrawingText.h"
#include "random/Chance.h"

#include <span>

namespace qx::tests {

/// How objects of one class are written, see the patterns.
struct ObjectClass {
    const char* pattern;
    const char* part = ""; ///< a record of its own, several of them
    const char* more = ""; ///< one such record that comes after
};
std::span<const ObjectClass> objectClasses();

/// On any layer and with any content, or plain: on layer 0, with a content that shows something.
enum class Look { any, plain };

/// All records of one object. Plain ones know one block only, "Box".
std::vector<std::string> recordsOf(Chance& chance, const ObjectClass& one, Look look = Look::any);

struct RandomDrawing {
    explicit RandomDrawing(Chance& chance);

    drawings::DrawingText content;
    std::vector<drawings::Handle> objects; ///< without vertices and attributes

private:
    void addBlocks();
    void addObject();
    void addGroup();
    void addSurroundings();

    Chance& chance_;
};

} // namespace qx::tests
