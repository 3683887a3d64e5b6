#include "drawings/DrawingText.h"

#include "dbpl.h"
#include "shape/randomShapes.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

const DrawingText text{.entities = {"LINE|10 1.000|20 1.0|11 2.0|21 1.0", "CIRCLE|10 0.0|20 0.0|40 1.50",
                                    "INSERT|66 1|2 B|10 5.0|20 5.0", "ATTRIB|10 5.0|20 6.0|40 1.0|1 a|2 T",
                                    "SEQEND", "TEXT|10 1.0|20 1.0|40 2.0|1 a|72 2|11 4.0|21 1.0",
                                    "LWPOLYLINE|90 2|70 0|10 1.0|20 1.0|10 2.0|20 1.0", "REGION|10 1.0",
                                    "POINT|10 0.0|20 0.0|1001 X|1011 1.0|1021 0.0|1031 0.0",
                                    "ARC|10 0.0|20 0.0|40 1.0|50 10.0|51 90.0",
                                    "MTEXT|10 1.0|20 2.0|40 5.0|1 a|210 0.6|220 0.0|230 0.8"},
                       .blocks = {{"B", {"LINE|10 0.0|20 0.0|11 1.0|21 0.0"}}},
                       .groups = {{"G", {"100", "101", "102"}}}};
const std::vector<Handle> movable{0x103, 0x400, 0x100, 0x101, 0x102, 0x105, 0x106, 0x108, 0x109, 0x10A};

/// A new line in model space; its handle.
Handle append(Drawing& drawing, double x) {
    auto* line = new AcDbLine{{x, 0, 0}, {x, 1, 0}};
    const Handle handle = drawing.append(drawing.modelSpace(), line)->handle;
    line->close();
    return handle;
}

Acad::ErrorStatus setColour(const Drawing& drawing, Handle handle, Adesk::UInt16 colour) {
    AcDbObjectPointer<AcDbEntity> entity{idOf(drawing, handle), AcDb::kForWrite};
    return entity.openStatus() == Acad::eOk ? entity->setColorIndex(colour) : entity.openStatus();
}

/// Every object's box is that of a drawing read afresh from the same bytes.
void expectTrueBoxes(const Drawing& drawing, const std::vector<Handle>& handles, const std::string& when) {
    const auto afresh = read(drawing.toBytes());
    for (const Handle handle : handles) {
        if (!afresh->find(handle)) continue;
        ASSERT_EQ(extents(drawing, handle), extents(*afresh, handle)) << hex(handle) << when;
    }
}

TEST(Erasing, leavesOutTheObjectWithItsParts) {
    const std::string all = text.bytes();
    const auto without = [&](Handle first, Handle next) {
        const auto begin = [&](Handle handle) {
            return all.rfind("  0\n", all.find("  5\n" + hex(handle) + "\n"));
        };
        return all.substr(0, begin(first)) + all.substr(begin(next));
    };
    // A text; a reference with its attribute and their end; an attribute; a class that is only kept.
    const std::pair<Handle, Handle> cases[] = {
        {0x105, 0x106}, {0x102, 0x105}, {0x103, 0x104}, {0x107, 0x108}};
    for (const auto& [erased, next] : cases) {
        const auto drawing = read(all);
        EXPECT_EQ(erase(*drawing, erased), Acad::eOk);
        std::string expected = without(erased, next);
        const std::string member = "340\n" + hex(erased) + "\n";
        if (const std::size_t at = expected.find(member); at != expected.npos)
            expected.erase(at, member.size());
        EXPECT_EQ(drawing->toBytes(), expected) << hex(erased);
    }
}

TEST(Undo, stepsWithoutChangesAreNone) {
    const auto drawing = read(text);
    EXPECT_FALSE(step(*drawing, [] {}));
    EXPECT_FALSE(
        step(*drawing, [&] { move(*drawing, 0x100, shift(1e17, 0)), move(*drawing, 0xABC, shift(1, 0)); }));
    EXPECT_EQ(drawing->history().stepsDone(), 0u);
    EXPECT_EQ(drawing->history().undo(), "");
    EXPECT_TRUE(step(*drawing, [&] { move(*drawing, 0x100, shift(0, 0)); })) << "a zero move is a change";
}

TEST(Undo, aNewStepDropsWhatCouldBeRedone) {
    const auto drawing = read(text);
    step(*drawing, [&] { move(*drawing, 0x100, shift(1, 0)); });
    step(*drawing, [&] { append(*drawing, 1); });
    drawing->history().undo();
    EXPECT_FALSE(step(*drawing, [] {}));
    EXPECT_EQ(drawing->history().redo(), "step") << "an empty step drops nothing";
    drawing->history().undo();
    drawing->history().undo();
    step(*drawing, [&] { move(*drawing, 0x101, shift(1, 0)); });
    const std::string bytes = drawing->toBytes();
    EXPECT_EQ(drawing->history().redo(), "");
    EXPECT_EQ(drawing->toBytes(), bytes);
    drawing->history().undo();
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

TEST(Undo, knowsWhatIsSaved) {
    const auto drawing = read(text);
    const auto change = [&] { step(*drawing, [&] { move(*drawing, 0x100, shift(1, 0)); }); };
    EXPECT_FALSE(drawing->isModified());
    change();
    EXPECT_TRUE(drawing->isModified());
    drawing->markSaved();
    EXPECT_FALSE(drawing->isModified());
    drawing->history().undo();
    EXPECT_TRUE(drawing->isModified());
    drawing->history().redo();
    EXPECT_FALSE(drawing->isModified());
    drawing->history().undo();
    change();
    EXPECT_TRUE(drawing->isModified()) << "as many steps, but another one";
}

void changeAtRandom(Drawing& drawing, shapes::Random& random, std::vector<Handle>& handles) {
    const Handle handle =
        handles[static_cast<std::size_t>(random.number(0, static_cast<double>(handles.size())))];
    const int kind = static_cast<int>(random.number(0, 8));
    if (kind == 0) move(drawing, handle, shift(random.number(-9, 9), 0));
    if (kind == 1) move(drawing, handle, AcGeMatrix3d::translation(random.vector(9)));
    if (kind == 2) move(drawing, handle, AcGeMatrix3d::rotation(random.number(-3, 3), random.vector(1)));
    if (kind == 3) setColour(drawing, handle, static_cast<Adesk::UInt16>(random.number(0, 256)));
    if (kind == 4) erase(drawing, handle, random.oneIn(2));
    if (kind == 5) handles.push_back(append(drawing, random.number(-9, 9)));
    if (kind == 6) erase(drawing, DrawingText::firstGroup, random.oneIn(2));
    if (kind == 7) {
        AcDbObjectPointer<AcDbPolyline> polyline{idOf(drawing, 0x106), AcDb::kForWrite};
        if (polyline.openStatus() == Acad::eOk) polyline->setClosed(!polyline->isClosed());
    }
}

TEST(Undo, lawOfRandomSteps) {
    for (unsigned seed = 1; seed <= 80; ++seed) {
        shapes::Random random{seed};
        const auto drawing = read(text);
        std::vector<Handle> handles = movable;
        std::vector<std::string> states{drawing->toBytes()};
        const auto change = [&] {
            for (int n = static_cast<int>(random.number(0, 6)); n > 0; --n)
                changeAtRandom(*drawing, random, handles);
        };
        for (int i = 0; i < 12; ++i) {
            if (step(*drawing, change)) states.push_back(drawing->toBytes());
            expectTrueBoxes(*drawing, handles, " after a step, seed " + std::to_string(seed));
            if (random.oneIn(4)) drawing->history().undo(), drawing->history().redo();
            if (random.oneIn(2)) continue;
            drawing->history().begin("broken off");
            change();
            drawing->history().rollBack();
            ASSERT_EQ(drawing->toBytes(), states.back()) << "rolled back, seed " << seed;
            ASSERT_EQ(drawing->history().stepsDone(), states.size() - 1) << "seed " << seed;
        }
        for (std::size_t i = states.size() - 1; i > 0; --i) {
            ASSERT_EQ(drawing->toBytes(), states[i]) << "undoing to step " << i << ", seed " << seed;
            drawing->history().undo();
            if (i % 3 == 0) expectTrueBoxes(*drawing, handles, " after undo, seed " + std::to_string(seed));
        }
        ASSERT_EQ(drawing->toBytes(), text.bytes()) << "seed " << seed;
        for (std::size_t i = 1; i < states.size(); ++i) {
            drawing->history().redo();
            ASSERT_EQ(drawing->toBytes(), states[i]) << "redoing step " << i << ", seed " << seed;
        }
        EXPECT_EQ(drawing->openCount(), 0u);
    }
}

TEST(Undo, writesNothingOfATurnThatWasTakenBack) {
    for (const char* rest : {"", "|210 0.6|220 0.0|230 0.8", "|11 0.0|21 0.0|31 0.0", "|50 30.0"}) {
        const auto drawing =
            read(DrawingText{.entities = {std::string{"MTEXT|10 1.0|20 2.0|40 5.0|1 a"} + rest}}.bytes());
        step(*drawing, [&] { move(*drawing, 0x100, shift(1, 0)); });
        const std::string moved = drawing->toBytes();
        step(*drawing, [&] { move(*drawing, 0x100, AcGeMatrix3d::rotation(1, AcGeVector3d::kZAxis)); });
        const std::string turned = drawing->toBytes();
        EXPECT_EQ(extents(*read(turned), 0x100), extents(*drawing, 0x100)) << rest;
        drawing->history().undo();
        EXPECT_EQ(drawing->toBytes(), moved) << rest;
        drawing->history().redo();
        EXPECT_EQ(drawing->toBytes(), turned) << rest;
    }
}

} // namespace
