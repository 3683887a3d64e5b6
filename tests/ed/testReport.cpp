#include "aced.h"
#include "acutads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"
#include "ed/Report.h"
#include "ed/json.h"

#include <gtest/gtest.h>

#include <limits>
#include <regex>

namespace {
using namespace qx;
using tests::Editor;

const std::string scene = drawings::DrawingText{.entities = {"LINE|5 A1|10 0|20 0|11 10|21 5",
                                                             "LINE|5 A2|8 LOCKED|10 0|20 100|11 100|21 100",
                                                             "LINE|5 A3|10 0|20 0|11 0.1|21 0"},
                                                .hasGroupDictionary = false}
                              .bytes();

void moveSelected(double dx) {
    ads_name set{}, name{};
    acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
    AcDbObjectId id;
    for (int i = 0; acedSSName(set, i, name) == RTNORM; ++i) {
        acdbGetObjectId(id, name);
        if (id.handle().value() == 0xA3) continue;
        const AcDbObjectPointer<AcDbEntity> entity{id, AcDb::kForWrite};
        if (entity.openStatus() == Acad::eOk) entity->transformBy(AcGeMatrix3d::translation({dx, 0, 0}));
    }
    acutPrintf(L"\n移动了 %g\n", dx);
}

class Report : public testing::Test {
protected:
    Report() { editor.session.observer = &report; }
    /// The report without blanks.
    std::string dense(const db::Drawing* drawing) {
        std::string text = report.toJson(drawing);
        std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
        return text;
    }
    void expect(const std::string& part) {
        const std::string text = dense(&editor.drawing());
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }
    Editor editor{scene};
    ed::Report report;
};

TEST_F(Report, tellsWhatACommandDid) {
    editor.define([] { moveSelected(2.5); });
    const auto run = editor.run("BODY\nALL\n\n");
    expect(R"({"handle":"A1","class":"AcDbLine","change":"modified",)"
           R"("before":{"min":[0,0,0],"max":[10,5,0]},"after":{"min":[2.5,0,0],"max":[12.5,5,0]}})");
    expect(R"("unchanged":[{"handle":"A2","class":"AcDbLine","reason":"eOnLockedLayer"})");
    expect(R"({"handle":"A3","class":"AcDbLine","reason":"nothandled"})");
    expect(R"("messages":["移动了2.5"])");
    // Looking back and forth for it has left the drawing as the command made it.
    EXPECT_EQ(editor.drawing().toBytes(), run.bytes);
    EXPECT_NE(run.bytes, scene);
    EXPECT_EQ(editor.run("U\n").bytes, scene);
}

TEST_F(Report, knowsNewAndErasedObjects) {
    editor.define([&] {
        AcDbObjectPointer<AcDbBlockTableRecord> space{AcDbObjectId{editor.drawing().modelSpace()},
                                                      AcDb::kForWrite};
        for (auto* line : {new AcDbLine{{1, 2, 0}, {3, 4, 0}}, new AcDbLine{{5, 6, 0}, {7, 8, 0}}}) {
            ASSERT_EQ(space->appendAcDbEntity(line), Acad::eOk);
            if (line->startPoint().x == 5) line->erase(); // drawn only to measure against
            line->close();
        }
    });
    editor.run("BODY\nERASE\n(handent \"A1\")\n\n");
    expect(R"("change":"created","before":null,"after":{"min":[1,2,0],"max":[3,4,0]}}],)");
    expect(R"("change":"erased","before":{"min":[0,0,0],"max":[10,5,0]},"after":null})");
}

TEST_F(Report, knowsNewGroupsWithoutTheirDictionary) {
    editor.run("GROUP\nDesk\n(handent \"A1\")\n\n");
    expect(
        R"("changed":[{"handle":"1001","class":"AcDbGroup","change":"created","before":null,"after":null}],)");
}

// What each of the commands changed, one after the other: "handle change, x from -> to".
std::string changesOf(const std::string& json) {
    static const std::regex entry{R"re("handle":"(\w+)","class":"\w+","change":"(\w+)",)re"
                                  R"re("before":(null|.{8}([^,]*)[^}]*}),"after":(null|.{8}([^,]*)))re"};
    std::string text;
    for (std::sregex_iterator at{json.begin(), json.end(), entry}, end; at != end; ++at) {
        const auto x = [&](std::size_t group) {
            return (*at)[group + 1].matched ? (*at)[group + 1].str() : "none";
        };
        text +=
            (text.empty() ? "" : "; ") + (*at)[1].str() + ' ' + (*at)[2].str() + ' ' + x(3) + " -> " + x(5);
    }
    return text;
}

TEST_F(Report, tellsWhatIsTakenBackAndDoneAgain) {
    editor.define([] { moveSelected(2); });
    const std::string pick = "(handent \"A1\")\n\n";
    const std::pair<std::string, const char*> cases[] = {
        {"BODY\n" + pick + "U\n", "A1 modified 0 -> 2; A1 modified 2 -> 0"},
        {"REDO\n", "A1 modified 0 -> 2"},
        {"ERASE\n" + pick + "UNDO 2\n", "A1 erased 2 -> none; A1 restored none -> 0"},
        {"U\n", ""},
        {"REDO\nREDO\n", "A1 modified 0 -> 2; A1 erased 2 -> none"},
        {"UNDO 9\n", "A1 restored none -> 0"},
    };
    for (const auto& [script, changes] : cases) {
        report = ed::Report{};
        const std::string bytes = editor.run(script).bytes;
        EXPECT_EQ(changesOf(dense(nullptr)), changes) << script;
        EXPECT_EQ(editor.drawing().toBytes(), bytes) << script;
    }
    EXPECT_EQ(editor.drawing().toBytes(), scene);
}

TEST_F(Report, saysThatACommandWasTakenBack) {
    editor.runBody(
        [] {
            moveSelected(1);
            throw 1;
        },
        "ALL\n\n");
    expect(R"("rolledBack":true,"changed":[],)");
}

TEST(Json, writesAnyText) {
    EXPECT_EQ(ed::json::quoted("a\"b\\c\n\t\x01 中"), "\"a\\\"b\\\\c\\n\\u0009\\u0001 中\"");
    EXPECT_EQ(ed::json::number(0.1), "0.1");
    EXPECT_EQ(ed::json::number(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(ed::json::list({}), "[]");
    EXPECT_EQ(ed::json::list({"1", "2"}), "[1, 2]");
}
} // namespace
