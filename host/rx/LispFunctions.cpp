#include "LispFunctions.h"

#include "acedads.h"
#include "names.h"
#include "os/encoding.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace qx::rx {

LispCall* LispCall::innermost_ = nullptr;

void LispFunctions::define(ModuleId owner, std::wstring_view name, int code) {
    std::erase_if(functions_,
                  [&](const LispFunction& f) { return f.owner == owner && sameName(f.name, name); });
    functions_.push_back({std::wstring{name}, owner, code, nullptr});
}

bool LispFunctions::undefine(ModuleId owner, std::wstring_view name, int code) {
    return std::erase_if(functions_, [&](const LispFunction& f) {
               return f.owner == owner && f.code == code && sameName(f.name, name);
           }) > 0;
}

bool LispFunctions::callDirectly(ModuleId owner, int code, int (*function)()) {
    bool found = false;
    for (LispFunction& f : functions_) {
        if (f.owner != owner || f.code != code) continue;
        f.direct = function;
        found = true;
    }
    return found;
}

const LispFunction* LispFunctions::find(std::wstring_view name) const {
    const auto found = std::find_if(functions_.rbegin(), functions_.rend(),
                                    [&](const LispFunction& f) { return sameName(f.name, name); });
    return found == functions_.rend() ? nullptr : &*found;
}

bool LispFunctions::hasAny(ModuleId owner) const {
    return std::any_of(functions_.begin(), functions_.end(),
                       [&](const LispFunction& f) { return f.owner == owner; });
}

void LispFunctions::removeAllOf(ModuleId owner) {
    std::erase_if(functions_, [&](const LispFunction& f) { return f.owner == owner; });
}

LispFunctions& lispFunctions() {
    static LispFunctions& functions = *new LispFunctions; // outlives every module
    return functions;
}

namespace {

int answer(std::string text) {
    LispCall* call = LispCall::innermost();
    if (!call) return RTERROR;
    call->setText(std::move(text));
    return RTNORM;
}

/// Six significant digits, and always recognisable as a real.
std::string printed(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.6g", value);
    const std::string text = digits;
    return std::isfinite(value) && text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    return out + '"';
}

} // namespace
} // namespace qx::rx

using namespace qx::rx;

int acedDefun(const ACHAR* sname, int funcno) {
    if (!sname || !*sname) return RTERROR;
    lispFunctions().define(ModuleScope::current(), sname, funcno);
    return RTNORM;
}

int acedUndef(const ACHAR* sname, int funcno) {
    return sname && lispFunctions().undefine(ModuleScope::current(), sname, funcno) ? RTNORM : RTERROR;
}

int acedRegFunc(int (*fhdl)(), int fcode) {
    return lispFunctions().callDirectly(ModuleScope::current(), fcode, fhdl) ? RTNORM : RTERROR;
}

int acedGetFunCode() { return LispCall::innermost() ? LispCall::innermost()->code() : RTERROR; }

int acedRetVoid() { return answer(""); }
int acedRetT() { return answer("T"); }
int acedRetNil() { return answer("nil"); }
int acedRetInt(int value) { return answer(std::to_string(value)); }
int acedRetReal(ads_real value) { return answer(printed(value)); }
int acedRetStr(const ACHAR* value) { return value ? answer(quoted(qx::os::toUtf8(value))) : RTERROR; }
