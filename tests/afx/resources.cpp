#include "afx/DialogScript.h"

#include <afxext.h>
#include <gtest/gtest.h>

namespace {

const LPCWSTR ownText = MAKEINTRESOURCEW(7001);
const LPCWSTR ownDialog = MAKEINTRESOURCEW(7000);
const LPCWSTR sharedDialog = MAKEINTRESOURCEW(1202);

/// A module's file, attached as long as this lives.
class Attached {
public:
    explicit Attached(LPCWSTR file) : module_{::LoadLibraryW(file)} {
        EXPECT_NE(module_, nullptr) << ::GetLastError();
    }
    ~Attached() { ::FreeLibrary(module_); }
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;
    operator HMODULE() const { return module_; }

private:
    HMODULE module_;
};

const HMODULE program = ::GetModuleHandleW(nullptr);

TEST(Resources, AreLookedForInTheCurrentHandleThenInTheNewestModule) {
    EXPECT_EQ(AfxFindResourceHandle(ownDialog, RT_DIALOG), program);
    EXPECT_EQ(AfxFindResourceHandle(ownText, RT_RCDATA), program) << "nobody has it: the current one";
    const Attached ours{L"QX_GroupAlignment.arx"};
    EXPECT_EQ(AfxFindResourceHandle(sharedDialog, RT_DIALOG), ours);
    {
        const Attached other{L"otherModule.arx"};
        EXPECT_EQ(AfxFindResourceHandle(sharedDialog, RT_DIALOG), other);
        EXPECT_EQ(AfxFindResourceHandle(ownText, RT_RCDATA), other);
        EXPECT_EQ(AfxFindResourceHandle(ownDialog, RT_DIALOG), program);
        AfxSetResourceHandle(ours);
        EXPECT_EQ(AfxFindResourceHandle(sharedDialog, RT_DIALOG), ours);
        EXPECT_EQ(AfxFindResourceHandle(ownText, RT_RCDATA), other) << "ours does not have it";
        AfxSetResourceHandle(nullptr);
    }
    EXPECT_EQ(AfxFindResourceHandle(sharedDialog, RT_DIALOG), ours);
}

TEST(Resources, OfAModuleAreChainedOnce) {
    AFX_EXTENSION_MODULE record{};
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
    EXPECT_TRUE(AfxInitExtensionModule(record, program));
    EXPECT_TRUE(AfxInitExtensionModule(record, ::GetModuleHandleW(L"user32")));
    EXPECT_EQ(record.hModule, program);
    EXPECT_EQ(record.hResource, program);
    AfxTermExtensionModule(record);
    EXPECT_FALSE(record.bInitialized);
}

} // namespace
