// Whose code runs now. Every call into a module is made within a scope, so that what the module registers is
// known to be its own, and so that nobody unloads code that is still on the call stack.
#pragma once

#include "qxexport.h"

#include <exception>
#include <optional>
#include <string>

namespace qx::rx {

/// A loaded module, for the life of the process: loading again gives another number.
using ModuleId = unsigned;
constexpr ModuleId hostItself = 0;

class QX_HOST_API ModuleScope {
public:
    explicit ModuleScope(ModuleId module) : module_{module}, outer_{innermost_} { innermost_ = this; }
    ~ModuleScope() { innermost_ = outer_; }
    ModuleScope(const ModuleScope&) = delete;
    ModuleScope& operator=(const ModuleScope&) = delete;

    /// The module whose code runs; `hostItself` when none does.
    static ModuleId current() { return innermost_ ? innermost_->module_ : hostItself; }
    /// Whether a call into this module has not come back yet.
    static bool isRunning(ModuleId module) {
        for (const ModuleScope* scope = innermost_; scope; scope = scope->outer_)
            if (scope->module_ == module) return true;
        return false;
    }

private:
    static ModuleScope* innermost_;

    ModuleId module_;
    ModuleScope* outer_;
};

/// Calls foreign code of `module`. Nothing when it came back, else what it threw.
template <class Call> std::optional<std::string> thrownBy(ModuleId module, Call&& call) {
    const ModuleScope scope{module};
    try {
        call();
        return std::nullopt;
    } catch (const std::exception& problem) {
        return problem.what();
    } catch (...) {
        return "unknown exception";
    }
}

} // namespace qx::rx
