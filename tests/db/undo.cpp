#include "drawings/DrawingText.h"

#include "dbsymtb.h"
#include "shape/randomShapes.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

const DrawingText text{.entities = {"LINE|10 1.000|20 1.0|11 2.0|21 1.0", "CIRCLE|10 0.0|20 0.0|40 1.50",
                                    "INSERT|66 1|2 B|10 5.0|20 5.0", "ATTRIB|10 5.0|20 6.0|40 1.0|1 a|2 T",
                                    "SEQEND", "TEXT|10 1.0|20 1.0|40 2.0|1 a|72 2|11 4.0|21 1.0",
                                    "LWPOLYLINE|90 2|70 0|10 1.0|20 1.0|10 2.0|20 1.0", "SOLID|10 1.0",
                                    "POINT|10 0.0|20 0.0|1001 X|1011 1.0|1021 0.0|1031 0.0",
                                    "ARC|10 0.0|20 0.0|40 1.0|50 10.0|51 90.0"},
                       .blocks = {{"B", {"LINE|10 0.0|20 0.0|11 1.0|21 0.0"}}},
                       .groups = {{"G", {"100", "101", "102"}}}};
constexpr std::uint64_t movable[] = {0x103, 0x400, 0x100, 0x101, 0x102, 0x105, 0x106, 0x108, 0x109};

/// A new line in model space; its handle.
std::uint64_t append(const Drawing& drawing, double x) {
    AcDbObjectPointer<AcDbBlockTableRecord> space{idOf(drawing, DrawingText::modelSpace), AcDb::kForWrite};
    auto* line = new AcDbLine{{x, 0, 0}, {x, 1, 0}};
    EXPECT_EQ(space->appendAcDbEntity(line), Acad::eOk);
    const std::uint64_t handle = line->objectId().handle().value();
    line->close();
    return handle;
}

Acad::ErrorStatus setColour(const Drawing& drawing, std::uint64_t handle, Adesk::UInt16 colour) {
    AcDbObjectPointer<AcDbEntity> entity{idOf(drawing, handle), AcDb::kForWrite};
    return entity.openStatus() == Acad::eOk ? entity->setColorIndex(colour) : entity.openStatus();
}

using Change = std::function<void(const Drawing&)>;
const struct {
    const char* name;
    Change change;
} changes[] = {
    {"one object", [](const Drawing& d) { move(d, 0x100, shift(1, 0)); }},
    {"one object twice",
     [](const Drawing& d) {
         move(d, 0x100, shift(1, 0));
         move(d, 0x100, AcGeMatrix3d::rotation(1, AcGeVector3d::kZAxis));
     }},
    {"there and back", [](const Drawing& d) { move(d, 0x100, shift(1, 0)), move(d, 0x100, shift(-1, 0)); }},
    {"every object",
     [](const Drawing& d) {
         for (const auto handle : movable) move(d, handle, AcGeMatrix3d::rotation(2, AcGeVector3d(1, 2, 3)));
     }},
    {"a reference with its attribute", [](const Drawing& d) { move(d, 0x102, shift(3, 4, 5)); }},
    {"colours", [](const Drawing& d) { setColour(d, 0x100, 3), setColour(d, 0x107, 4); }},
    {"erased", [](const Drawing& d) { erase(d, 0x100), erase(d, 0x102); }},
    {"moved and erased", [](const Drawing& d) { move(d, 0x101, shift(1, 0)), erase(d, 0x101); }},
    {"erased and brought back", [](const Drawing& d) { erase(d, 0x101), erase(d, 0x101, false); }},
    {"an object inside a block", [](const Drawing& d) { move(d, 0x400, shift(0, 9)); }},
    {"a group erased", [](const Drawing& d) { erase(d, DrawingText::firstGroup); }},
    {"a new object", [](const Drawing& d) { append(d, 1); }},
    {"a new object moved and coloured",
     [](const Drawing& d) {
         const auto handle = append(d, 1);
         move(d, handle, shift(1, 1));
         setColour(d, handle, 1);
     }},
    {"a new object erased", [](const Drawing& d) { erase(d, append(d, 1)); }},
};

/// Every object's box is that of a drawing read afresh from the same bytes.
void expectTrueBoxes(const Drawing& drawing, const std::vector<std::uint64_t>& handles,
                     const std::string& when) {
    const auto afresh = read(drawing.toBytes());
    for (const std::uint64_t handle : handles) {
        if (!afresh->find(handle)) continue;
        ASSERT_EQ(extents(drawing, handle), extents(*afresh, handle)) << hex(handle) << when;
    }
}

// Each change alone, then each behind every other one.
TEST(Undo, bringsBackTheBytesOfEachStep) {
    const std::string original = text.bytes();
    for (const auto& first : changes)
        for (const auto& second : changes) {
            const auto drawing = read(original);
            const auto expectState = [&](const std::string& bytes, const std::string& when) {
                EXPECT_EQ(drawing->toBytes(), bytes) << when;
                expectTrueBoxes(*drawing, {std::begin(movable), std::end(movable)}, " " + when);
            };
            expectState(original, "at first");
            EXPECT_TRUE(step(*drawing, [&] { first.change(*drawing); })) << first.name;
            const std::string between = drawing->toBytes();
            const bool hasSecond = step(*drawing, [&] { second.change(*drawing); });
            const std::string last = drawing->toBytes();
            const std::string name = std::string{first.name} + ", then " + second.name;

            EXPECT_EQ(hasSecond ? drawing->history().undo() : "step", "step") << name;
            expectState(between, name + ", one undone");
            EXPECT_EQ(drawing->history().undo(), "step") << name;
            expectState(original, name + ", both undone");
            EXPECT_EQ(drawing->history().undo(), "") << name << ", nothing left to undo";
            EXPECT_EQ(drawing->history().redo(), "step") << name;
            expectState(between, name + ", one done again");
            EXPECT_EQ(hasSecond ? drawing->history().redo() : "step", "step") << name;
            expectState(last, name + ", both done again");
            EXPECT_EQ(drawing->history().redo(), "") << name << ", nothing left to redo";
        }
}

TEST(Undo, rollingBackLeavesNoTrace) {
    for (const auto& before : changes)
        for (const auto& each : changes) {
            const auto drawing = read(text.bytes());
            step(*drawing, [&] { before.change(*drawing); });
            const std::string bytes = drawing->toBytes();
            drawing->history().begin("broken off");
            each.change(*drawing);
            drawing->history().rollBack();
            const std::string name = std::string{each.name} + " after " + before.name;
            EXPECT_EQ(drawing->toBytes(), bytes) << name;
            EXPECT_FALSE(drawing->history().isRecording()) << name;
            EXPECT_EQ(drawing->history().redo(), "") << name;
            EXPECT_EQ(drawing->history().undo(), "step") << name;
            EXPECT_EQ(drawing->toBytes(), text.bytes()) << name;
        }
}

TEST(Erasing, leavesOutTheObjectWithItsParts) {
    const std::string all = text.bytes();
    const auto without = [&](std::uint64_t first, std::uint64_t next) {
        const auto begin = [&](std::uint64_t handle) {
            return all.rfind("  0\n", all.find("  5\n" + hex(handle) + "\n"));
        };
        return all.substr(0, begin(first)) + all.substr(begin(next));
    };
    const struct {
        const char* name;
        std::uint64_t erased, next;
    } cases[] = {
        {"text", 0x105, 0x106},
        {"a reference with its attribute and their end", 0x102, 0x105},
        {"an attribute", 0x103, 0x104},
        {"a class that is only kept", 0x107, 0x108},
    };
    for (const auto& each : cases) {
        const auto drawing = read(all);
        EXPECT_EQ(erase(*drawing, each.erased), Acad::eOk);
        std::string expected = without(each.erased, each.next);
        const std::string member = "340\n" + hex(each.erased) + "\n";
        if (const std::size_t at = expected.find(member); at != expected.npos)
            expected.erase(at, member.size());
        EXPECT_EQ(drawing->toBytes(), expected) << each.name;
    }
}

TEST(Undo, stepsWithoutChangesAreNone) {
    const auto drawing = read(text.bytes());
    EXPECT_FALSE(step(*drawing, [] {}));
    EXPECT_FALSE(
        step(*drawing, [&] { move(*drawing, 0x100, shift(1e17, 0)), move(*drawing, 0xABC, shift(1, 0)); }));
    EXPECT_EQ(drawing->history().stepsDone(), 0u);
    EXPECT_EQ(drawing->history().undo(), "");
    EXPECT_TRUE(step(*drawing, [&] { move(*drawing, 0x100, shift(0, 0)); })) << "a zero move is a change";
}

TEST(Undo, aNewStepDropsWhatCouldBeRedone) {
    const auto drawing = read(text.bytes());
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
    const auto drawing = read(text.bytes());
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

void changeAtRandom(const Drawing& drawing, shapes::Random& random, std::vector<std::uint64_t>& handles) {
    const std::uint64_t handle =
        handles[static_cast<std::size_t>(random.number(0, static_cast<double>(handles.size())))];
    switch (static_cast<int>(random.number(0, 6))) {
    case 0:
        move(drawing, handle, shift(random.number(-9, 9), 0));
        break;
    case 1:
        move(drawing, handle, AcGeMatrix3d::translation(random.vector(9)));
        break;
    case 2:
        move(drawing, handle, AcGeMatrix3d::rotation(random.number(-3, 3), random.vector(1)));
        break;
    case 3:
        setColour(drawing, handle, static_cast<Adesk::UInt16>(random.number(0, 256)));
        break;
    case 4:
        erase(drawing, handle, random.oneIn(2));
        break;
    default:
        handles.push_back(append(drawing, random.number(-9, 9)));
    }
}

TEST(Undo, lawOfRandomSteps) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        shapes::Random random{seed};
        const auto drawing = read(text.bytes());
        std::vector<std::uint64_t> handles{std::begin(movable), std::end(movable)};
        std::vector<std::string> states{drawing->toBytes()};
        for (int i = 0; i < 12; ++i) {
            const bool isStep = step(*drawing, [&] {
                for (int n = static_cast<int>(random.number(0, 6)); n > 0; --n)
                    changeAtRandom(*drawing, random, handles);
            });
            if (isStep) states.push_back(drawing->toBytes());
            expectTrueBoxes(*drawing, handles, " after a step, seed " + std::to_string(seed));
            if (random.oneIn(4)) drawing->history().undo(), drawing->history().redo();
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

} // namespace
