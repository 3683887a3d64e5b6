// Runs of KV_ObjectAlign over a drawing that has one of everything, in the short form of tables.
//
// Inputs stand apart by blanks: "-" is Enter, "^" is Esc, "{A}" the object called A, "{A@50,0}" that object,
// picked there; "<base>" a base line and its base point, "<line>" an alignment line, "<onLine>" and
// "<onCircle>" a curve and a point of it, at all of which things become level. Anything else is typed as it
// stands.
#pragma once

#include "drawings/DrawingText.h"
#include "ed/Editor.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace qx::tests {

/// One object of every kind, each called by a letter. H is a level line to align to, K an upright one for a
/// base line, Z a circle to align to, S a small one, W a polyline that is one arc, X a line above the ground.
/// Of the groups one holds A and T, the other C and P.
struct Plan {
    Plan();
    drawings::Handle operator[](char name) const { return handles.at(name); }

    drawings::DrawingText content;
    std::string names; ///< in the order of the drawing
    std::map<char, drawings::Handle> handles;
};

const Plan& plan();

/// What is typed for each input, as text of a script without line ends.
std::vector<std::string> typed(const std::string& inputs);

/// A session over the plan in which the command is known.
class CommandRun : private ed::CommandObserver {
public:
    explicit CommandRun(const std::string& bytes = plan().content.bytes());

    /// Answers the command, as a script; true when it went through.
    bool script(const std::string& inputs);
    /// Answers the command as somebody who is asked again after a refused answer and presses Esc when there
    /// is nothing more to say.
    void person(const std::vector<std::string>& answers);

    /// What lies elsewhere than it did: "A 10,20<90, T gone", where things begin and which way they point.
    std::string changes() const;
    /// The colours of what is new in model space: "1 256".
    std::string added() const;
    /// What must not be after any run, whatever it did: objects left open, selection sets left to the host, a
    /// broken rule, something added. Empty when all is well.
    std::string disorder(const std::string& mayBeAdded = "");
    bool hasTheFilesBytes() { return drawing().toBytes() == bytes_; }
    /// Takes back the step of the run, if there is one.
    bool isUndoneToTheBytes();

    db::Drawing& drawing() { return editor.drawing(); }

    Editor editor;
    const std::string& shown = editor.transcript;
    std::string messages; ///< what the command printed; "/" stands for a line feed

private:
    void commandBegins(const db::Drawing*, const std::string&) override {}
    void drawingChanges() override {}
    void selected(const ed::RecordSet&) override {}
    void message(std::string_view text) override {
        for (const char each : text) messages += each == '\n' ? '/' : each;
    }
    void refused(const db::Record*, Acad::ErrorStatus) override {}
    void commandEnds(db::Drawing*, ed::CommandEnd) override {}

    std::string bytes_;
    std::vector<std::string> before_;

    std::vector<std::string> poses() const;
};

} // namespace qx::tests
