// The dialogs as the module's file has them.
#include "ModuleResources_win32.h"
#include "dialogText_win32.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

const Lines positionAlign = {
    R"("位置对齐" 0,0 456x225 popup caption system menu modal frame shell font)"
    R"( "MS Shell Dlg" 8 400 0 1)",
    R"(1230 group box "选择模式" 27,19 66x63)",
    R"(1243 radio group tab "对象选择" 34,35 50x10)",
    R"(1244 radio "组选择" 35,58 42x10)",
    R"(1233 group box group "偏移" 107,20 181x61)",
    R"(-1 static group "偏移值" 121,35 27x8)",
    R"(1245 edit scrolls tab border "" 168,32 40x14)",
    R"(-1 static group "注：仅对上下左右对齐有效" 122,57 104x8)",
    R"(1235 group box "位置对齐" 26,101 263x102)",
    R"(1237 group box "均布方案" 310,103 118x101)",
    R"(1216 button tab "水平居中" 50,119 50x14)",
    R"(1231 button tab "上对齐" 126,118 50x14)",
    R"(1217 button tab "左对齐" 51,146 50x14)",
    R"(1218 button tab "中心对齐" 126,145 50x14)",
    R"(1219 button tab "右对齐" 199,144 50x14)",
    R"(1220 button tab "垂直居中" 51,170 50x14)",
    R"(1221 button tab "下对齐" 127,169 50x14)",
    R"(1222 button tab "横向分布" 335,123 50x14)",
    R"(1224 button tab "纵向分布" 337,157 50x14)",
};
const Lines objectAlign = {
    R"("对象对齐" 0,0 311x140 popup caption system menu modal frame shell font)"
    R"( "MS Shell Dlg" 8 400 0 1)",
    R"(1223 group box "选择模式" 19,18 96x88)",
    R"(1232 radio group "组" 35,37 25x10)",
    R"(1234 radio "多段线" 36,56 42x10)",
    R"(1236 radio "一般对象" 37,75 50x10)",
    R"(1226 group box group "对齐方式" 132,18 158x40)",
    R"(1238 radio group "单独对象对齐（自动选择基线）" 151,30 136x10)",
    R"(1239 radio "整体对象对齐（手动选择基线）" 151,45 136x10)",
    R"(1228 group box group "间距" 133,66 157x40)",
    R"(1242 check box tab "调整间距" 151,83 50x10)",
    R"(1240 edit numeric tab border "" 207,80 40x14)",
    R"(1229 default button tab "直线对齐" 40,115 50x14)",
    R"(1201 default button tab "单点对齐" 119,115 50x14)",
    R"(1241 button tab "取消" 205,115 50x14)",
};

void expectLines(const Lines& found, const Lines& expected) {
    EXPECT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < std::min(found.size(), expected.size()); ++i)
        EXPECT_EQ(found[i], expected[i]);
}

TEST(ModuleDialogs, AreAsDrawnUp) {
    const ModuleResources module;
    EXPECT_EQ(module.ids(ResourceType::dialog), (std::vector{1202, 1214}));
    expectLines(dialogText(module.bytes(ResourceType::dialog, 1202)), positionAlign);
    expectLines(dialogText(module.bytes(ResourceType::dialog, 1214)), objectAlign);
}

/// A dialog that nobody sees.
class Dialog {
public:
    Dialog(const ModuleResources& module, int id)
        : window_{CreateDialogParamW(module.handle(), MAKEINTRESOURCEW(id), nullptr, ignore, 0)} {}
    ~Dialog() { DestroyWindow(window_); }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    HWND window() const { return window_; }
    /// Where an arrow key leads from one control to the next, until it is back.
    std::vector<int> roundByArrows(int first) const {
        std::vector<int> ids;
        HWND control = GetDlgItem(window_, first);
        do {
            ids.push_back(GetDlgCtrlID(control));
            control = GetNextDlgGroupItem(window_, control, FALSE);
        } while (ids.size() < 50 && GetDlgCtrlID(control) != first);
        return ids;
    }

private:
    static INT_PTR CALLBACK ignore(HWND, UINT, WPARAM, LPARAM) { return FALSE; }
    HWND window_;
};

struct RadioCase {
    const char* name;
    int dialog;
    std::vector<int> group;
};
const RadioCase radioCases[] = {
    {"objects or groups", 1202, {1243, 1244}},
    {"groups, polylines or objects", 1214, {1232, 1234, 1236}},
    {"each or whole", 1214, {1238, 1239}},
};

TEST(ModuleDialogs, KeepRadioButtonsAmongThemselves) {
    const ModuleResources module;
    for (const auto& [name, id, group] : radioCases) {
        const Dialog dialog{module, id};
        ASSERT_NE(dialog.window(), nullptr) << name;
        EXPECT_EQ(dialog.roundByArrows(group.front()), group) << name;
    }
}

} // namespace
