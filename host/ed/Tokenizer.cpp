#include "ed/Tokenizer.h"

#include <algorithm>
#include <utility>

namespace qx::ed {
namespace {

constexpr char controlC = '\3';

bool endsAnswer(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == controlC; }

} // namespace

std::string scriptOf(const Input& input) {
    const std::string& text = input.text;
    switch (input.kind) {
    case Input::Kind::cancel:
        return "^C\n";
    case Input::Kind::text:
    case Input::Kind::unfinished:
        break;
    case Input::Kind::enter:
        return "\n";
    case Input::Kind::end:
        return {};
    }
    const bool isForm = text.starts_with('(');
    const bool looksElse =
        text.empty() || text.starts_with(';') || text.starts_with("^C") || text.starts_with("^c");
    const bool isQuoted = input.quoted || looksElse || (!isForm && std::ranges::any_of(text, endsAnswer));
    return (isQuoted ? '"' + text + '"' : text) + '\n';
}

Tokenizer::Tokenizer(std::string text) : text_{std::move(text)} {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text_.starts_with(byteOrderMark)) text_.erase(0, byteOrderMark.size());
}

void Tokenizer::append(std::string_view text) {
    text_.erase(0, at_);
    at_ = 0;
    text_ += text;
}

void Tokenizer::clear() {
    text_.clear();
    at_ = 0;
}

Input Tokenizer::next() {
    skipComments();
    startLine_ = line_;
    if (isAtEnd()) return answer(Input::Kind::end);
    if (takeCancel()) return answer(Input::Kind::cancel);
    if (takeTerminator()) return answer(Input::Kind::enter);
    return text_[at_] == '"' ? readQuoted() : readText();
}

Input Tokenizer::answer(Input::Kind kind, std::string text) const {
    return {.kind = kind, .text = std::move(text), .line = startLine_};
}

void Tokenizer::skipComments() {
    while (at_ < text_.size() && text_[at_] == ';' && (at_ == 0 || text_[at_ - 1] == '\n')) {
        at_ = text_.find('\n', at_);
        if (at_ == std::string::npos) {
            at_ = text_.size();
            return;
        }
        ++at_;
        ++line_;
    }
}

// The line end behind ^C belongs to it: a line that holds nothing else must not answer the next prompt as
// well.
bool Tokenizer::takeCancel() {
    if (text_[at_] == controlC) {
        ++at_;
        return true;
    }
    if (text_.compare(at_, 2, "^C") != 0 && text_.compare(at_, 2, "^c") != 0) return false;
    at_ += 2;
    takeLineEnd();
    return true;
}

bool Tokenizer::takeLineEnd() {
    if (text_.compare(at_, 2, "\r\n") == 0)
        at_ += 2;
    else if (at_ < text_.size() && (text_[at_] == '\n' || text_[at_] == '\r'))
        ++at_;
    else
        return false;
    ++line_;
    return true;
}

bool Tokenizer::takeTerminator() {
    if (takeLineEnd()) return true;
    if (isAtEnd() || (text_[at_] != ' ' && text_[at_] != '\t')) return false;
    ++at_;
    return true;
}

// Up to the parenthesis that closes the first one. Line ends inside are spaces; strings hide parentheses.
std::string Tokenizer::takeForm() {
    std::string form;
    int depth = 0;
    bool inString = false;
    while (!isAtEnd()) {
        if (takeLineEnd()) {
            form += ' ';
            continue;
        }
        const char c = text_[at_++];
        form += c;
        if (c == '"') inString = !inString;
        if (inString) continue;
        if (c == '(') ++depth;
        if (c == ')' && --depth == 0) break;
    }
    return form;
}

Input Tokenizer::readText() {
    std::string text;
    if (text_[at_] == '(') {
        text = takeForm();
        if (!text.ends_with(')')) return answer(Input::Kind::unfinished, std::move(text));
    } else
        while (!isAtEnd() && !endsAnswer(text_[at_])) text += text_[at_++];
    const bool ended = takeTerminator() || !isAtEnd();
    return answer(ended ? Input::Kind::text : Input::Kind::unfinished, std::move(text));
}

Input Tokenizer::readQuoted() {
    const std::size_t begin = ++at_;
    while (!isAtEnd() && text_[at_] != '"' && text_[at_] != '\n' && text_[at_] != '\r') ++at_;
    std::string text = text_.substr(begin, at_ - begin);
    if (!isAtEnd() && text_[at_] == '"') ++at_;
    const bool ended = takeTerminator() || !isAtEnd();
    Input input = answer(ended ? Input::Kind::text : Input::Kind::unfinished, std::move(text));
    input.quoted = true;
    return input;
}

} // namespace qx::ed
