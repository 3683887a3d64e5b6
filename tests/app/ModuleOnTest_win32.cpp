#include "app/ModuleOnTest_win32.h"

#include "afx/ModalLoop.h"
#include "dbxEntryPoint.h"

#include <gtest/gtest.h>

HINSTANCE _hdllInstance = nullptr;

namespace qx::tests {

ModuleOnTest::ModuleOnTest() : file_{::LoadLibraryW(L"QX_GroupAlignment.arx")} {
    EXPECT_NE(file_, nullptr) << ::GetLastError();
    _hdllInstance = file_;
}

ModuleOnTest::~ModuleOnTest() {
    EXPECT_EQ(afx::attachedWindows(), 0u);
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
    ::FreeLibrary(file_);
}

} // namespace qx::tests
