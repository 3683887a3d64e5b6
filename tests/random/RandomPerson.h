// Answers the prompts of both commands, as somebody who is asked again after a refused answer: mostly with
// what is meant there (a line to align to, a point of the curve that was picked), sometimes with what is not,
// with Enter, or with Esc. What was answered can be typed again.
#pragma once

#include "drawings/DrawingText.h"
#include "ed/InputSource.h"
#include "random/Chance.h"

namespace qx::tests {

class RandomPerson final : public ed::InputSource {
public:
    /// `shown` is what the command line shows, which ends with the prompt.
    RandomPerson(Chance& chance, db::Drawing& drawing, std::vector<std::uint64_t> objects,
                 const std::string& shown);

    /// Types these lines, then answers at random what is asked.
    void begin(const std::string& command);

    ed::Input next(ed::Ask what) override;
    bool isInteractive() const override { return true; }
    std::string name() const override { return "person"; }

    std::string script; ///< all answers so far
    // Of the command begun last.
    std::string firstAnswer;
    std::vector<const db::Record*> picked; ///< wherever one object was asked for
    bool hasCancelled = false, hasFlipped = false;
    double largestNumber = 0;

private:
    std::string answerTo(ed::Ask what);
    std::string selection();
    std::string pick();
    std::string pointAnswer();
    std::string number();
    std::string keyword();
    std::string typed(const AcGePoint3d& point);
    /// On what an object draws; anywhere when it draws nothing.
    AcGePoint3d pointOn(std::uint64_t handle);
    std::uint64_t somethingFor(const std::string& prompt);
    std::string prompt() const;

    Chance& chance_;
    db::Drawing& drawing_;
    std::vector<std::uint64_t> objects_;
    const std::string& shown_;
    std::vector<std::string> typed_; ///< to be typed first, the last of them first
    AcGePoint3d lastPick_;
    int questions_ = 0;
};

} // namespace qx::tests
