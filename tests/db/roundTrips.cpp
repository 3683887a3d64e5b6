#include "drawings/DrawingText.h"

#include "os/TemporaryFolder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

using namespace drawings;
using namespace std::string_literals;
using qx::db::Drawing;
using qx::db::Record;
using qx::db::RecordChain;

namespace {

/// The project's own drawings, and a collection beside the project where there is one.
std::vector<std::filesystem::path> drawingFiles(const std::string& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code isMissing;
    for (const auto& each : std::filesystem::directory_iterator{folder, isMissing})
        if (each.path().extension() == ".dxf") files.push_back(each.path());
    std::ranges::sort(files);
    return files;
}

/// Moves every entity, main or owned, that lets itself be moved; how many did.
int moveAll(Drawing& drawing, const AcGeMatrix3d& matrix) {
    int moved = 0;
    for (Record* each = drawing.firstRecord(); each; each = RecordChain::next(each)) {
        if (!drawing.liveEntity(each) || each->owner == nullptr) continue;
        AcDbObjectPointer<AcDbEntity> entity{AcDbObjectId{each}, AcDb::kForWrite};
        moved += entity.openStatus() == Acad::eOk && entity->transformBy(matrix) == Acad::eOk;
    }
    return moved;
}

void expectRoundTrips(const std::string& bytes, const std::string& name) {
    const auto drawing = read(bytes);
    ASSERT_TRUE(drawing->toBytes() == bytes) << name << " changes when it is read and written";
    const int moved = moveAll(*drawing, shift(0, 0, 0));
    ASSERT_TRUE(drawing->toBytes() == bytes)
        << name << " changes when " << moved << " entities move by nothing";
    step(*drawing, [&] { EXPECT_EQ(moveAll(*drawing, shift(1, 0)), moved) << name; });
    EXPECT_EQ(drawing->toBytes() != bytes, moved > 0) << name;
    drawing->history().undo();
    ASSERT_TRUE(drawing->toBytes() == bytes) << name << " is not what it was after undoing";
    EXPECT_EQ(drawing->openCount(), 0u) << name;
}

std::vector<std::string> linesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    std::istringstream stream{bytes};
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// Moved there and back, every number is what it was but for rounding, and nothing else is different.
void expectReturns(const std::string& bytes, const std::string& name) {
    const auto drawing = read(bytes);
    moveAll(*drawing, shift(1, 0));
    moveAll(*drawing, shift(-1, 0));
    const auto before = linesOf(bytes), after = linesOf(drawing->toBytes());
    ASSERT_EQ(before.size(), after.size()) << name;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) continue;
        const double was = std::strtod(before[i].c_str(), nullptr),
                     is = std::strtod(after[i].c_str(), nullptr);
        ASSERT_NEAR(is, was, 1e-9 * std::max(1.0, std::abs(was))) << name << ':' << i + 1;
    }
}

TEST(RoundTrip, keepsTheSamples) {
    const auto files = drawingFiles(QX_SOURCE_DIR "/samples");
    ASSERT_FALSE(files.empty());
    for (const auto& file : files) expectRoundTrips(contentOf(file.string()), file.filename().string());
}

TEST(RoundTrip, keepsEveryDrawingOfTheCollection) {
    const auto files = drawingFiles(QX_SOURCE_DIR "/../shared/corpus");
    if (files.empty()) GTEST_SKIP() << "there is no collection of drawings beside the project";
    for (const auto& file : files) {
        const std::string name = file.filename().string(), bytes = contentOf(file.string());
        const auto drawing = Drawing::fromBytes(bytes, name);
        EXPECT_NE(static_cast<bool>(drawing), bytes.starts_with("AutoCAD Binary DXF")) << drawing.error();
        if (!drawing) continue;
        expectRoundTrips(bytes, name);
        expectReturns(bytes, name);
    }
}

TEST(RoundTrip, keepsOddities) {
    const std::string line = "LINE|10 1.000|20 2.0|11 3.0|21 4.0";
    const std::string plain = DrawingText{.entities = {line}}.bytes();
    const std::string windows = DrawingText{.entities = {line}, .lineEnd = "\r\n"}.bytes();
    const auto with = [](std::string bytes, const std::string& what, const std::string& by) {
        EXPECT_NE(bytes.find(what), std::string::npos) << what;
        return bytes.replace(bytes.find(what), what.size(), by);
    };
    const std::string texts[] = {
        plain,
        windows,
        with(windows, " 20\r\n2.0\r\n", " 20\n2.0\n"),
        "\xEF\xBB\xBF" + plain,
        "999\nmade by hand\n" + plain,
        with(plain, " 20\n", "999\n 10 is x\n 20\n"),
        plain.substr(0, plain.size() - 1),
        plain + "\n\nstray \0 bytes\n  0\nEOF\n"s,
        with(plain, " 20\n2.0\n", "    20   \n   2.0  \n"),
        with(plain, " 20\n2.0\n", "\t20\t\n\t2.0\t\n"),
        with(plain, "  0\nEOF", tags("0 SECTION|2 THUMBNAILIMAGE|90 3|310 AB|0 ENDSEC") + "  0\nEOF"),
        with(plain, "  5\n100\n", ""),
        DrawingText{.entities = {line + "|5 AA", line + "|5 AA"}}.bytes(),
    };
    for (const std::string& each : texts) expectRoundTrips(each, std::to_string(&each - texts));
    const std::string snippets[] = {
        "ACAD_PROXY_ENTITY|90 498|310 0102|10 nonsense|330 0",
        line + "|1001 QX|1002 {|1010 1.0|1020 2.0|1030 3.0|1002 }|1071 5",
        "LINE|102 {ACAD_REACTORS|330 D|10 9.0|102 }|10 1.0|20 2.0|11 3.0|21 4.0",
        "LINE|102   |10 1.0|20 2.0|11 3.0|21 4.0",
        line + "|1001 QX|1011 1.0|1021 2.0|1031 3.0|1021 9.0|1031 9.0|1041 4.0",
        "LINE|10 abc|20 2.0|11 3.0|21 4.0",
        "LINE|10 -nan(ind)|20 1.#QNAN|11 Infinity|21 4.0",
        "LINE|10 +1.50|20 2|11 3.E0|21 .5|62 256 ",
        "TEXT|10 1.0|20 2.0|40 2.5|1 \x95\x5CU+4E2D\x95\x5C",
        "TEXT|10 1.0|20 2.0|40 2.5|1 " + std::string(3000, 'x'),
        "TEXT|10 1.0|20 2.0|40 2.5|1 a|72 2|11 9.0|21 2.0|73 3",
        "LWPOLYLINE|90 2|70 0|10 1.0|20 0.0|10 5.0|20 0.0|42 1.0",
        "POLYLINE|66 1|10 0.0|20 0.0|30 0.0|70 1|0 VERTEX|8 0|10 1.0|20 1.0|0 VERTEX|8 0|10 2.0|0 SEQEND",
    };
    for (const std::string& each : snippets) expectRoundTrips(DrawingText{.entities = {each}}.bytes(), each);
}

TEST(Saving, keepsWhatAnotherProgramWroteMeanwhile) {
    TemporaryFolder folder;
    const std::string file = folder / "a.dxf", content = DrawingText{.entities = {"POINT|10 1"}}.bytes();
    put(file, content);
    const auto drawing = Drawing::read(file);
    ASSERT_TRUE(drawing) << drawing.error();
    const auto saved = [&](const std::string& path) {
        const qx::Outcome outcome = (*drawing)->save(path, qx::os::Backup::none);
        if (outcome && path == (*drawing)->path()) (*drawing)->markSaved();
        return outcome ? "" : outcome.error();
    };
    EXPECT_EQ(saved(file), "");
    put(file, "somebody else's");
    const std::string refusal = "another program has changed it since it was opened.";
    EXPECT_EQ(saved(file), "Can't write " + file + ": " + refusal);
    EXPECT_EQ(saved(folder / "./a.dxf"), "Can't write " + (folder / "./a.dxf") + ": " + refusal);
    EXPECT_EQ(contentOf(file), "somebody else's");
    EXPECT_EQ(saved(folder / "b.dxf"), "");
    (*drawing)->rename(folder / "b.dxf");
    EXPECT_EQ(saved(file), "") << "now it is just a file";
    std::filesystem::remove(folder / "b.dxf");
    EXPECT_EQ(saved(folder / "b.dxf"), "") << "there is nothing to be kept";
    EXPECT_EQ(contentOf(folder / "b.dxf"), content);
}

} // namespace
