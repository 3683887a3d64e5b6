#include "app/ModuleResourceSwitch.h"
#include "os/encoding.h"
#include "rx/ModuleLoader.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace qx::rx;

static char testProgram;
HINSTANCE _hdllInstance = reinterpret_cast<HINSTANCE>(&testProgram);

namespace {

const std::string modulePath = QX_BIN_DIR "/QX_GroupAlignment.arx";

/// "group/global/local/flags" of each command: a '!' before stale ones, a '+' behind those with resources.
std::vector<std::string> commands() {
    std::vector<std::string> lines;
    for (const auto& command : commandStack().all()) {
        const auto& e = command->entry();
        lines.push_back((command->isStale() ? "!" : "") +
                        qx::os::toUtf8(e.group + L"/" + e.global + L"/" + e.local) + "/" +
                        std::to_string(e.flags) + (e.resources ? "+" : ""));
    }
    return lines;
}

class ModuleTest : public testing::Test {
protected:
    ModuleTest() {
        const qx::Outcome loaded = loader_.load(modulePath);
        EXPECT_TRUE(loaded) << loaded.error();
    }
    ~ModuleTest() override {
        loader_.setDrawingOpen(false);
        loader_.unloadAll();
        for (const ACHAR* group : {L"KV_PositionAlign", L"KV_ObjectAlign"}) commandStack().removeGroup(group);
    }

    ModuleLoader& loader_ = moduleLoader();
};

const std::vector<std::string> whenLoaded = {
    "ADSKMyGroup/MyPickFirst/MyPickFirstLocal/2+",
    "ADSKMyGroup/MySessionCmd/MySessionCmdLocal/2097152",
    "KV_PositionAlign/KV_PositionAlign/KV_PositionAlign/0",
    "KV_ObjectAlign/KV_ObjectAlign/KV_ObjectAlign/0",
};

TEST_F(ModuleTest, RegistersSamplesAndAlignmentCommands) {
    EXPECT_EQ(commands(), whenLoaded);
    for (const auto& command : commandStack().all()) {
        EXPECT_EQ(command->entry().functionCode, -1);
        EXPECT_EQ(command->UIContext(), nullptr);
    }
    EXPECT_FALSE(loader_.list().front().locked);
}

TEST_F(ModuleTest, UnloadingTakesOnlyTheSamples) {
    ASSERT_TRUE(loader_.unload("QX_GroupAlignment"));
    EXPECT_EQ(commands(), (std::vector<std::string>{"!KV_PositionAlign/KV_PositionAlign/KV_PositionAlign/0",
                                                    "!KV_ObjectAlign/KV_ObjectAlign/KV_ObjectAlign/0"}));
    for (const ACHAR* name : {L"kv_positionalign", L"kv_objectalign"})
        EXPECT_NE(commandStack().find(name)->run().error().find("was unloaded"), std::string::npos);
    ASSERT_TRUE(loader_.load(modulePath));
    const auto again = commands();
    EXPECT_TRUE(std::is_permutation(again.begin(), again.end(), whenLoaded.begin(), whenLoaded.end()));
}

TEST_F(ModuleTest, KeepsTheResourceHandle) {
    ASSERT_TRUE(loader_.unload("QX_GroupAlignment"));
    AfxSetResourceHandle(_hdllInstance);
    ASSERT_TRUE(loader_.load(modulePath));
    EXPECT_EQ(AfxGetResourceHandle(), _hdllInstance);
    AfxSetResourceHandle(nullptr);
}

TEST_F(ModuleTest, SamplesRun) {
    EXPECT_TRUE(commandStack().find(L"MyPickFirstLocal")->run());
    EXPECT_TRUE(commandStack().find(L"_MySessionCmd")->run());
    EXPECT_FALSE(loader_.invoke(L"MyLispFunction").defined) << "no drawing is open";
    loader_.setDrawingOpen(true);
    const LispAnswer answer = loader_.invoke(L"mylispfunction");
    EXPECT_TRUE(answer.defined && answer.outcome);
    ASSERT_EQ(lispFunctions().all().size(), 1u);
    EXPECT_EQ(lispFunctions().all()[0].direct, nullptr) << "called by message";
    ASSERT_TRUE(loader_.unload("QX_GroupAlignment"));
    EXPECT_TRUE(lispFunctions().all().empty());
}

TEST(ModuleResourceSwitch, GivesTheOldHandleBack) {
    HINSTANCE other = reinterpret_cast<HINSTANCE>(&commandStack());
    {
        const ModuleResourceSwitch own;
        EXPECT_EQ(AfxGetResourceHandle(), _hdllInstance);
        {
            const ModuleResourceSwitch given{other};
            EXPECT_EQ(AfxGetResourceHandle(), other);
        }
        EXPECT_EQ(AfxGetResourceHandle(), _hdllInstance);
    }
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
}

} // namespace
