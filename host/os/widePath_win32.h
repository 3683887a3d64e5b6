// Path names between UTF-8 and what the system's calls take.
#pragma once

#include <string>
#include <string_view>

namespace qx::os {

/// A name that is longer than the system takes otherwise becomes absolute and gets the prefix that lifts the
/// limit.
std::wstring widePath(const std::string& path);
/// The other way; a prefix is taken off again.
std::string narrowPath(std::wstring_view path);
/// Whether the name stands for a device, such as "NUL" in any folder.
bool isDeviceName(const std::wstring& path);

} // namespace qx::os
