#include "db/DrawingText.h"

#include "db/Violation.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"

#include <map>
#include <sstream>

using namespace drawings;
using qx::db::Drawing;
using qx::db::Record;
using qx::db::Violation;

namespace {

const DrawingText text{.entities = {"LINE|10 1.0|20 1.0|11 2.0|21 1.0", "LINE|8 LOCKED|10 1.0|11 2.0",
                                    "LINE|10 nonsense", "INSERT|66 1|2 B|10 0.0",
                                    "ATTRIB|8 LOCKED|10 1.0|1 a", "SEQEND"},
                       .groups = {{"G", {"100"}}}};

std::string nameOf(Acad::ErrorStatus status) {
    static const std::map<Acad::ErrorStatus, const char*> names{
        {Acad::eOk, "eOk"},
        {Acad::eNotApplicable, "eNotApplicable"},
        {Acad::eNullObjectId, "eNullObjectId"},
        {Acad::eNotOpenForRead, "eNotOpenForRead"},
        {Acad::eNotOpenForWrite, "eNotOpenForWrite"},
        {Acad::eNotThatKindOfClass, "eNotThatKindOfClass"},
        {Acad::eWasErased, "eWasErased"},
        {Acad::ePermanentlyErased, "ePermanentlyErased"},
        {Acad::eWasOpenForRead, "eWasOpenForRead"},
        {Acad::eWasOpenForWrite, "eWasOpenForWrite"},
        {Acad::eWasOpenForNotify, "eWasOpenForNotify"},
        {Acad::eOnLockedLayer, "eOnLockedLayer"},
        {Acad::eAtMaxReaders, "eAtMaxReaders"},
        {Acad::eLockViolation, "eLockViolation"},
        {Acad::eHadMultipleReaders, "eHadMultipleReaders"},
    };
    const auto found = names.find(status);
    return found == names.end() ? std::to_string(status) : found->second;
}

/// One object of a drawing, and what can be done to it, by name.
class Subject {
public:
    explicit Subject(std::uint64_t handle) : id_{idOf(*drawing, handle)} {}

    Acad::ErrorStatus run(const std::string& action) {
        static const std::map<std::string, std::function<Acad::ErrorStatus(Subject&)>> actions{
            {"read", [](Subject& s) { return s.open(AcDb::kForRead, false); }},
            {"write", [](Subject& s) { return s.open(AcDb::kForWrite, false); }},
            {"notify", [](Subject& s) { return s.open(AcDb::kForNotify, false); }},
            {"readErased", [](Subject& s) { return s.open(AcDb::kForRead, true); }},
            {"writeErased", [](Subject& s) { return s.open(AcDb::kForWrite, true); }},
            {"notifyErased", [](Subject& s) { return s.open(AcDb::kForNotify, true); }},
            {"asGroup",
             [](Subject& s) {
                 AcDbGroup* group = nullptr;
                 return acdbOpenObject(group, s.id_, AcDb::kForWrite);
             }},
            {"asEntity",
             [](Subject& s) {
                 AcDbEntity* entity = nullptr;
                 return acdbOpenAcDbEntity(entity, s.id_, AcDb::kForRead);
             }},
            {"256readers",
             [](Subject& s) {
                 Acad::ErrorStatus status = Acad::eOk;
                 for (int i = 0; i < 256 && status == Acad::eOk; ++i) status = s.open(AcDb::kForRead, false);
                 return status;
             }},
            {"close", [](Subject& s) { return s.object_->close(); }},
            {"upgrade", [](Subject& s) { return s.object_->upgradeOpen(); }},
            {"downgrade", [](Subject& s) { return s.object_->downgradeOpen(); }},
            {"erase", [](Subject& s) { return s.object_->erase(); }},
            {"unerase", [](Subject& s) { return s.object_->erase(false); }},
            {"unlock", [](Subject& s) { return s.drawing->setLocked(false), Acad::eOk; }},
            {"closeAll", [](Subject& s) { return s.drawing->closeAll(), Acad::eOk; }},
            {"closeDrawing", [](Subject& s) { return s.drawing.reset(), Acad::eOk; }},
        };
        return actions.at(action)(*this);
    }

    std::unique_ptr<Drawing> drawing = read(text.bytes());

private:
    Acad::ErrorStatus open(AcDb::OpenMode mode, bool openErased) {
        AcDbObject* object = &sentinel();
        const Acad::ErrorStatus status = acdbOpenAcDbObject(object, id_, mode, openErased);
        EXPECT_EQ(object != nullptr, status == Acad::eOk) << "the pointer is null after a refusal";
        if (object) object_ = object;
        return status;
    }
    static AcDbObject& sentinel() {
        static AcDbLine line;
        return line;
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
        const char* status;
        std::size_t openAfterwards;
    } cases[] = {
        {line, "read", "eOk", 1},
        {line, "write", "eOk", 1},
        {line, "notify", "eOk", 1},
        {line, "read read", "eOk", 2},
        {line, "read write", "eWasOpenForRead", 1},
        {line, "read notify", "eWasOpenForRead", 1},
        {line, "256readers", "eOk", 256},
        {line, "256readers read", "eAtMaxReaders", 256},
        {line, "256readers write", "eWasOpenForRead", 256},
        {line, "256readers close read", "eOk", 256},
        {line, "write read", "eWasOpenForWrite", 1},
        {line, "write write", "eWasOpenForWrite", 1},
        {line, "write notify", "eWasOpenForWrite", 1},
        {line, "notify read", "eWasOpenForNotify", 1},
        {line, "notify write", "eWasOpenForNotify", 1},
        {line, "notify notify", "eWasOpenForNotify", 1},
        {line, "notify upgrade", "eWasOpenForNotify", 1},
        {line, "notify downgrade", "eWasOpenForNotify", 1},
        {line, "notify close write", "eOk", 1},
        {line, "read close write", "eOk", 1},
        {line, "read read close write", "eWasOpenForRead", 1},
        {line, "read close close", "eNotOpenForRead", 0},
        {line, "write close close", "eNotOpenForRead", 0},

        {line, "read upgrade", "eOk", 1},
        {line, "read upgrade read", "eWasOpenForWrite", 1},
        {line, "read upgrade erase", "eOk", 1},
        {line, "read read upgrade", "eHadMultipleReaders", 2},
        {line, "read read close upgrade", "eOk", 1},
        {line, "write upgrade", "eWasOpenForWrite", 1},
        {line, "read close upgrade", "eNotOpenForRead", 0},
        {line, "write downgrade", "eOk", 1},
        {line, "write downgrade read", "eOk", 2},
        {line, "write downgrade write", "eWasOpenForRead", 1},
        {line, "write downgrade upgrade erase", "eOk", 1},
        {line, "read downgrade", "eWasOpenForRead", 1},
        {line, "write close downgrade", "eNotOpenForWrite", 0},

        {line, "write erase erase", "eWasErased", 1},
        {line, "write erase close read", "eWasErased", 0},
        {line, "write erase close write", "eWasErased", 0},
        {line, "write erase close notify", "eWasErased", 0},
        {line, "write erase close readErased", "eOk", 1},
        {line, "write erase close writeErased unerase close read", "eOk", 1},
        {line, "write erase close notifyErased", "eOk", 1},
        {line, "writeErased", "eOk", 1},

        {lockedLine, "read", "eOk", 1},
        {lockedLine, "write", "eOnLockedLayer", 0},
        {lockedLine, "read upgrade", "eOnLockedLayer", 1},
        {lockedAttribute, "write", "eOnLockedLayer", 0},
        {line, "unlock read", "eOk", 1},
        {line, "unlock write", "eLockViolation", 0},
        {line, "unlock read upgrade", "eLockViolation", 1},
        {lockedLine, "unlock write", "eLockViolation", 0},

        {line, "asEntity", "eOk", 1},
        {line, "asGroup", "eNotThatKindOfClass", 0},
        {DrawingText::firstGroup, "asGroup", "eOk", 1},
        {DrawingText::firstGroup, "asEntity", "eNotThatKindOfClass", 0},
        {DrawingText::groupDictionary, "write", "eOk", 1},
        {DrawingText::modelSpace, "write", "eOk", 1},
        {0x10, "write", "eOk", 1},
        {brokenLine, "read", "eNotApplicable", 0},
        {brokenLine, "write", "eNotApplicable", 0},
        {0xABC, "read", "eNullObjectId", 0},
        {0xABC, "write", "eNullObjectId", 0},
        {line, "closeDrawing read", "ePermanentlyErased", 0},
        {line, "closeDrawing write", "ePermanentlyErased", 0},
        {line, "closeDrawing readErased", "ePermanentlyErased", 0},
        {line, "read closeAll write", "eOk", 1},
        {line, "256readers closeAll write", "eOk", 1},
        {line, "notify closeAll read", "eOk", 1},
    };
    for (const auto& each : cases) {
        Subject subject{each.handle};
        std::istringstream actions{each.actions};
        Acad::ErrorStatus status = Acad::eOk;
        for (std::string action; actions >> action;) {
            EXPECT_EQ(nameOf(status), "eOk") << each.actions << " before " << action;
            status = subject.run(action);
        }
        EXPECT_EQ(nameOf(status), each.status) << each.actions;
        EXPECT_EQ(subject.drawing ? subject.drawing->openCount() : 0, each.openAfterwards) << each.actions;
    }
}

TEST(OpenRules, countWhatIsLeftOpen) {
    const auto drawing = read(text.bytes());
    AcDbObject* object = nullptr;
    for (const std::uint64_t handle : {line, lockedLine, line})
        EXPECT_EQ(acdbOpenAcDbObject(object, idOf(*drawing, handle), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(object, idOf(*drawing, DrawingText::modelSpace), AcDb::kForWrite),
              Acad::eOk);
    EXPECT_EQ(drawing->closeAll(), 4u);
    EXPECT_EQ(drawing->closeAll(), 0u);
}

TEST(OpenRules, changesWithoutTheRightAreViolationsAndChangeNothing) {
    const auto drawing = read(text.bytes());
    const struct {
        const char* name;
        std::function<void(AcDbEntity&)> change;
    } changes[] = {
        {"transformBy", [](AcDbEntity& entity) { entity.transformBy(shift(1, 0)); }},
        {"setColorIndex", [](AcDbEntity& entity) { entity.setColorIndex(1); }},
        {"erase", [](AcDbEntity& entity) { entity.erase(); }},
        {"unerase", [](AcDbEntity& entity) { entity.erase(false); }},
        {"setColorIndex of a kept value", [](AcDbEntity& entity) { entity.setColorIndex(256); }},
    };
    AcDbEntity* closed = nullptr;
    for (const auto& each : changes) {
        const bool isChanged = step(*drawing, [&] {
            AcDbObjectPointer<AcDbEntity> entity{idOf(*drawing, line)};
            EXPECT_THROW(each.change(*entity), Violation) << each.name << " while open for reading";
            closed = entity;
            entity.close();
            EXPECT_THROW(each.change(*closed), Violation) << each.name << " after closing";
        });
        EXPECT_FALSE(isChanged) << each.name;
    }
    AcDbExtents extents;
    EXPECT_THROW(static_cast<void>(closed->getGeomExtents(extents)), Violation);
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

TEST(OpenRules, appendingNeedsTheBlockOpenForWriting) {
    const auto drawing = read(text.bytes());
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
    const auto drawing = read(text.bytes());
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenAcDbEntity(entity, idOf(*drawing, line), AcDb::kForWrite), Acad::eOk);
    delete entity;
    delete new AcDbLine;
    EXPECT_EQ(drawing->takeDeletions(), 1u);
    EXPECT_EQ(drawing->takeDeletions(), 0u);
    EXPECT_EQ(drawing->closeAll(), 1u);
    EXPECT_EQ(extents(*drawing, line), "1..2 1..1 0..0") << "the drawing falls back on the file";
}

TEST(OpenRules, faultsCanBeInjectedIntoEachAction) {
    const auto drawing = read(text.bytes());
    int asked = 0;
    for (int failing = 0; failing < 3; ++failing) {
        asked = 0;
        drawing->setFault([&](Drawing::Action, const Record*) {
            return asked++ == failing ? Acad::eLockViolation : Acad::eOk;
        });
        AcDbObjectPointer<AcDbEntity> reading{idOf(*drawing, line)};
        EXPECT_EQ(reading.openStatus() == Acad::eLockViolation, failing == 0);
        if (failing == 0) continue;
        EXPECT_EQ(reading->upgradeOpen() == Acad::eLockViolation, failing == 1);
        if (failing == 1) continue;
        EXPECT_EQ(reading->transformBy(shift(1, 0)), Acad::eLockViolation);
    }
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(drawing->openCount(), 0u);
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

} // namespace
