// Both commands as the module has them, through their dialogs, over whole drawings.
#include "afx/DialogScript.h"
#include "afx/ModalLoop.h"
#include "controls/GdiLedger.h"
#include "controls/MemoryPicture.h"
#include "controls/buttonPicture.h"
#include "controls/icons.h"
#include "ed/Editor.h"
#include "os/TemporaryFolder.h"
#include "res/resource.h"
#include "rx/ModuleLoader.h"
#include "rxmfcapi.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {
using qx::tests::DialogScript;
using qx::tests::Editor;

const std::string modulePath = QX_BIN_DIR "/QX_GroupAlignment.arx";

std::string sample(const std::string& name) { return contentOf(QX_SOURCE_DIR "/samples/" + name); }

/// Of a script with one command: the part up to and with its name, and what comes after the given number of
/// lines.
std::string withoutSettings(const std::string& script, int settings) {
    std::istringstream lines{script};
    std::string result = "SETVAR CMDDIA 1\n";
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(";")) continue;
        const bool isSetting = result.find("KV_") != std::string::npos && settings > 0;
        if (isSetting)
            --settings;
        else
            result += line + '\n';
    }
    return result;
}

class ModuleDialogs : public testing::Test {
protected:
    ModuleDialogs() {
        const qx::Outcome loaded = loader_.load(modulePath);
        EXPECT_TRUE(loaded) << loaded.error();
    }
    ~ModuleDialogs() override {
        EXPECT_EQ(qx::afx::attachedWindows(), 0u);
        loader_.setDrawingOpen(false);
        loader_.unloadAll();
        for (const ACHAR* group : {L"KV_PositionAlign", L"KV_ObjectAlign"})
            qx::rx::commandStack().removeGroup(group);
    }

    qx::rx::ModuleLoader& loader_ = qx::rx::moduleLoader();
    DialogScript script_;
};

TEST_F(ModuleDialogs, GiveTheSameDrawingsAsPrompts) {
    struct Case {
        const char *drawing, *script;
        int settings;
        std::function<void(DialogScript&)> choose;
    };
    const Case cases[] = {
        {"floorplan.dxf", "floorplan-bubbles-top.scr", 3,
         [](DialogScript& dialog) { dialog.click(IDC_ALIGN_TOP); }},
        {"floorplan.dxf", "floorplan-doors-bottom-offset.scr", 3,
         [](DialogScript& dialog) { dialog.type(IDC_OFFSET, L"100").click(IDC_ALIGN_BOTTOM); }},
        {"schematic.dxf", "schematic-labels-main.scr", 4,
         [](DialogScript& dialog) {
             dialog.click(IDC_ADJUST_SPACING).type(IDC_SPACING, L"2").click(IDC_ALIGN_TO_LINE);
         }},
    };
    for (const Case& c : cases) {
        const std::string before = sample(c.drawing), prompts = sample(c.script);
        const auto byPrompts = Editor{before}.run(prompts);
        ASSERT_EQ(byPrompts.failure, "");
        ASSERT_NE(byPrompts.bytes, before);
        c.choose(script_);
        Editor editor{before};
        const auto byDialog = editor.run(withoutSettings(prompts, c.settings));
        EXPECT_EQ(byDialog.failure, "");
        EXPECT_TRUE(byDialog.bytes == byPrompts.bytes) << c.script << '\n' << byDialog.transcript;
        expectInOrder(editor);
    }
}

TEST_F(ModuleDialogs, WithoutAnActionSelectAndDoNothing) {
    const std::string before = sample("floorplan.dxf");
    Editor editor{before};
    script_.press(VK_RETURN);
    const auto run = editor.run("SETVAR CMDDIA 1\nKV_PositionAlign\nALL\n\n");
    EXPECT_EQ(run.failure, "");
    EXPECT_TRUE(run.bytes == before);
}

TEST_F(ModuleDialogs, CancelledAskForNothing) {
    const std::string before = sample("schematic.dxf");
    for (const char* command : {"KV_PositionAlign", "KV_ObjectAlign"}) {
        Editor editor{before};
        script_.press(VK_ESCAPE);
        const auto run = editor.run("SETVAR CMDDIA 1\n" + std::string{command} + "\n");
        EXPECT_EQ(run.failure, "");
        EXPECT_TRUE(run.bytes == before);
    }
}

/// An icon of our own file.
qx::controls::OwnedIcon ownIcon(int id, int size) {
    const HMODULE file = ::GetModuleHandleW(L"QX_GroupAlignment.arx");
    return qx::controls::OwnedIcon{
        static_cast<HICON>(::LoadImageW(file, MAKEINTRESOURCEW(id), IMAGE_ICON, size, size, 0))};
}

std::vector<DWORD> pictureOf(HICON icon, int size) {
    const qx::tests::MemoryPicture canvas{size, size};
    ::DrawIconEx(canvas.context(), 0, 0, icon, size, size, 0, nullptr, DI_NORMAL);
    return canvas.pixels();
}

/// Each button as it paints itself is what it should be with this picture, and raised.
void expectPicture(HWND dialog, int control, int icon) {
    const HWND button = ::GetDlgItem(dialog, control);
    RECT area{};
    ::GetClientRect(button, &area);
    const qx::tests::MemoryPicture shown{area.right, area.bottom}, expected{area.right, area.bottom};
    DRAWITEMSTRUCT item{
        ODT_BUTTON, static_cast<UINT>(control), 0, ODA_DRAWENTIRE, 0, button, shown.context(), area, 0};
    ::SendMessageW(dialog, WM_DRAWITEM, static_cast<WPARAM>(control), reinterpret_cast<LPARAM>(&item));
    const std::wstring caption = qx::tests::textOf(dialog, control);
    const auto picture = ownIcon(icon, 16);
    const bool isDefault = (::SendMessageW(button, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
    qx::controls::paintButton(expected.context(), area,
                              {.caption = caption,
                               .font = reinterpret_cast<HFONT>(::SendMessageW(button, WM_GETFONT, 0, 0)),
                               .icon = picture.get(),
                               .iconSize = 16,
                               .isDefault = isDefault});
    EXPECT_TRUE(shown.pixels() == expected.pixels()) << control;
}

struct ButtonIcon {
    int control, icon;
};

TEST_F(ModuleDialogs, FindTheirOwnResourcesWhereverTheHandlePoints) {
    const HMODULE other = ::LoadLibraryW(L"otherModule.arx");
    ASSERT_NE(other, nullptr);
    Editor editor{sample("floorplan.dxf")};
    for (const HINSTANCE current : {HINSTANCE{}, HINSTANCE{other}, ::GetModuleHandleW(L"user32")}) {
        AfxSetResourceHandle(current);
        struct Case {
            const char* command;
            const wchar_t* title;
            std::vector<ButtonIcon> buttons;
        };
        for (const Case& c :
             {Case{"KV_PositionAlign",
                   L"位置对齐",
                   {{1216, 1208},
                    {1231, 1205},
                    {1217, 1210},
                    {1218, 1212},
                    {1219, 1209},
                    {1220, 1203},
                    {1221, 1204},
                    {1222, 1206},
                    {1224, 1213}}},
              Case{"KV_ObjectAlign", L"对象对齐", {{1229, 1211}, {1201, 1207}, {1241, 1215}}}}) {
            script_.look([c](HWND dialog) {
                wchar_t title[40] = {};
                ::GetWindowTextW(dialog, title, 40);
                EXPECT_STREQ(title, c.title);
                for (const ButtonIcon& each : c.buttons) expectPicture(dialog, each.control, each.icon);
                for (const auto& [kind, size] : {std::pair{ICON_BIG, 32}, {ICON_SMALL, 16}}) {
                    const auto icon = reinterpret_cast<HICON>(
                        ::SendMessageW(dialog, WM_GETICON, static_cast<WPARAM>(kind), 0));
                    EXPECT_EQ(pictureOf(icon, size), pictureOf(ownIcon(55, size).get(), size));
                }
            });
            script_.press(VK_ESCAPE);
            editor.run("SETVAR CMDDIA 1\n" + std::string{c.command} + "\n");
            EXPECT_EQ(AfxGetResourceHandle(), current);
        }
    }
    AfxSetResourceHandle(nullptr);
    ::FreeLibrary(other);
}

TEST_F(ModuleDialogs, AreThereAgainWhenTheModuleIsLoadedAgain) {
    for (int time = 0; time < 3; ++time) {
        script_.press(VK_ESCAPE).press(VK_ESCAPE);
        EXPECT_EQ(Editor{sample("floorplan.dxf")}
                      .run("SETVAR CMDDIA 1\nKV_ObjectAlign\nKV_PositionAlign\n")
                      .failure,
                  "");
        ASSERT_TRUE(loader_.unload("QX_GroupAlignment"));
        EXPECT_EQ(::GetModuleHandleW(L"QX_GroupAlignment.arx"), nullptr) << "its file is let go";
        EXPECT_NE(Editor{sample("floorplan.dxf")}.run("KV_PositionAlign\n").failure, "");
        ASSERT_TRUE(loader_.load(modulePath));
    }
}

int windowsOfThisThread() {
    int count = 0;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND, LPARAM counter) -> BOOL { return ++*reinterpret_cast<int*>(counter); },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

TEST_F(ModuleDialogs, LeaveNothingBehind) {
    Editor editor{sample("floorplan.dxf")};
    const qx::tests::GdiLedger ledger{::GetModuleHandleW(L"QX_GroupAlignment.arx")};
    int windowsBefore = -1;
    for (int time = 0; time < 50; ++time) {
        script_.look([](HWND dialog) {
            ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        });
        script_.press(VK_ESCAPE);
        script_.click(IDC_MODE_GROUPS).click(IDC_ADJUST_SPACING).closeBox();
        EXPECT_EQ(editor.run("SETVAR CMDDIA 1\nKV_PositionAlign\nKV_ObjectAlign\n").failure, "");
        if (windowsBefore < 0) windowsBefore = windowsOfThisThread(); // the system's own come with the first
        EXPECT_EQ(qx::afx::attachedWindows(), 0u);
    }
    EXPECT_EQ(windowsOfThisThread(), windowsBefore);
    EXPECT_EQ(ledger.taken(), 50u * (12 + 2 * 4)) << "one picture for each button, and each window's, twice";
    EXPECT_EQ(ledger.alive(), 0u);
    EXPECT_EQ(ledger.strange(), 0u);
}

} // namespace
