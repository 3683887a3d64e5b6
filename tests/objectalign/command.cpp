// Whole runs of the command, as scripts over the plan.
#include "objectalign/CommandRun.h"

#include "dbobjptr.h"
#include "objectalign/Messages.h"

namespace qx::tests {
namespace {

/// What holds after every command, whatever it did.
void expectTidy(CommandRun& run) {
    expectInOrder(run.editor);
    EXPECT_EQ(run.added(), "");
    EXPECT_EQ(run.setsLeft(), 0u);
}

struct ChangeCase {
    const char* name;
    std::string inputs; ///< behind the command's name
    const char* changes;
};

void expectChanges(const ChangeCase& each, const std::string& bytes = plan().content.bytes()) {
    SCOPED_TRACE(each.name);
    CommandRun run{bytes};
    EXPECT_TRUE(run.script("KV_ObjectAlign " + each.inputs)) << run.shown;
    EXPECT_EQ(run.changes(), each.changes) << run.shown;
    expectTidy(run);
    EXPECT_TRUE(run.isUndoneToTheBytes());
}

const std::string base = "- {K@1100,5} 0,100 "; ///< the end of a selection, its base line and base point
const std::string line = "{H@50,0} ", onLine = "{H@20,0} 50,1 ", onCircle = "{Z@50,-900} 50,-899 ";

TEST(Command, EveryModeMethodAndActionMovesWhatItShould) {
    const ChangeCase cases[] = {
        {"groups to a line", "G - L {A} " + base + line + "-", "A -80,90<0, T -60,-100<300"},
        {"groups to a line, spaced", "G 5 L {A} " + base + line + "-", "A -80,-5<0, T -60,-195<300"},
        {"groups at a straight point", "G - P {A} " + base + onLine + "-", "A -30,101.8<0, T -10,-88.2<300"},
        {"groups at a straight point, spaced", "G 5 P {A} " + base + onLine + "-",
         "A -30,-5<0, T -10,-195<300"},
        {"groups at a circle", "G - P {A} " + base + onCircle + "-", "A 130,111.14<180, T 110,301.14<120"},
        {"groups at a circle, spaced", "G 5 P {A} " + base + onCircle + "-",
         "A 130,-885<180, T 110,-695<120"},
        {"one member of each of two groups, and a loner", "G - L {C} {E} {T} " + base + line + "-",
         "A -80,90<0, T -60,-100<300, P -80,-300<0, C -60,-700<0"},
        {"a loner only", "G - L {E} " + base + line + "-", ""},
        {"polylines to a line", "P - L {P@400,25} {R@600,25} - " + line + "-", "P 400,20<0, R 600,20<0"},
        {"polylines to a line, spaced", "P 5 L {P@400,25} - " + line + "-", "P 400,5<0"},
        {"polylines at a straight point", "P - P {P@400,25} {Q@500,25} - " + onLine + "-",
         "P 45,20<0, Q 45,20<0"},
        {"polylines at a straight point, spaced", "P 5 P {P@400,25} - " + onLine + "-", "P 55,5<180"},
        {"polylines at a circle", "P - P {P@400,25} - " + onCircle + "-", "P 55,20<180"},
        {"polylines at a circle, spaced", "P 5 P {P@400,25} - " + onCircle + "-", "P 55,-895<180"},
        {"a polyline by another segment", "P 5 L {P@410,30} - {K@1100,5} -", "P 1105,10<180"},
        {"no polyline", "P 5 L - " + line + "9,9 -", ""},
        {"each to a line", "O S - L ALL - " + line + "-",
         "A 10,20<0, T 200,40<0, B 300,40<0, P 400,20<0, Q 500,20<0, R 600,20<0, U 700,40<180, "
         "E 920,20<0, K 1100,0<0, M 1200,40<0"},
        {"each to a line, spaced", "O S 5 L ALL - " + line + "-",
         "A 10,-5<0, T 200,-5<0, B 300,-5<0, P 400,-5<0, Q 500,-5<0, R 600,-5<0, U 700,15<180, "
         "C 800,-15<0, E 920,-15<0, K 1100,5<0, M 1200,-5<0, W 1310,-5<180, S 1500,-7<0, X 1600,-5<0, "
         "Z 50,105<0"},
        {"each at a straight point", "O S - P {A} {C} {N} - " + onLine + "-", "A 55,0<180, C 50,0<0"},
        {"each at a straight point, spaced", "O S 5 P {A} {C} - " + onLine + "-", "A 45,5<0, C 50,15<0"},
        {"each at a circle", "O S - P {A} {N} - " + onCircle + "-", "A 55,-900<180"},
        {"each at a circle, spaced", "O S 5 P {A} - " + onCircle + "-", "A 55,-895<180"},
        {"a spacing of nothing brings to the line", "O S 0 L {A} - " + line + "-", "A 10,0<0"},
        {"whole to a line", "O W - L {A} {T} " + base + line + "-", "A -80,90<0, T -60,-100<300"},
        {"whole to a line, spaced", "O W 5 L {A} {T} " + base + line + "-", "A -80,-5<0, T -60,-195<300"},
        {"whole at a straight point", "O W - P {A} {T} " + base + onLine + "-",
         "A -30,101.8<0, T -10,-88.2<300"},
        {"whole at a straight point, spaced", "O W 5 P {T} " + base + onLine + "-", "T -10,-195<300"},
        {"whole at a circle", "O W - P {A} " + base + onCircle + "-", "A 130,111.14<180"},
        {"whole at a circle, spaced", "O W 5 P {A} " + base + onCircle + "-", "A 130,-885<180"},
        {"by default objects, each", "- - - l {A} - " + line + "-", "A 10,20<0"},
        {"in small letters, groups", "g 5 p {A} " + base + onLine + "-", "A -30,-5<0, T -10,-195<300"},
        {"in small letters, whole", "o w - l {A} " + base + line + "-", "A -80,90<0"},
        {"in small letters, polylines", "p - l {P@400,25} - " + line + "-", "P 400,20<0"},
        {"in small letters, each", "o s - p {A} - " + onCircle + "-", "A 55,-900<180"},
    };
    for (const ChangeCase& each : cases) expectChanges(each);
}

TEST(Command, ClicksTurnTheResultOver) {
    const ChangeCase cases[] = {
        {"each about where it lands", "O S - L {A} {T} - " + line + "9,9 -", "A 10,-20<180, T 200,-40<180"},
        {"each at a point, about that", "O S 5 P {A} {N} - " + onLine + "9,9 -", "A 55,-5<180"},
        {"each at a circle, about the point", "O S 5 P {A} - " + onCircle + "9,9 -", "A 45,-905<0"},
        {"polylines about where their segments land", "P - L {P@400,25} - " + line + "9,9 -",
         "P 410,-20<180"},
        {"polylines at a point, about that", "P 5 P {P@400,25} - " + onLine + "9,9 -", "P 45,-5<0"},
        {"whole to a line", "O W - L {A} " + base + line + "9,9 -", "A 90,-90<180"},
        {"whole at a point, about that", "O W 5 P {A} " + base + onLine + "9,9 -", "A 130,5<180"},
        {"groups, all members", "G - L {A} " + base + line + "9,9 -", "A 90,-90<180, T 70,100<120"},
        {"groups at a circle", "G 5 P {A} " + base + onCircle + "9,9 -", "A -30,-915<0, T -10,-1105<300"},
        {"twice", "O S - L {A} {T} - " + line + "9,9 9,9 -", "A 10,20<0, T 200,40<0"},
        {"three times", "G - L {A} " + base + line + "9,9 9,9 9,9 -", "A 90,-90<180, T 70,100<120"},
        {"ended by Esc", "O S - L {A} - " + line + "9,9 ^", "A 10,-20<180"},
        {"the alignment line itself, each", "O S 5 L {A} {H} - " + line + "-", "A 10,-5<0"},
        {"the alignment line itself, each, turned over", "O S - L {A} {H} - " + line + "9,9 -",
         "H 200,0<180, A 10,-20<180"},
        {"the alignment line itself, whole", "O W 5 L {H} {A} " + base + line + "-", "A -80,-5<0"},
        {"the alignment line itself, whole, turned over", "O W - L {H} {A} " + base + line + "9,9 -",
         "H 10,0<180, A 90,-90<180"},
    };
    for (const ChangeCase& each : cases) expectChanges(each);
}

TEST(Command, TwoClicksAreAHairLessThanAWholeTurn) {
    CommandRun run;
    EXPECT_TRUE(run.script("KV_ObjectAlign O W - L {A} " + base + line + "9,9 9,9 -"));
    const AcDbObjectPointer<AcDbLine> turned{drawings::idOf(run.drawing(), plan()['A'])};
    const AcGePoint3d start = turned->startPoint(), exact{-80, 90, 0}, pivot{5, 0, 0};
    const double off = start.distanceTo(exact) / exact.distanceTo(pivot);
    EXPECT_NEAR(off, 1.07e-7, 0.01e-7) << "nearly, not exactly, where it was";
}

TEST(Command, BaseLineIsALineASegmentOrTwoPoints) {
    const std::string begin = "O W - L {A} - ", end = " 0,100 " + line + "-";
    const ChangeCase cases[] = {
        {"a line", begin + "{K@0,0}" + end, "A -80,90<0"},
        {"the upright segment of a polyline", begin + "{P@400,25}" + end, "A -80,90<0"},
        {"its level segment", begin + "{P@410,30}" + end, ""},
        {"the nearest carrying line, not the nearest segment", begin + "{P@404,5000}" + end, "A -80,90<0"},
        {"of equally near ones the first", begin + "{P@405,25}" + end, "A -80,90<0"},
        {"a segment of a 2D polyline", begin + "{Q@500,25}" + end, "A -80,90<0"},
        {"two points", begin + "- 7,0 7,9" + end, "A -80,90<0"},
        {"two points after a miss", begin + "7777,7777 7,0 7,9" + end, "A -80,90<0"},
        {"the second relative to the first", begin + "- 7,0 @0,9" + end, "A -80,90<0"},
        {"asked again after others", begin + "{T@0,0} {R@600,25} {W@1310,10} {C@0,0} {K@0,0}" + end,
         "A -80,90<0"},
        {"of groups", "G - L {A} - - 7,0 7,9" + end, "A -80,90<0, T -60,-100<300"},
    };
    for (const ChangeCase& each : cases) expectChanges(each);
}

TEST(Command, WhatCanBeAlignedTo) {
    const std::string to = "O S - L {A} - ", at = "O S 5 P {A} - ";
    const ChangeCase cases[] = {
        {"a line above the ground", to + "{X@1610,40} -", "A 20,30<180"},
        {"the segment of a polyline nearest to the pick", to + "{P@410,30} -", "A 20,30<180"},
        {"not the one with the nearest carrying line", to + "{P@430,20.5} -", "A 10,20<0"},
        {"a segment of a 2D polyline", to + "{Q@510,30} -", "A 20,30<180"},
        {"a point of a polyline's straight segment", at + "{P@400,25} 400,24 -", "A 395,19<90"},
        {"of a 2D polyline", at + "{Q@500,25} 500,24 -", "A 495,19<90"},
        {"of a polyline's arc", at + "{W@1310,10} 1302.93,12.93 -", "A 1302.93,5.86<135"},
        {"of an arc", at + "{U@700,50} 707.07,47.07 -", "A 714.14,47.07<135"},
        {"nearly on it", at + "{U@700,50} 709.12,49.12 -", "A 714.14,47.07<135"},
        {"asked again until it is on it", at + "{U@700,50} 709.27,49.27 700,30 0,0 707.07,47.07 -",
         "A 714.14,47.07<135"},
        {"where the curve was picked means nothing", at + "{U@0,0} 707.07,47.07 -", "A 714.14,47.07<135"},
    };
    for (const ChangeCase& each : cases) expectChanges(each);
}

// Picked coordinates are taken as they are, whatever frame they were given in.
TEST(Command, KnowsNoUserCoordinates) {
    drawings::DrawingText shifted = plan().content;
    shifted.header = "|9 $UCSORG|10 100.0|20 50.0|30 0.0";
    for (const ChangeCase& each : {
             ChangeCase{"base point", "O W - L {A} {T} " + base + line + "-", "A -80,90<0, T -60,-100<300"},
             ChangeCase{"two points", "O W - L {A} - - 7,0 7,9 0,100 " + line + "-", "A -80,90<0"},
             ChangeCase{"point of a line", "O S 5 P {A} - " + onLine + "-", "A 45,5<0"},
             ChangeCase{"picked segment", "P 5 L {P@400,25} - " + line + "-", "P 400,5<0"},
         })
        expectChanges(each, shifted.bytes());
}

struct EndCase {
    const char* name;
    std::string inputs;
    const char* messages;
    const char* lastPrompt;
};

constexpr const char *curvePrompt = "请选择对齐点所在的直线、圆、圆弧或多段线:", *pointPrompt = "请选择对齐点:",
                     *linePrompt = "指定对齐线:", *nothing = "/没有选中任何对象，未进行对齐处理！";

TEST(Command, EarlyEndsSayWhyAndMoveNothing) {
    const std::string pick = "O S - P {A} - ";
    const EndCase cases[] = {
        {"Esc at the mode", "^", "", "选择模式"},
        {"Esc at the method", "O ^", "", "对齐方式"},
        {"Esc at the spacing", "O S ^", "", "间距"},
        {"Enter at the action", "O S - -", "", "动作"},
        {"Esc at the action", "G 5 ^", "", "动作"},
        {"Esc at the selection", "O S 5 L ^", "", " 请选择文字、直线、块、多段线和圆弧："},
        {"Esc within the selection", "O W 5 L {A} ^", "", "选择对象: "},
        {"no groups", "G - L -", nothing, "选择对象: "},
        {"groups selected and removed again", "G - L {A} R {A} -", nothing, "删除对象: "},
        {"no objects: all is asked all the same", "O S - L - " + line, nothing, linePrompt},
        {"no objects, at a point", "O S - P - " + onLine, nothing, pointPrompt},
        {"no objects as a whole", "O W - L " + base + line, nothing, linePrompt},
        {"no objects, and no line", "O S - L - -", "", linePrompt},
        {"no first point", "O W - L {A} - - -", "", "请选择第一个对齐点："},
        {"no second point", "O W - L {A} - - 7,0 -", "", "请选择第二个对齐点："},
        {"no base point", "G - L {A} - {K@0,0} -", "", "指定旋转基准点："},
        {"no base point after two points", "G - L {A} - - 7,0 7,9 -", "", "指定旋转基准点："},
        {"Enter at the alignment line", "O S - L {A} - -", "", linePrompt},
        {"a miss at the alignment line", "O S - L {A} - 7777,7777", "", linePrompt},
        {"a circle as alignment line", "O S - L {A} - {C@0,0}", "/请选择线段对象", linePrompt},
        {"a 3D polyline", "P - L - {R@600,25}", "/请选择线段对象", linePrompt},
        {"a polyline of arcs", "G - L {A} " + base + "{W@1310,10}", "/请选择线段对象", linePrompt},
        {"no curve", pick + "-", "", curvePrompt},
        {"a miss at the curve", pick + "7777,7777", "", curvePrompt},
        {"Enter at the point", pick + "{H@50,0} -", "", pointPrompt},
        {"off the curve, then Enter", pick + "{H@50,0} 50,3.1 -", "/请选择对象上的对齐点!", pointPrompt},
        {"a text has no point", pick + "{T@200,40} 200,40 ^", "/请选择对象上的对齐点!", pointPrompt},
        {"nor a 3D polyline", pick + "{R@600,25} 600,25 600,25 ^",
         "/请选择对象上的对齐点!/请选择对象上的对齐点!", pointPrompt},
        {"the centre of a circle", pick + "{S@1500,42} 1500,40", "/该点不是切点", pointPrompt},
        {"polylines of other classes", "P - L {A@0,0} {C@0,0} - -", "//", linePrompt},
        {"polylines picked twice", "P - L {P@0,0} {A@0,0} {P@0,0} {Q@0,0} 7777,7777 -",
         "选择集中对象：1//选择集中对象：2/选择集中对象：3/", linePrompt},
        {"Esc ends the picking of polylines only", "P - L {P@0,0} ^ ^", "选择集中对象：1/", linePrompt},
    };
    for (const EndCase& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        Messages messages{run.editor.session};
        EXPECT_TRUE(run.script("KV_ObjectAlign " + each.inputs)) << run.shown;
        EXPECT_EQ(messages.all, each.messages);
        const std::size_t last = run.shown.rfind(each.lastPrompt);
        ASSERT_NE(last, std::string::npos) << run.shown;
        EXPECT_EQ(run.shown.find('\n', last), run.shown.rfind('\n')) << "more is asked" << run.shown;
        EXPECT_TRUE(run.hasTheFilesBytes());
        expectTidy(run);
    }
}

TEST(Command, TranscriptsShowEveryPromptInTurn) {
    const struct {
        std::string inputs;
        const char* transcript;
    } cases[] = {
        {"KV_ObjectAlign G - P {A} {C} - - 7,0 7,9 0,100 {Z@50,-900} 1,1 50,-900 9,9 -",
         R"(命令: KV_ObjectAlign
选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: G
间距 <不调整>: 
动作 [直线对齐(L)/单点对齐(P)]: P
选择对象: (handent "101")
找到 1 个
选择对象: (handent "110")
找到 1 个，总计 2 个
选择对象: 
选择对齐基线（直线、多段线）或回车指定第一个对齐点：
请选择第一个对齐点：7,0
请选择第二个对齐点：7,9
指定旋转基准点：0,100
请选择对齐点所在的直线、圆、圆弧或多段线:(list (handent "118") (list 50 -900 0))
请选择对齐点:1,1
请选择对象上的对齐点!
请选择对齐点:50,-900
回车结束或[鼠标左键切换方向]:9,9
回车结束或[鼠标左键切换方向]:
命令: *取消*
)"},
        {"KV_ObjectAlign P 2.5 L {P@400,25} {A@0,0} {P@410,30} - {A@10,25} -",
         R"(命令: KV_ObjectAlign
选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: P
间距 <不调整>: 2.5
动作 [直线对齐(L)/单点对齐(P)]: L
请选择多段线：(list (handent "104") (list 400 25 0))
选择集中对象：1
请选择多段线：(list (handent "101") (list 0 0 0))
请选择多段线：(list (handent "104") (list 410 30 0))
选择集中对象：2
请选择多段线：
指定对齐线:(list (handent "101") (list 10 25 0))
回车结束或[鼠标左键切换方向]:
命令: *取消*
)"},
        {"KV_ObjectAlign O S - L {A} - {H@50,0} - KV_ObjectAlign - W - L - {T@0,0} {K@0,0} 0,100 {H@50,0}",
         R"(命令: KV_ObjectAlign
选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: O
对齐方式 [单独(S)/整体(W)] <S>: S
间距 <不调整>: 
动作 [直线对齐(L)/单点对齐(P)]: L
 请选择文字、直线、块、多段线和圆弧：(handent "101")
找到 1 个
 请选择文字、直线、块、多段线和圆弧：
指定对齐线:(list (handent "100") (list 50 0 0))
回车结束或[鼠标左键切换方向]:
命令: *取消*
命令: KV_ObjectAlign
选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: 
对齐方式 [单独(S)/整体(W)] <S>: W
间距 <不调整>: 
动作 [直线对齐(L)/单点对齐(P)]: L
选择对象: 
选择对齐基线（直线、多段线）或回车指定第一个对齐点：(list (handent "102") (list 0 0 0))
选择对齐基线（直线、多段线）或回车指定第一个对齐点：(list (handent "113") (list 0 0 0))
指定旋转基准点：0,100
指定对齐线:(list (handent "100") (list 50 0 0))
没有选中任何对象，未进行对齐处理！)"},
    };
    for (const auto& each : cases) {
        CommandRun run;
        EXPECT_TRUE(run.script(each.inputs));
        EXPECT_EQ(run.shown, each.transcript);
    }
}

TEST(Command, RunsDoNotKnowOfEachOther) {
    CommandRun run;
    EXPECT_TRUE(run.script("KV_ObjectAlign G 5 L {A} " + base + line + "- KV_ObjectAlign - - - L {E} - " + line +
                           "9,9 - U"))
        << "the cancel at the end of a run is not the script's";
    EXPECT_EQ(run.changes(), "A -80,-5<0, T -60,-195<300");
    EXPECT_EQ(run.drawing().history().stepsDone(), 1u);
}

// Construction entities are drawn on the current layer, where the host may refuse to erase them.
TEST(Command, OnALockedLayerConstructionEntitiesStay) {
    std::string locked = plan().content.bytes();
    const std::string current = "$CLAYER\n  8\n";
    locked.replace(locked.find(current), current.size() + 1, current + "LOCKED");
    const struct {
        const char* name;
        std::string inputs;
        const char* added;
    } cases[] = {
        {"a base line by two points is red", "O W - L {A} - - 7,0 7,9 0,100 " + line + "-", "1"},
        {"one along a segment is not", "O W - L {A} - {P@400,25} 0,100 " + line + "-", "256"},
        {"a base line and an alignment line", "O W - L {A} - - 7,0 7,9 0,100 {P@410,30} -", "1 256"},
        {"segment and tangent of a polyline's arc", "O S - P {A} - {W@1310,10} 1302.93,12.93 -", "256 256"},
        {"also of a run that ends early", "O W - L {A} - - 7,0 7,9 ^", "1"},
        {"a line needs none", "O W - L {A} " + base + line + "-", ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run{locked};
        EXPECT_TRUE(run.script("KV_ObjectAlign " + each.inputs));
        EXPECT_EQ(run.added(), each.added);
        expectInOrder(run.editor);
        EXPECT_TRUE(run.isUndoneToTheBytes());
    }
}
} // namespace
} // namespace qx::tests
