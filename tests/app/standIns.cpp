// The module calls the editor and its commands; where the test program has these functions too, its own are
// called.
#include "standIns.h"

#include "acedads.h"
#include "positionalign/command.h"

std::vector<std::string> calls;

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const struct resbuf* filter, ads_name) {
    const std::wstring mode = str ? str : L"null";
    calls.push_back("acedSSGet " + std::string{mode.begin(), mode.end()} +
                    (pt1 || pt2 || filter ? " with points or filter" : ""));
    return RTERROR;
}

namespace qx::positionalign {

QX_HOST_API void runCommand() { calls.push_back("runCommand"); }

} // namespace qx::positionalign
