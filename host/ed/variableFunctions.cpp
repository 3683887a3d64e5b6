#include "acedads.h"
#include "ed/Session.h"
#include "os/encoding.h"

#include <algorithm>
#include <cstdlib>

namespace {

// From malloc, so that acutDelString can free it.
ACHAR* copied(const std::wstring& text) {
    auto* copy = static_cast<ACHAR*>(std::malloc((text.size() + 1) * sizeof(ACHAR)));
    if (copy) *std::copy(text.begin(), text.end(), copy) = 0;
    return copy;
}

} // namespace

int acedGetVar(const ACHAR* name, resbuf* result) {
    qx::ed::Session* session = qx::ed::Session::current();
    if (!session || !name || !result) return RTERROR;
    const auto value = session->variables().find(qx::os::toUtf8(name));
    if (!value) return RTERROR;
    result->restype = value->isText ? RTSTR : RTSHORT;
    if (value->isText)
        result->resval.rstring = copied(qx::os::toWide(value->text));
    else
        result->resval.rint = static_cast<short>(value->number);
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
    qx::ed::Session* session = qx::ed::Session::current();
    if (!session || !name || !value) return RTERROR;
    if (value->restype != RTSHORT && value->restype != RTLONG) return RTERROR;
    const int number = value->restype == RTSHORT ? value->resval.rint : value->resval.rlong;
    using Status = qx::ed::Variables::Status;
    return session->variables().set(qx::os::toUtf8(name), number) == Status::done ? RTNORM : RTERROR;
}
