#include "os/encoding.h"
#include "rx/ModuleLoader.h"

#include <gtest/gtest.h>

using namespace qx::rx;

namespace {

const std::string framed = QX_TEST_MODULES "/framed.arx";

/// "global/local/flags, with or without resources" of the module's commands.
std::string commandsOfGroup(std::wstring_view group) {
    std::string text;
    for (const auto& command : commandStack().all()) {
        const auto& e = command->entry();
        if (e.group != group) continue;
        text += qx::os::toUtf8(e.global + L"/" + e.local + L"/") + std::to_string(e.flags) +
                (e.resources ? "+" : "-") + " ";
    }
    return text;
}

std::string call(const wchar_t* name) {
    const LispAnswer answer = moduleLoader().invoke(name);
    return !answer.outcome ? answer.outcome.error() : answer.defined ? answer.text : "undefined";
}

TEST(ApplicationObject, RegistersItsTablesAndTakesThemBack) {
    ModuleLoader& loader = moduleLoader();
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(loader.load(framed));
        EXPECT_FALSE(loader.list().back().locked);
        EXPECT_TRUE(loader.list().back().mdiAware);
        EXPECT_EQ(commandsOfGroup(L"Framed"),
                  "Modal/ModalLocal/0+ Session/SessionLocal/2097152- ById/名称七/0+ NoString/NoString/0+ ");
        EXPECT_EQ(call(L"framedByMessage"), "undefined") << "no drawing yet";
        ASSERT_TRUE(loader.setDrawingOpen(true).empty());
        const std::pair<const wchar_t*, const char*> values[] = {{L"FRAMEDBYMESSAGE", "0"},
                                                                 {L"framedDirect", "\"direct \\\"1\\\"\""},
                                                                 {L"名称七", "2.5"},
                                                                 {L"framedNamed", "undefined"}};
        for (const auto& [name, value] : values) EXPECT_EQ(call(name), value);
        ASSERT_TRUE(loader.setDrawingOpen(false).empty());
        EXPECT_TRUE(lispFunctions().all().empty());
        ASSERT_TRUE(loader.unload("framed"));
        EXPECT_EQ(commandsOfGroup(L"Framed"), "");
    }
}

TEST(ApplicationObject, RoutesMessagesToTheirHandlers) {
    ModuleLoader& loader = moduleLoader();
    loader.setDrawingOpen(true);
    ASSERT_TRUE(loader.load(framed));
    for (const auto message :
         {AcRx::kSaveMsg, AcRx::kCfgMsg, AcRx::kEndDialogMsg, AcRx::kNullMsg, AcRx::kEndTabGroupMsg})
        EXPECT_TRUE(loader.broadcast(message).empty());
    EXPECT_EQ(call(L"framedCount"), "1091500") << "the handlers of 9, 15 and 0 were called, in this order";

    ASSERT_TRUE(commandStack().find(L"Modal")->run());
    EXPECT_EQ(call(L"framedHandle"), "T") << "a modal command has the module's resources";
    ASSERT_TRUE(commandStack().find(L"Session")->run());
    EXPECT_EQ(call(L"framedHandle"), "nil");
    ASSERT_TRUE(loader.unload("framed"));
    loader.setDrawingOpen(false);
}

} // namespace
