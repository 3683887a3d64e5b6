// The dialogue of the editor: asks the sources of input in turn and shows prompts, answers and messages. Text
// that modules queue is read before anything else. A source that nobody sits at is failed by a refused
// answer; from then on every question is answered with a cancel, so that the running command comes to its
// end.
#pragma once

#include "ed/Tokenizer.h"
#include "ed/Transcript.h"
#include "os/Result.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qx::ed {

/// What was typed as sentences repeat it: its first characters only when it is long.
QX_HOST_API std::string abridged(std::string_view typed);

class QX_HOST_API CommandLine {
public:
    explicit CommandLine(Transcript::Sink sink) : transcript{std::move(sink)} {}

    /// The answer to a prompt. `activity` stands in the failure of a script that ends before the answer.
    /// What is longer than any name of a file is refused. Throws when a command goes on asking although it is
    /// cancelled each time.
    Input ask(Ask what, std::string_view prompt);
    /// The answer was none: `sentence` for the person, `reason` (English) for a script that fails by it.
    void refuse(std::string_view sentence, const std::string& reason);
    /// Something failed: `sentence` without its full stop for the person, who is also told the cause. A
    /// failure's own sentence is English; so is the reason for which a script fails, and in a script it
    /// stands there only.
    void refuse(std::string_view sentence, const Outcome& failure);
    /// The same for what is no answer to anything and fails no script.
    void note(std::string_view sentence, const std::string& cause);
    /// Fails the source without a sentence.
    void fail(const std::string& reason);

    /// Reads from `source` until it ends, then from the one before; a source must stay until it is taken out.
    void push(InputSource& source) { sources_.push_back(&source); }
    void pop() { sources_.pop_back(); }
    /// Typed input for the next prompts; a part without a space or line end at its end waits for more.
    void queue(std::string_view text, bool echo);

    /// The answers that were taken from the sources since this was asked last, refused ones left out, as a
    /// script that gives the same; kept only where somebody wants them.
    bool keepsScript = false;
    std::string takeScript() {
        wasRefused_ = false;
        return std::exchange(script_, {});
    }
    /// Whether the last one was refused, and no other was asked for.
    bool wasRefused() const { return wasRefused_; }
    /// What was answered elsewhere than at a prompt goes into that script too.
    void noteAnswer(const Input& input);

    /// True when a person answers.
    bool isInteractive() const { return !sources_.empty() && sources_.back()->isInteractive(); }
    bool hasFailed() const { return !failure_.empty(); }
    /// What failed the source, with its name and the line; English.
    const std::string& failure() const { return failure_; }
    void forgetFailure() { failure_.clear(); }
    void beginCommand(std::string name);
    void endCommand() { command_.clear(); }

    Transcript transcript;

private:
    Input askOnce(Ask what, std::string_view prompt);
    Input read(Ask what);
    Input readQueue();
    Input readSources(Ask what);
    Input afterEnd(std::string_view prompt);
    Input cancelled();

    std::vector<InputSource*> sources_;
    Tokenizer queue_;
    bool queueEchoes_ = true;
    std::string command_; ///< the running one
    int cancels_ = 0;     ///< given to the running command without a break
    std::string failure_;
    std::size_t line_ = 0;
    std::string script_;
    bool wasRefused_ = false;
    std::size_t lastAnswer_ = 0; ///< where it begins there
};

} // namespace qx::ed
