#include "ed/PromptStage.h"

#include "adslib.h"
#include "os/encoding.h"

#include <dlfcn.h>

namespace qx::tests {

PromptStage stage;

namespace {
/// The editor's function, by the name that this program's own goes by.
template <class Function> Function* editors(Function* own) {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(own), &info);
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, info.dli_sname));
}

template <class Ask> int asked(const Question& question, const Ask& askEditor) {
    const auto staged = stage.answer ? stage.answer(question) : std::nullopt;
    const int result = staged ? *staged : askEditor();
    if (stage.answered) stage.answered(question);
    return result;
}
} // namespace
} // namespace qx::tests

using namespace qx::tests;

int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result) {
    return asked({qx::os::toUtf8(prompt), pt, result},
                 [&] { return editors(&acedGetPoint)(pt, prompt, result); });
}

int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres) {
    return asked({qx::os::toUtf8(str), nullptr, ptres},
                 [&] { return editors(&acedEntSel)(str, entres, ptres); });
}

int acedSSLength(const ads_name sname, Adesk::Int32* len) {
    const int result = editors(&acedSSLength)(sname, len);
    if (result == RTNORM && stage.setLength) *len = *stage.setLength;
    return result;
}

int acedSSName(const ads_name ss, int i, ads_name entres) {
    return stage.unnamed == i ? RTERROR : editors(&acedSSName)(ss, i, entres);
}

int acedSSSetFirst(const ads_name pset, const ads_name unused) {
    Adesk::Int32 length = 0;
    editors (&acedSSLength)(pset, &length);
    stage.highlighted.push_back(unused ? -1 : length);
    return editors(&acedSSSetFirst)(pset, unused);
}
