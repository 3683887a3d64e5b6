// The module's file, attached, so that the code that is linked into a test finds its dialogs and icons there.
// What a test leaves behind is a failed check: objects of windows, or a resource handle.
#pragma once

#include <windows.h>

namespace qx::tests {

class ModuleOnTest {
public:
    ModuleOnTest();
    ~ModuleOnTest();
    ModuleOnTest(const ModuleOnTest&) = delete;
    ModuleOnTest& operator=(const ModuleOnTest&) = delete;

    HMODULE file() const { return file_; }

private:
    HMODULE file_;
};

} // namespace qx::tests
