// The module calls the editor; where the test program has the same function, its own is called.
#include "standIns.h"

#include "acedads.h"

std::vector<std::string> calls;

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const struct resbuf* filter, ads_name) {
    const std::wstring mode = str ? str : L"null";
    calls.push_back("acedSSGet " + std::string{mode.begin(), mode.end()} +
                    (pt1 || pt2 || filter ? " with points or filter" : ""));
    return RTERROR;
}
