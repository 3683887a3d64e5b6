#include "accmd.h"
#include "rxdlinkr.h"

#include <gtest/gtest.h>

namespace {

class Thing : public AcRxObject {};

TEST(SystemRegistry, NamesIgnoreAsciiCase) {
    AcRxDictionary& registry = *acrxSysRegistry();
    Thing first;
    Thing second;
    Adesk::Int32 number = -1;
    Adesk::Int32 again = -1;
    EXPECT_EQ(registry.atPut(L"Älpha", &first, number), nullptr);
    EXPECT_EQ(registry.atPut(L"ÄLPHA", &second, again), &first);
    EXPECT_EQ(number, again);
    EXPECT_EQ(registry.at(L"Älpha"), &second);
    EXPECT_FALSE(registry.has(L"älpha")) << "only ASCII letters have two cases";
    EXPECT_EQ(registry.remove(L"älphA"), nullptr);
    EXPECT_EQ(registry.remove(L"ÄlphA"), &second);
    EXPECT_FALSE(registry.has(L"Älpha"));
    EXPECT_EQ(registry.at(nullptr), nullptr);
}

TEST(SystemRegistry, HasTheHostsServices) {
    EXPECT_NE(acedRegCmds, nullptr);
    ASSERT_NE(acrxDynamicLinker, nullptr);
    EXPECT_EQ(AcEdCommandStack::cast(acrxDynamicLinker), nullptr);
    int stranger = 0;
    EXPECT_FALSE(acrxDynamicLinker->unlockApplication(&stranger));
    EXPECT_FALSE(acrxUnlockApplication(nullptr));
    EXPECT_FALSE(acrxLoadModule(nullptr, true));
    EXPECT_FALSE(acrxUnloadModule(L"nothing"));
}

} // namespace
