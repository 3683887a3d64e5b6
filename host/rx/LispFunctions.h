// The functions that modules have defined for LISP in the open drawing, and the call that is under way.
#pragma once

#include "ModuleScope.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::rx {

/// One definition. `direct` is null for a function that is called by message.
struct LispFunction {
    std::wstring name;
    ModuleId owner = hostItself;
    int code = 0;
    int (*direct)() = nullptr;
};

class QX_HOST_API LispFunctions {
public:
    /// Adds a definition, in place of the module's own older one of this name.
    void define(ModuleId owner, std::wstring_view name, int code);
    /// Takes a definition back, which uncovers an older one of another module; false when there is none.
    bool undefine(ModuleId owner, std::wstring_view name, int code);
    /// Gives the module's definitions with this number a function to be called directly; null takes it away.
    /// False when there is none.
    bool callDirectly(ModuleId owner, int code, int (*function)());

    /// The newest definition of the name, or null. Valid until the next change.
    const LispFunction* find(std::wstring_view name) const;
    /// Oldest first, hidden ones too.
    const std::vector<LispFunction>& all() const { return functions_; }
    bool hasAny(ModuleId owner) const;
    void removeAllOf(ModuleId owner);
    void clear() { functions_.clear(); }

private:
    std::vector<LispFunction> functions_; // a later one hides an earlier one
};

/// A call of a LISP function under way; calls may be nested. The acedRet... functions speak to the innermost.
class QX_HOST_API LispCall {
public:
    explicit LispCall(int code) : code_{code}, outer_{innermost_} { innermost_ = this; }
    ~LispCall() { innermost_ = outer_; }
    LispCall(const LispCall&) = delete;
    LispCall& operator=(const LispCall&) = delete;

    /// Null when no function is being called.
    static LispCall* innermost() { return innermost_; }

    int code() const { return code_; }
    /// The value as LISP prints it, UTF-8; empty for no value.
    const std::string& text() const { return text_; }
    void setText(std::string text) { text_ = std::move(text); }

private:
    static LispCall* innermost_;

    int code_;
    std::string text_ = "nil";
    LispCall* outer_;
};

/// The open drawing's.
QX_HOST_API LispFunctions& lispFunctions();

} // namespace qx::rx
