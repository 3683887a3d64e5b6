// A drawing with some objects of every class that a file may hold, on all kinds of layers, in groups that
// overlap, that are empty or name what is not there, and sometimes a user coordinate system of its own. Equal
// seeds give equal drawings.
#pragma once

#include "drawings/DrawingText.h"
#include "random/Chance.h"

namespace qx::tests {

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
