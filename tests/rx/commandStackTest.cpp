#include "rx/CommandStack.h"

#include <gtest/gtest.h>

using namespace qx::rx;

namespace {

int runs = 0;
void count() { ++runs; }

/// Adds "group/global/local" on behalf of a module.
Acad::ErrorStatus add(CommandStack& stack, const char* name, ModuleId owner = hostItself,
                      HINSTANCE resources = nullptr, AcRxFunctionPtr function = count) {
    std::wstring parts[3];
    std::size_t part = 0;
    for (; *name; ++name) *name == '/' ? void(++part) : parts[part].push_back(static_cast<wchar_t>(*name));
    const ModuleScope scope{owner};
    return stack.addCommand(parts[0].c_str(), parts[1].c_str(), parts[2].c_str(), ACRX_CMD_MODAL, function,
                            nullptr, -1, resources);
}

/// "group/global/local" of each command, a '!' before stale ones.
std::string listing(const CommandStack& stack) {
    std::string text;
    for (const auto& command : stack.all()) {
        const auto& entry = command->entry();
        const std::wstring name = entry.group + L"/" + entry.global + L"/" + entry.local;
        text += text.empty() ? "" : " ";
        text += command->isStale() ? "!" : "";
        text.append(name.begin(), name.end());
    }
    return text;
}

TEST(CommandStack, NamesAreUniqueWithinAGroup) {
    const std::pair<const char*, Acad::ErrorStatus> cases[] = {
        {"G/ALIGN/other", Acad::eDuplicateKey},
        {"g/align/other", Acad::eDuplicateKey},
        {"G/OTHER/Local", Acad::eDuplicateKey},
        {"H/Align/local", Acad::eOk},
        {"G/Other/other", Acad::eOk},
        {"G/Third/Align", Acad::eOk},
        {"G/Fourth/", Acad::eOk},
        {"G//local", Acad::eInvalidInput},
        {"/Align/local", Acad::eInvalidInput},
    };
    for (const auto& [command, status] : cases) {
        CommandStack stack;
        ASSERT_EQ(add(stack, "G/Align/local"), Acad::eOk);
        EXPECT_EQ(add(stack, command), status) << command;
        EXPECT_EQ(stack.all().size(), status == Acad::eOk ? 2u : 1u) << command;
    }
    CommandStack stack;
    EXPECT_EQ(add(stack, "G/Align/local", hostItself, nullptr, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(stack.addCommand(nullptr, nullptr, nullptr, 0, count), Acad::eInvalidInput);
}

TEST(CommandStack, TypedNamesFindTheNewestGroup) {
    CommandStack stack;
    add(stack, "OLD/Align/Same");
    add(stack, "NEW/Align/NewLocal");
    add(stack, "OLD/Late/NewLocal");
    const std::pair<std::wstring, std::wstring> cases[] = {
        // the group; empty: no such command
        {L"ALIGN", L"NEW"},  {L"same", L"OLD"},   {L"newlocal", L"NEW"}, {L"_.align", L"NEW"},
        {L"._LATE", L"OLD"}, {L"'_late", L"OLD"}, {L".same", L"OLD"},    {L"_same", L""},
        {L"alig", L""},      {L"", L""},          {L"_", L""},
    };
    for (const auto& [typed, group] : cases) {
        const auto found = stack.find(typed);
        EXPECT_TRUE((found ? found->entry().group : L"") == group) << std::string{typed.begin(), typed.end()};
    }
    EXPECT_EQ(stack.lookupGlobalCmd(L"NewLocal"), nullptr);
    EXPECT_EQ(stack.lookupLocalCmd(L"Late"), nullptr);
    EXPECT_NE(stack.lookupCmd(L"same"), nullptr);
    EXPECT_EQ(stack.lookupCmd(L"same"), stack.lookupLocalCmd(L"SAME"));
    EXPECT_EQ(stack.lookupCmd(nullptr), nullptr);
}

TEST(CommandStack, RemovesByGroupAndGlobalName) {
    CommandStack stack;
    add(stack, "G/One/Eins");
    add(stack, "G/Two/Zwei");
    add(stack, "H/One/Eins");
    EXPECT_EQ(stack.removeCmd(L"G", L"Eins"), Acad::eKeyNotFound) << "a local name does not count";
    EXPECT_EQ(stack.removeCmd(L"X", L"One"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.removeCmd(nullptr, nullptr), Acad::eKeyNotFound);
    EXPECT_EQ(stack.removeCmd(L"g", L"one"), Acad::eOk);
    EXPECT_EQ(stack.removeCmd(L"g", L"one"), Acad::eKeyNotFound);
    EXPECT_EQ(listing(stack), "G/Two/Zwei H/One/Eins");
    EXPECT_EQ(stack.removeGroup(L"h"), Acad::eOk);
    EXPECT_EQ(stack.removeGroup(L"h"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.removeCmd(L"G", L"TWO"), Acad::eOk);
    EXPECT_EQ(stack.removeGroup(L"G"), Acad::eKeyNotFound) << "a group goes with its last command";
}

TEST(CommandStack, StaleCommandsStayAndGiveWay) {
    CommandStack stack;
    add(stack, "G/One/Eins", 1);
    add(stack, "G/Two/Zwei", 2);
    add(stack, "H/One/Eins", 1);
    const auto stale = stack.find(L"one");
    stack.retire(1);
    EXPECT_EQ(listing(stack), "!G/One/Eins G/Two/Zwei !H/One/Eins");

    const int before = runs;
    EXPECT_EQ(stale->run().error(), "The module of the command One was unloaded; load it again.");
    EXPECT_EQ(runs, before);
    EXPECT_EQ(stale->functionAddr(), nullptr);

    EXPECT_EQ(add(stack, "G/ONE/Zwei", 3), Acad::eDuplicateKey) << "the local name is a living command's";
    EXPECT_EQ(add(stack, "G/ONE/Uno", 3), Acad::eOk);
    EXPECT_EQ(listing(stack), "G/Two/Zwei G/ONE/Uno !H/One/Eins");
    EXPECT_TRUE(stack.find(L"one")->run()) << "a living command goes before a stale one of a newer group";
    EXPECT_EQ(runs, before + 1);
    EXPECT_EQ(add(stack, "H/One/Eins", 3), Acad::eOk);
    EXPECT_TRUE(stack.find(L"one")->entry().group == L"H");
    EXPECT_EQ(stack.removeCmd(L"G", L"ONE"), Acad::eOk);
}

HINSTANCE const someInstance = reinterpret_cast<HINSTANCE>(&runs);
HINSTANCE seen = nullptr;
ModuleId seenModule = hostItself;

void look() {
    seen = AfxGetResourceHandle();
    seenModule = ModuleScope::current();
}
void throwError() { throw std::runtime_error{"reason"}; }
void throwNumber() { throw 42; }

TEST(Command, RunsInItsModuleWithItsResources) {
    CommandStack stack;
    add(stack, "G/With/", 5, someInstance, look);
    add(stack, "G/Without/", 5, nullptr, look);
    ASSERT_TRUE(stack.find(L"with")->run());
    EXPECT_EQ(seen, someInstance);
    EXPECT_EQ(seenModule, 5u);
    EXPECT_EQ(AfxGetResourceHandle(), nullptr) << "the old handle is current again";
    ASSERT_TRUE(stack.find(L"without")->run());
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(ModuleScope::current(), hostItself);
}

TEST(Command, ExceptionsEndHere) {
    CommandStack stack;
    add(stack, "G/Error/", 5, someInstance, throwError);
    add(stack, "G/Number/", 5, someInstance, throwNumber);
    EXPECT_EQ(stack.find(L"error")->run().error(), "The command Error failed: reason.");
    EXPECT_EQ(stack.find(L"number")->run().error(), "The command Number failed: unknown exception.");
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
    EXPECT_EQ(ModuleScope::current(), hostItself);
}

} // namespace
