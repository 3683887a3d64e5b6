#include "dxf/Tag.h"

namespace qx::dxf {

bool TagCursor::readCode(const char* p, const char* end, int& code) {
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    const bool negative = p < end && *p == '-';
    if (negative) ++p;
    int value = 0, digits = 0;
    for (; p < end && static_cast<unsigned>(*p - '0') < 10u && digits < 6; ++p, ++digits)
        value = value * 10 + (*p - '0');
    if (digits == 0) return false;
    while (p < end && (*p == ' ' || *p == '\t' || *p == '\r')) ++p;
    if (p < end) return false;
    code = negative ? -value : value;
    return true;
}

} // namespace qx::dxf
