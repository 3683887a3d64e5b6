// Formatting as printf does it on wide strings: %s is a wide string, %hs a UTF-8 one, %c a wide character; d
// i u x X o e E f F g G with flags, width, precision and the sizes h l ll; %%. The same result on every
// platform, whatever the locale. A conversion that is unknown is copied as it stands.
#pragma once

#include "qxexport.h"

#include <cstdarg>
#include <string>

namespace qx::ed {

/// The arguments must fit the format, as for printf; a null string prints as "(null)".
QX_HOST_API std::wstring formatted(const wchar_t* format, va_list arguments);

} // namespace qx::ed
