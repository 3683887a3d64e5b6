#include "ed/CommandLine.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx::ed {
namespace {

// More than any command that takes a cancel for an answer will ask.
constexpr int patience = 1000;

constexpr std::size_t longestAnswer = 4096, longestRepeated = 60;

bool isWaitedFor(const Input& input, Ask what) {
    return what != Ask::command || input.kind != Input::Kind::enter;
}

} // namespace

std::string abridged(std::string_view typed) {
    if (typed.size() <= longestRepeated) return std::string{typed};
    const auto goesOn = [&](std::size_t at) { return (typed[at] & 0xC0) == 0x80; };
    std::size_t end = longestRepeated;
    while (end > longestRepeated - 4 && goesOn(end)) --end; // no half character
    return std::string{typed.substr(0, end)} + "\u2026";
}

// A script's answer may be all of a large file.
Input CommandLine::ask(Ask what, std::string_view prompt) {
    Input input = askOnce(what, prompt);
    while (input.text.size() > longestAnswer) {
        refuse("输入过长。", '"' + abridged(input.text) + "\" is too long for an answer");
        input = askOnce(what, prompt);
    }
    return input;
}

Input CommandLine::askOnce(Ask what, std::string_view prompt) {
    if (hasFailed()) return cancelled();
    const bool waits = queue_.isAtEnd() && isInteractive();
    if (waits) transcript.prompt(prompt);
    Input input = read(what);
    // Blank lines between the commands of a script mean nothing.
    while (!waits && !isWaitedFor(input, what)) input = read(what);
    if (input.kind == Input::Kind::end) return what == Ask::command ? input : afterEnd(waits ? "" : prompt);
    if (!waits) transcript.prompt(prompt);
    const bool cancels = input.kind == Input::Kind::cancel;
    const bool isTooLong = input.text.size() > longestAnswer;
    transcript.answer(cancels     ? "*取消*"
                      : isTooLong ? abridged(input.text)
                                  : input.text,
                      input.shown && !cancels);
    if (cancels) return cancelled();
    cancels_ = 0;
    return input;
}

Input CommandLine::afterEnd(std::string_view prompt) {
    if (!prompt.empty()) transcript.prompt(prompt);
    transcript.answer("*取消*", false);
    if (sources_.empty() || !sources_.back()->mayEndAnywhere())
        fail("the script ends inside the command " + command_);
    return cancelled();
}

Input CommandLine::cancelled() {
    if (!command_.empty() && ++cancels_ > patience)
        throw std::runtime_error("the command goes on asking although it is cancelled");
    return {.kind = Input::Kind::cancel, .text = {}, .line = line_};
}

Input CommandLine::read(Ask what) {
    Input queued = readQueue();
    if (queued.kind != Input::Kind::unfinished && queued.kind != Input::Kind::end) return queued;
    Input input = readSources(what);
    if (queued.kind == Input::Kind::end) return input;
    // What was queued without an end stands before what is typed now, as in one line.
    if (input.kind == Input::Kind::enter) input.kind = Input::Kind::text;
    if (input.kind == Input::Kind::text) input.text.insert(0, queued.text);
    return input;
}

Input CommandLine::readQueue() {
    Input input = queue_.next();
    input.shown = !queueEchoes_;
    input.line = line_;
    return input;
}

Input CommandLine::readSources(Ask what) {
    while (!sources_.empty()) {
        Input input = sources_.back()->next(what);
        if (input.kind != Input::Kind::end) {
            line_ = input.line;
            noteAnswer(input);
            return input;
        }
        if (sources_.size() == 1) break;
        sources_.pop_back();
    }
    return {};
}

void CommandLine::noteAnswer(const Input& input) {
    if (!keepsScript) return;
    wasRefused_ = false;
    lastAnswer_ = script_.size();
    script_ += scriptOf(input);
}

void CommandLine::refuse(std::string_view sentence, const std::string& reason) {
    script_.resize(std::min(lastAnswer_, script_.size()));
    wasRefused_ = true;
    transcript.sentence(sentence);
    if (!isInteractive()) fail(reason);
}

void CommandLine::refuse(std::string_view sentence, const Outcome& failure) {
    if (isInteractive()) return note(sentence, failure.error());
    transcript.sentence(std::string{sentence} + "。");
    fail(failure.error());
}

void CommandLine::note(std::string_view sentence, const std::string& cause) {
    transcript.sentence(std::string{sentence} + ": " + cause);
}

void CommandLine::fail(const std::string& reason) {
    if (hasFailed()) return;
    const std::string name = sources_.empty() ? "input" : sources_.back()->name();
    failure_ = name + ':' + std::to_string(line_) + ": " + reason;
}

void CommandLine::queue(std::string_view text, bool echo) {
    queueEchoes_ = echo;
    queue_.append(text);
}

void CommandLine::beginCommand(std::string name) {
    command_ = std::move(name);
    cancels_ = 0;
}

} // namespace qx::ed
