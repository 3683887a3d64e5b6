#include "acutads.h"
#include "ed/Session.h"
#include "ed/formatted.h"
#include "os/encoding.h"

#include <cstdlib>

int acutPrintf(const ACHAR* format, ...) {
    qx::ed::Session* session = qx::ed::Session::current();
    if (!session || !format) return RTERROR;
    va_list arguments;
    va_start(arguments, format);
    const std::wstring text = qx::ed::formatted(format, arguments);
    va_end(arguments);
    session->line().transcript.message(qx::os::toUtf8(text));
    return RTNORM;
}

void acutDelString(ACHAR*& text) {
    std::free(text);
    text = nullptr;
}
