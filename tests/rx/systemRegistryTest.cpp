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

} // namespace
