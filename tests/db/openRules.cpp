#include "drawings/DrawingText.h"

#include "db/Violation.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"

#include <sstream>

using namespace drawings;
using qx::db::Drawing;
using qx::db::Violation;

namespace {

const DrawingText text{.entities = {"LINE|10 1.0|20 1.0|11 2.0|21 1.0", "LINE|8 LOCKED|10 1.0|11 2.0",
                                    "LINE|10 nonsense", "INSERT|66 1|2 B|10 0.0",
                                    "ATTRIB|8 LOCKED|10 1.0|1 a", "SEQEND"},
                       .groups = {{"G", {"100"}}}};

/// One object of a drawing, and what can be done to it, by name.
class Subject {
public:
    explicit Subject(std::uint64_t handle) : id_{idOf(*drawing, handle)} {}

    Acad::ErrorStatus run(const std::string& action) {
        const bool openErased = action.ends_with("Erased");
        if (action.starts_with("read")) return open(AcDb::kForRead, openErased);
        if (action.starts_with("write")) return open(AcDb::kForWrite, openErased);
        if (action.starts_with("notify")) return open(AcDb::kForNotify, openErased);
        Acad::ErrorStatus status = Acad::eOk;
        AcDbGroup* group = nullptr;
        AcDbEntity* entity = nullptr;
        if (action == "asGroup") return acdbOpenObject(group, id_, AcDb::kForWrite);
        if (action == "asEntity") return acdbOpenAcDbEntity(entity, id_, AcDb::kForRead);
        if (action == "256readers")
            for (int i = 0; i < 256 && status == Acad::eOk; ++i) status = open(AcDb::kForRead, false);
        if (action == "close") return object_->close();
        if (action == "upgrade") return object_->upgradeOpen();
        if (action == "downgrade") return object_->downgradeOpen();
        if (action == "erase" || action == "unerase") return object_->erase(action == "erase");
        if (action == "unlock") drawing->setLocked(false);
        if (action == "closeAll") drawing->closeAll();
        if (action == "closeDrawing") drawing.reset();
        return status;
    }

    std::unique_ptr<Drawing> drawing = read(text);

private:
    Acad::ErrorStatus open(AcDb::OpenMode mode, bool openErased) {
        static AcDbLine sentinel;
        AcDbObject* object = &sentinel;
        const Acad::ErrorStatus status = acdbOpenAcDbObject(object, id_, mode, openErased);
        EXPECT_EQ(object != nullptr, status == Acad::eOk) << "the pointer is null after a refusal";
        if (object) object_ = object;
        return status;
    }
    AcDbObjectId id_;
    AcDbObject* object_ = nullptr;
};

constexpr std::uint64_t line = 0x100, lockedLine = 0x101, brokenLine = 0x102, lockedAttribute = 0x104;

// What a word before the last one does must succeed; the last one gives the status.
TEST(OpenRules, inOneTable) {
    const struct {
        std::uint64_t handle;
        const char* actions;
        Acad::ErrorStatus status;
        std::size_t openAfterwards;
    } cases[] = {
        {line, "read write", Acad::eWasOpenForRead, 1},
        {line, "read notify", Acad::eWasOpenForRead, 1},
        {line, "256readers read", Acad::eAtMaxReaders, 256},
        {line, "256readers close read", Acad::eOk, 256},
        {line, "write read", Acad::eWasOpenForWrite, 1},
        {line, "write write", Acad::eWasOpenForWrite, 1},
        {line, "notify read", Acad::eWasOpenForNotify, 1},
        {line, "notify notify", Acad::eWasOpenForNotify, 1},
        {line, "notify upgrade", Acad::eWasOpenForNotify, 1},
        {line, "notify downgrade", Acad::eWasOpenForNotify, 1},
        {line, "notify close write", Acad::eOk, 1},
        {line, "read close write", Acad::eOk, 1},
        {line, "read read close write", Acad::eWasOpenForRead, 1},
        {line, "read close close", Acad::eNotOpenForRead, 0},

        {line, "read upgrade read", Acad::eWasOpenForWrite, 1},
        {line, "read upgrade erase", Acad::eOk, 1},
        {line, "read read upgrade", Acad::eHadMultipleReaders, 2},
        {line, "read read close upgrade", Acad::eOk, 1},
        {line, "write upgrade", Acad::eWasOpenForWrite, 1},
        {line, "read close upgrade", Acad::eNotOpenForRead, 0},
        {line, "write downgrade read", Acad::eOk, 2},
        {line, "write downgrade write", Acad::eWasOpenForRead, 1},
        {line, "write downgrade upgrade erase", Acad::eOk, 1},
        {line, "read downgrade", Acad::eWasOpenForRead, 1},
        {line, "write close downgrade", Acad::eNotOpenForWrite, 0},

        {line, "write erase erase", Acad::eWasErased, 1},
        {line, "write erase close read", Acad::eWasErased, 0},
        {line, "write erase close write", Acad::eWasErased, 0},
        {line, "write erase close notify", Acad::eWasErased, 0},
        {line, "write erase close writeErased unerase close read", Acad::eOk, 1},
        {line, "write erase close notifyErased", Acad::eOk, 1},

        {lockedLine, "write", Acad::eOnLockedLayer, 0},
        {lockedLine, "read upgrade", Acad::eOnLockedLayer, 1},
        {lockedAttribute, "write", Acad::eOnLockedLayer, 0},
        {line, "unlock write", Acad::eLockViolation, 0},
        {line, "unlock read upgrade", Acad::eLockViolation, 1},
        {lockedLine, "unlock write", Acad::eLockViolation, 0},

        {line, "asGroup", Acad::eNotThatKindOfClass, 0},
        {DrawingText::firstGroup, "asGroup", Acad::eOk, 1},
        {DrawingText::firstGroup, "asEntity", Acad::eNotThatKindOfClass, 0},
        {DrawingText::groupDictionary, "write", Acad::eOk, 1},
        {0x10, "write", Acad::eOk, 1},
        {brokenLine, "read", Acad::eNotApplicable, 0},
        {0xABC, "read", Acad::eNullObjectId, 0},
        {line, "closeDrawing read", Acad::ePermanentlyErased, 0},
        {line, "closeDrawing readErased", Acad::ePermanentlyErased, 0},
        {line, "read closeAll write", Acad::eOk, 1},
        {line, "notify closeAll read", Acad::eOk, 1},
    };
    for (const auto& each : cases) {
        Subject subject{each.handle};
        std::istringstream actions{each.actions};
        Acad::ErrorStatus status = Acad::eOk;
        for (std::string action; actions >> action;) {
            EXPECT_EQ(status, Acad::eOk) << each.actions << ", before " << action;
            status = subject.run(action);
        }
        EXPECT_EQ(status, each.status) << each.actions;
        EXPECT_EQ(subject.drawing ? subject.drawing->openCount() : 0, each.openAfterwards) << each.actions;
    }
}

TEST(OpenRules, changesWithoutTheRightAreViolationsAndChangeNothing) {
    const auto drawing = read(text);
    const std::function<void(AcDbEntity&)> changes[] = {
        [](AcDbEntity& entity) { entity.transformBy(shift(1, 0)); },
        [](AcDbEntity& entity) { entity.setColorIndex(1); },
        [](AcDbEntity& entity) { entity.setColorIndex(256); }, // as it is
        [](AcDbEntity& entity) { entity.erase(); },
        [](AcDbEntity& entity) { entity.erase(false); },
    };
    AcDbEntity* closed = nullptr;
    drawing->history().begin("step");
    for (const auto& change : changes) {
        AcDbObjectPointer<AcDbEntity> entity{idOf(*drawing, line)};
        EXPECT_THROW(change(*entity), Violation) << &change - changes << " while open for reading";
        closed = entity;
        entity.close();
        EXPECT_THROW(change(*closed), Violation) << &change - changes << " after closing";
    }
    EXPECT_FALSE(drawing->history().end());
    AcDbExtents extents;
    EXPECT_THROW(static_cast<void>(closed->getGeomExtents(extents)), Violation);
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

TEST(OpenRules, appendingNeedsTheBlockOpenForWriting) {
    const auto drawing = read(text);
    AcDbObjectPointer<AcDbBlockTableRecord> space{idOf(*drawing, DrawingText::modelSpace)};
    AcDbLine mine;
    EXPECT_THROW(space->appendAcDbEntity(&mine), Violation);
    EXPECT_EQ(space->appendAcDbEntity(nullptr), Acad::eNullEntityPointer);
    AcDbObjectPointer<AcDbEntity> resident{idOf(*drawing, line)};
    EXPECT_EQ(space->appendAcDbEntity(resident), Acad::eAlreadyInDb);
    EXPECT_EQ(mine.close(), Acad::eNotApplicable);
    EXPECT_EQ(mine.erase(), Acad::eNotApplicable);
    EXPECT_EQ(mine.transformBy(shift(1, 0)), Acad::eOk) << "a new object is its maker's";
}

TEST(OpenRules, deletingAResidentObjectIsNoted) {
    const auto drawing = read(text);
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenAcDbEntity(entity, idOf(*drawing, line), AcDb::kForWrite), Acad::eOk);
    delete entity;
    delete new AcDbLine;
    EXPECT_EQ(drawing->takeDeletions(), 1u);
    EXPECT_EQ(drawing->takeDeletions(), 0u);
    EXPECT_EQ(drawing->closeAll(), 1u);
    EXPECT_EQ(extents(*drawing, line), "1..2 1..1 0..0") << "the drawing falls back on the file";
}

} // namespace
