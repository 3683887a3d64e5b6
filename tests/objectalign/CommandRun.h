// Runs of KV_ObjectAlign over a drawing that has one of everything, in the short form of tables.
//
// Inputs stand apart by blanks: "-" is Enter, "^" is Esc, "{A}" the object called A, "{A@50,0}" that object,
// picked there; "<base>" a base line and its base point, "<line>" an alignment line, "<onLine>" and
// "<onCircle>" a curve and a point of it, at all of which things become level. Anything else is typed as it
// stands.
#pragma once

#include "tests/objectalign/Sheet.h"

#include <map>

namespace qx::tests {

/// One object of every kind, each called by a letter. H is a level line to align to, K an upright one for a
/// base line, Z a circle to align to, S a small one, W a polyline that is one arc, X a line above the ground.
/// Of the groups one holds A and T, the other C and P.
struct Plan {
    Plan();
    Handle operator[](char name) const { return handles.at(name); }

    DrawingText content;
    std::string names; ///< in the order of the drawing
    std::map<char, Handle> handles;
};

const Plan& plan();

/// What is typed for each input, as text of a script without line ends.
std::vector<std::string> typed(const std::string& inputs);

/// A session over the plan in which the command is known.
class CommandRun : public Sheet {
public:
    explicit CommandRun(const DrawingText& content = plan().content);

    /// Answers the command, as a script; true when it went through.
    bool script(const std::string& inputs);
    /// Answers the command as somebody who is asked again after a refused answer and presses Esc when there
    /// is nothing more to say.
    void person(const std::vector<std::string>& answers);
    using Answer = std::function<std::string(ed::Ask)>;
    void person(Answer answer);

    /// What lies elsewhere than it did: "A 10,20<90, T gone", where things begin and which way they point.
    std::string changes();
    /// The colours of what is new in model space: "1 256".
    std::string added();
    /// What must not be after any run, whatever it did: objects left open, selection sets left to the host, a
    /// broken rule, something added. Empty when all is well.
    std::string disorder(const std::string& mayBeAdded = "");

    const std::string& shown = editor.transcript;
    std::string messages; ///< what the command printed; "/" stands for a line feed

private:
    std::vector<std::string> poses();
    std::vector<std::string> before_;
};

} // namespace qx::tests
