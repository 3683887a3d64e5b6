// Whole runs of the command, as scripts over the plan.
#include "objectalign/CommandRun.h"

#include "dbobjptr.h"

namespace qx::tests {
namespace {

struct ChangeCase {
    const char *name, *inputs, *changes;
};

void expectChanges(const std::vector<ChangeCase>& cases, const DrawingText& content = plan().content) {
    for (const ChangeCase& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run{content};
        EXPECT_TRUE(run.script(each.inputs)) << run.shown;
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(run.disorder(), "");
        EXPECT_TRUE(run.isUndoneToTheBytes());
    }
}

TEST(Command, EveryModeMethodAndActionMovesWhatItShould) {
    expectChanges({
        {"groups to a line, spaced", "G 5 L {A} - <base> <line> -", "A -80,-5<0, T -60,-195<300"},
        {"groups on a line", "G - P {A} - <base> <onLine> -", "A -30,101.8<0, T -10,-88.2<300"},
        {"polylines to a line", "P - L {P@400,25} {R@600,25} - <line> -", "P 400,20<0, R 600,20<0"},
        {".. spaced", "P 5 L {P@400,25} - <line> -", "P 400,5<0"},
        {"polylines on a line", "P - P {P@400,25} {Q@500,25} - <onLine> -", "P 45,20<0, Q 45,20<0"},
        {".. spaced, and turned as it would cross", "P 5 P {P@400,25} - <onLine> -", "P 55,5<180"},
        {"polylines on a circle", "P - P {P@400,25} - <onCircle> -", "P 55,20<180"},
        {".. spaced", "P 5 P {P@400,25} - <onCircle> -", "P 55,-895<180"},
        {"each to a line", "O S - L {A} {C} {E} {U} - <line> -", "A 10,20<0, U 700,40<180, E 920,20<0"},
        {".. spaced", "O S 5 L ALL - <line> -",
         "A 10,-5<0, T 200,-5<0, B 300,-5<0, P 400,-5<0, Q 500,-5<0, R 600,-5<0, U 700,15<180, "
         "C 800,-15<0, E 920,-15<0, K 1100,5<0, M 1200,-5<0, W 1310,-5<180, S 1500,-7<0, X 1600,-5,5<0, "
         "Z 50,105<0"},
        {".. spaced by nothing", "O S 0 L {A} - <line> -", "A 10,0<0"},
        {"each on a line", "O S - P {A} {C} {N} - <onLine> -", "A 55,0<180, C 50,0<0"},
        {".. spaced", "O S 5 P {A} {C} - <onLine> -", "A 45,5<0, C 50,15<0"},
        {"each on a line that is selected, too", "O S 5 P {H} {A} - <onLine> -", "A 45,5<0"},
        {"each on a circle", "O S - P {A} {N} - <onCircle> -", "A 55,-900<180"},
        {".. spaced", "O S 5 P {A} - <onCircle> -", "A 55,-895<180"},
        {"whole to a line", "O W - L {A} {K} - <base> <line> -", "A -80,90<0, K -100,-1000<0"},
        {".. spaced", "O W 5 L {A} {T} - <base> <line> -", "A -80,-5<0, T -60,-195<300"},
        {".. spaced", "O W 5 P {T} - <base> <onLine> -", "T -10,-195<300"},
        {"whole on a circle", "O W - P {A} - <base> <onCircle> -", "A 130,111.14<180"},
        {".. spaced", "O W 5 P {A} - <base> <onCircle> -", "A 130,-885<180"},
    });
}

TEST(Command, ClicksTurnTheResultOver) {
    expectChanges({
        {"each where it lands", "O S - L {A} {N} {T} - <line> 9,9 -", "A 10,-20<180, T 200,-40<180"},
        {"each on a line, about the point", "O S 5 P {A} {N} - <onLine> 9,9 -", "A 55,-5<180"},
        {"polylines about the point", "P 5 P {P@400,25} - <onLine> 9,9 -", "P 45,-5<0"},
        {"picked twice, turned twice", "P - L {P@410,30} {P@410,30} - <line> 9,9 -", ""},
        {"whole to a line", "O W - L {A} - <base> <line> 9,9 -", "A 90,-90<180"},
        {"whole about the point", "O W 5 P {A} - <base> <onLine> 9,9 ^", "A 130,5<180"},
        {".. turned over", "O W - L {H} {A} - <base> <line> 9,9 -", "H 10,0<180, A 90,-90<180"},
    });
    CommandRun run;
    EXPECT_TRUE(run.script("O W - L {A} - <base> <line> 9,9 9,9 -"));
    const AcDbObjectPointer<AcDbLine> turned{drawings::idOf(run.drawing(), plan()['A'])};
    const AcGePoint3d exact{-80, 90, 0}, pivot{5, 0, 0};
    const double off = turned->startPoint().distanceTo(exact) / exact.distanceTo(pivot);
    EXPECT_NEAR(off, 1.07e-7, 0.01e-7) << "twice is a hair less than a whole turn";
}

TEST(Command, WhatCanBeAlignedBy) {
    // Picked coordinates are taken as they are, whatever frame they were given in.
    DrawingText shifted = plan().content;
    shifted.header = "|9 $UCSORG|10 100.0|20 50.0|30 0.0";
    const std::vector<ChangeCase> cases{
        {"the segment of a polyline", "O W - L {A} - {P@400,25} 0,100 <line> -", "A -80,90<0"},
        {"two points", "G - L {A} - - 7,0 7,9 0,100 <line> -", "A -80,90<0, T -60,-100<300"},
        {"asked again after others", "O W - L {A} - {T@0,0} {R@600,25} {W@1310,10} {C@0,0} <base> <line> -",
         "A -80,90<0"},
    };
    expectChanges(cases);
    expectChanges(cases, shifted);
}

TEST(Command, WhatCanBeAlignedTo) {
    expectChanges({
        {"not the nearest carrying line", "O S - L {A} - {P@430,20.5} -", "A 10,20<0"},
        {"a segment of a 2D polyline", "O S - L {A} - {Q@510,30} -", "A 20,30<180"},
        {"a 2D polyline's point", "O S 5 P {A} - {Q@500,25} 500,24 -", "A 495,19<90"},
        {"a point of its arc", "O S 5 P {A} - {W@1310,10} 1302.93,12.93 -", "A 1302.93,5.86<135"},
        {"near an arc", "O S 5 P {A} - {U@0,0} 709.12,49.12 -", "A 714.14,47.07<135"},
        {"asked again until it is near", "O S 5 P {A} - {U@0,0} 709.27,49.27 700,30 707.07,47.07 -",
         "A 714.14,47.07<135"},
    });
}

TEST(Command, EarlyEndsSayWhyAndMoveNothing) {
    const char *point = "请选择对齐点:", *line = "指定对齐线:",
               *nothing = "/没有选中任何对象，未进行对齐处理！", *noLine = "/请选择线段对象",
               *offCurve = "/请选择对象上的对齐点!";
    const struct {
        const char *name, *inputs, *messages, *lastPrompt;
    } cases[] = {
        {"Enter at the action", "O S - -", "", "动作"},
        {"Esc at the selection", "O S 5 L ^", "", " 请选择文字、直线、块、多段线和圆弧："},
        {"no groups", "G - L -", nothing, "选择对象: "},
        {"no objects: asked all the same", "O S - P - <onLine>", nothing, point},
        {"no objects, and no line", "O S - L - -", "", line},
        {"a polyline of arcs for a line", "G - L {A} - <base> {W@1310,10}", noLine, line},
        {"off the curve, then Enter", "O S - P {A} - {H@50,0} 50,3.1 -", offCurve, point},
        {"the centre of a circle", "O S - P {A} - {S@1500,42} 1500,40", "/该点不是切点", point},
        {"polylines picked twice", "P - L {P@0,0} {A@0,0} {P@0,0} {Q@0,0} 7777,7777 -",
         "选择集中对象：1//选择集中对象：2/选择集中对象：3/", line},
        {"Esc ends the picking only", "P - L {A@0,0} {C@0,0} ^ ^", "//", line},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        EXPECT_TRUE(run.script(each.inputs)) << run.shown;
        EXPECT_EQ(run.messages, each.messages);
        const std::size_t last = run.shown.rfind(each.lastPrompt);
        ASSERT_NE(last, std::string::npos) << run.shown;
        EXPECT_EQ(run.shown.find('\n', last), run.shown.rfind('\n')) << "more is asked" << run.shown;
        EXPECT_TRUE(run.hasTheFilesBytes());
        EXPECT_EQ(run.disorder(), "");
    }
}

// The cancel at the end of a run is not the script's.
TEST(Command, RunsShowEveryPromptInTurnAndDoNotKnowOfEachOther) {
    CommandRun run;
    EXPECT_TRUE(run.script("G - P {A} - - 7,0 7,9 0,100 {Z@50,-900} 1,1 50,-900 9,9 - "
                           "KV_ObjectAlign P 2.5 L {P@400,25} {A@0,0} - <line> -"));
    EXPECT_EQ(run.changes(), "A -30,-1911.14<0, T -10,-2101.14<300, P 400,2.5<0");
    EXPECT_EQ(run.drawing().history().stepsDone(), 2u);
    EXPECT_EQ(run.shown, R"(命令: KV_ObjectAlign
选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: G
间距 <不调整>: 
动作 [直线对齐(L)/单点对齐(P)]: P
选择对象: (handent "101")
找到 1 个
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
命令: KV_ObjectAlign
选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: P
间距 <不调整>: 2.5
动作 [直线对齐(L)/单点对齐(P)]: L
请选择多段线：(list (handent "104") (list 400 25 0))
选择集中对象：1
请选择多段线：(list (handent "101") (list 0 0 0))
请选择多段线：
指定对齐线:(list (handent "100") (list 50 0 0))
回车结束或[鼠标左键切换方向]:
命令: *取消*
)");
}

} // namespace
} // namespace qx::tests
