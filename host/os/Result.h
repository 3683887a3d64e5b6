// Expected failures as values: either it went well, or there is one sentence for the person at the keyboard.
// Sentences are complete, in UTF-8, and name the file or command they speak of.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace qx {

/// Success, or the sentence that says why not.
class [[nodiscard]] Outcome {
public:
    Outcome() = default;
    /// A failure; `sentence` must not be empty.
    static Outcome failure(std::string sentence) {
        Outcome outcome;
        outcome.error_ = std::move(sentence);
        return outcome;
    }

    explicit operator bool() const { return error_.empty(); }
    /// Empty after success.
    const std::string& error() const { return error_; }

private:
    std::string error_;
};

/// A value, or the sentence that says why there is none. Reading the value of a failure is a programming
/// error.
template <class T> class [[nodiscard]] Result {
public:
    Result(T value) : value_{std::move(value)} {}
    static Result failure(std::string sentence) { return Result{std::move(sentence), Failed{}}; }

    explicit operator bool() const { return value_.has_value(); }
    const std::string& error() const { return error_; }
    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }

private:
    struct Failed {};
    Result(std::string sentence, Failed) : error_{std::move(sentence)} {}

    std::optional<T> value_;
    std::string error_;
};

} // namespace qx
