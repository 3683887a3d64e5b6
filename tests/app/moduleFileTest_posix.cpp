// The module as a shared object of this system: what it shows, and what it calls. A call of the host's goes
// to the test program's own function of that name, where it has one.
#include "acedads.h"
#include "rx/ModuleLoader.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

const std::string modulePath = QX_BIN_DIR "/QX_GroupAlignment.arx";

/// What the module asked of the editor, in order.
std::vector<std::string> calls;

} // namespace

int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const struct resbuf* filter, ads_name) {
    const std::wstring mode = str ? str : L"null";
    calls.push_back("acedSSGet " + std::string{mode.begin(), mode.end()} +
                    (pt1 || pt2 || filter ? " with points or filter" : ""));
    return RTERROR;
}

namespace {

TEST(ModuleFile, TakesOverWhatWasPicked) {
    calls.clear();
    ASSERT_TRUE(qx::rx::moduleLoader().load(modulePath));
    EXPECT_TRUE(qx::rx::commandStack().find(L"MyPickFirst")->run());
    EXPECT_EQ(calls, std::vector<std::string>{"acedSSGet _I"});
    ASSERT_TRUE(qx::rx::moduleLoader().unload("QX_GroupAlignment"));
    for (const ACHAR* group : {L"KV_PositionAlign", L"KV_ObjectAlign"})
        qx::rx::commandStack().removeGroup(group);
}

TEST(ModuleFile, ExportsItsTwoFunctionsAndNothingElse) {
    const std::string listing = "nm -D --defined-only '" + modulePath + "'";
    FILE* pipe = popen(listing.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::vector<std::string> names;
    for (char name[200]; std::fscanf(pipe, "%*s %*s %199s", name) == 1;) names.emplace_back(name);
    ASSERT_EQ(pclose(pipe), 0) << "nm is part of the compiler's tools";
    EXPECT_EQ(names, (std::vector<std::string>{"acrxEntryPoint", "acrxGetApiVersion"}));
}

} // namespace
