// A session over a random drawing in which somebody who answers at random runs both commands a few times, and
// what must hold after each of them: what is neither selected nor in a group that counts, or lies on a locked
// layer, is in the saved file as it was, byte for byte; what moved was not bent; nothing is left open or
// drawn; the file can be read again, and says what the drawing shows; U brings back the file as it was, REDO
// what the command made of it.
#pragma once

#include "ed/Editor.h"
#include "random/RandomDrawing.h"
#include "random/RandomPerson.h"

#include <map>
#include <set>

namespace qx::tests {

class RandomRun {
public:
    explicit RandomRun(unsigned seed);

    /// Runs it; what did not hold, in sentences, empty when all did.
    std::string faults();

    const std::string& script() const { return person_.script; }
    std::string bytes() const { return content_.content.bytes(); }
    int alignments = 0; ///< commands that changed something

private:
    using Handles = std::set<drawings::Handle>;
    using Points = std::vector<AcGePoint3d>;
    enum class Command { positionAlign, objectAlign, other };
    /// What there was before a command, and what it was given.
    struct Before {
        std::string bytes;
        std::size_t steps, reapedSets;
        std::map<drawings::Handle, Points> outlines;
    };
    class Selected;

    void run(Command command, const std::string& typed);
    void type(const std::string& typed);
    Before before();
    void checkEnd(Command command, const Before& before);
    void checkFile(Command command, const Before& before, const std::string& bytes);
    void checkChanged(const db::Record* record, const db::Record* saved, const db::Drawing& again,
                      const Handles& mayMove);
    void checkMotion(Command command, const Before& before, const db::Drawing& again);
    void checkUndo(const Before& before, const std::string& bytes);
    Handles mayMove(Command command);
    void expect(bool holds, const std::string& sentence);
    db::Drawing& drawing() { return editor_.drawing(); }

    Chance chance_;
    RandomDrawing content_;
    Editor editor_;
    RandomPerson person_;
    Handles selected_; ///< by the running command
    std::string faults_;
};

} // namespace qx::tests
