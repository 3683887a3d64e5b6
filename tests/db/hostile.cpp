// Drawings that are made to hang or to exhaust the host: each is looked at from all sides within seconds.
#include "draw/Svg.h"
#include "drawings/DrawingText.h"
#include "ed/picking.h"

#include <chrono>

using namespace drawings;
using qx::db::Drawing;
using qx::db::Record;

namespace {

constexpr int many = 20000;
const std::string unitLine = "LINE|10 1.0|20 2.0|11 3.0|21 2.0";

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

std::vector<BlockText> chain(int length, int copies) {
    std::vector<BlockText> blocks;
    for (int i = 0; i < length; ++i)
        blocks.push_back({std::to_string(i), std::vector<std::string>(static_cast<std::size_t>(copies),
                                                                      "INSERT|2 " + std::to_string(i + 1))});
    blocks.push_back({std::to_string(length), {unitLine}});
    return blocks;
}

std::vector<BlockText> allInAll(int count) {
    std::vector<BlockText> blocks;
    for (int i = 0; i < count; ++i) {
        blocks.push_back({std::to_string(i), {unitLine}});
        for (int other = 0; other < count; ++other)
            blocks.back().entities.push_back("INSERT|2 " + std::to_string(other));
    }
    return blocks;
}

std::vector<std::string> references(const char* form, int count) {
    std::vector<std::string> list;
    for (int i = 0; i < count; ++i) {
        char text[80];
        std::snprintf(text, sizeof text, form, i);
        list.push_back(text);
    }
    return list;
}

/// Points whose handles, from 2^40 on, are so far apart.
std::vector<std::string> spacedHandles(int count, std::uint64_t step) {
    std::vector<std::string> list;
    for (std::uint64_t handle = std::uint64_t{1} << 40; count > 0; --count, handle += step)
        list.push_back("POINT|5 " + hex(handle) + "|10 1.0");
    return list;
}

std::vector<BlockText> named(const char* form, int count) {
    std::vector<BlockText> blocks;
    for (const std::string& name : references(form, count)) blocks.push_back({name, {}});
    return blocks;
}

std::vector<GroupText> groupsOf(int count, std::vector<std::string> members) {
    return std::vector<GroupText>(static_cast<std::size_t>(count), GroupText{"G", std::move(members)});
}

std::string withoutBlockEnds(std::string bytes) {
    const std::string end = tags("0 ENDBLK|8 0");
    for (std::size_t at = 0; (at = bytes.find(end, at)) != std::string::npos;) bytes.erase(at, end.size());
    return bytes;
}

std::string lengthened(const DrawingText& text, const std::string& value) {
    std::string bytes = text.bytes();
    return bytes.replace(bytes.find("LONG"), 4, value);
}

/// A polyface mesh of points, and of faces between corners that aren't there.
std::vector<std::string> meshWithoutCorners(int count) {
    std::vector<std::string> list{"POLYLINE|66 1|10 0.0|70 64"};
    const auto add = [&](const std::string& part) {
        list.insert(list.end(), static_cast<std::size_t>(count), part);
    };
    add("VERTEX|10 1.0|20 2.0|70 192");
    add("VERTEX|10 0.0|70 128|71 2147483647|72 -2147483647|73 99999999|74 -" + std::to_string(2 * count));
    list.push_back("SEQEND");
    return list;
}

/// As steep as splines get, and long.
std::string steepSpline(int count) {
    std::string text = "SPLINE|70 8|71 25";
    for (int i = 0; i < count + 26; ++i) text += "|40 " + std::to_string(i);
    for (int i = 0; i < count; ++i) text += "|10 " + std::to_string(i) + "|20 " + std::to_string(i % 5);
    return text;
}

/// The values in the place of A and B, each with each.
std::vector<std::string> extremes(const std::vector<std::string>& forms) {
    const char* const values[] = {"nan", "inf", "1e308", "-1e308", "1e-308", "1e999", "-1", "0", "1e15"};
    std::vector<std::string> list;
    for (const std::string& form : forms)
        for (const char* a : values)
            for (const char* b : values) {
                std::string text;
                for (const char c : form) text += c == '<' ? a : c == '>' ? b : std::string(1, c);
                list.push_back(text);
            }
    return list;
}

void lookAt(Drawing& drawing) {
    EXPECT_EQ(drawing.find(0xFFFFFFFFFFFF), nullptr);
    for (Record* each = drawing.firstRecord(); each; each = qx::db::RecordChain::next(each))
        static_cast<void>(drawing.live(each));
    drawing.forEachInModelSpace([](Record* each) {
        AcDbObjectPointer<AcDbEntity> entity{AcDbObjectId{each}};
        AcDbExtents box;
        if (entity.openStatus() == Acad::eOk) static_cast<void>(entity->getGeomExtents(box));
    });
    static_cast<void>(qx::ed::pickedAt(drawing, {1, 2, 0}, 0.1));
    EXPECT_LT(qx::draw::svgOf(drawing).size(), std::size_t{2} << 30);
    const AcGePoint3d corner{-1e6, -1e6, 0}, opposite{1e6, 1e6, 0};
    static_cast<void>(qx::ed::foundIn(drawing, corner, opposite, qx::ed::Rectangle::crossing));
}

/// Lets nothing take long, and keeps every byte.
void expectSeconds(const char* name, const std::string& bytes) {
    SCOPED_TRACE(name);
    const auto begin = std::chrono::steady_clock::now();
    const auto drawing = Drawing::fromBytes(bytes, "hostile.dxf");
    ASSERT_TRUE(drawing) << drawing.error();
    lookAt(**drawing);
    EXPECT_TRUE((*drawing)->toBytes() == bytes);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
}

TEST(HostileDrawings, areLookedAtWithinSeconds) {
    const std::string mtext = "MTEXT|10 1.0|40 1.0|41 10.0|1 LONG", text = "TEXT|10 1.0|40 1.0|1 LONG";
    const std::pair<const char*, DrawingText> cases[] = {
        {"a chain of blocks", {.entities = {"INSERT|2 0"}, .blocks = chain(many, 1)}},
        {"a million by doubling", {.entities = {"INSERT|2 0"}, .blocks = chain(20, 2)}},
        {"many times what is just within bounds",
         {.entities = references("INSERT|2 0|10 %d", 1000), .blocks = chain(18, 2)}},
        {"a block that is full of itself",
         {.entities = {"INSERT|2 B"}, .blocks = {{"B", references("INSERT|2 B|10 %d", 2000)}}}},
        {"each block in each", {.entities = references("INSERT|2 0|10 %d", 20), .blocks = allInAll(40)}},
        {"model space inside a block",
         {.entities = {"INSERT|2 B", unitLine}, .blocks = {{"B", {"INSERT|2 *Model_Space"}}}}},
        {"many sheets",
         {.entities = references("INSERT|2 *Paper_Space%d", many), .blocks = named("*Paper_Space%d", many)}},
        {"owners all over",
         {.entities = references("POINT|330 %X|10 1.0", many), .blocks = named("B%d", many)}},
        {"nothing but unusable objects", {.entities = references("LINE|10 x%d", 10 * many)}},
        {"groups of the same members",
         {.entities = references("POINT|10 %d", 1000), .groups = groupsOf(1000, references("%X", 1000))}},
        {"a group of itself and of its dictionary",
         {.entities = {unitLine}, .groups = {{"G", {"E0", "D", "C", "100"}}}}},
        {"handles that might stand in one place of a table", {.entities = spacedHandles(10 * many, 351061)}},
        {"handles that might stand in one place of the index",
         {.entities = spacedHandles(10 * many, 0xF1DE83E19937733Du << 44)}},
        {"a mesh without corners", {.entities = meshWithoutCorners(5 * many)}},
        {"a steep spline", {.entities = {steepSpline(5 * many)}}},
        {"layers of one name", {.layers = std::vector<std::string>(many, "SAME|70 0|62 1")}},
        {"attributes",
         {.entities =
              [] {
                  auto list = references("ATTRIB|10 %d.0|40 1.0|1 H|2 T|70 0", many);
                  list.insert(list.begin(), "INSERT|66 1|2 B");
                  return list;
              }()}},
        {"vertices of nothing", {.entities = references("VERTEX|10 %d", many)}},
        {"a polyline without an end", {.entities = {"POLYLINE|66 1|10 0", "VERTEX|10 1|20 2"}}},
        {"numbers at their ends",
         {.entities = {"LINE|10 1e308|11 -1e308", "LINE|10 nan|11 inf", "CIRCLE|10 1e15|40 1e308",
                       "ARC|10 1e300|40 1e300|50 1e308|51 -1e308",
                       "ELLIPSE|10 0.0|11 1e308|40 1e-308|41 0.0|42 1e308",
                       "TEXT|10 1e308|40 1e308|1 abc|72 4|11 -1e308|41 1e-308|51 89.9999999",
                       "MTEXT|10 1e308|40 1e-308|41 1e-308|1 abc abc",
                       "LWPOLYLINE|10 1e308|20 1e308|42 1e308|10 -1e308|20 3|42 -1e-308",
                       "INSERT|2 B|10 1e308|41 1e308|50 1e308"},
          .blocks = {{"B", {unitLine}}}}},
        {"counts that lie",
         {.entities = {"LWPOLYLINE|90 2147483648|10 1|20 2|10 3|20 4", "LWPOLYLINE|90 -1|10 1|20 2"}}},
        {"numbers at their ends, each with each",
         {.entities = extremes(
              {"LINE|10 <|11 >",
               "CIRCLE|10 <|40 >",
               "ARC|10 <|40 >|50 >|51 <",
               "ELLIPSE|11 <|40 >|41 0.0|42 <",
               "TEXT|10 <|40 >|1 abc|72 4|11 >|41 <|51 89.9999999",
               "MTEXT|10 <|40 >|41 >|1 abc abc",
               "LWPOLYLINE|10 <|20 >|42 <|10 >|20 3|42 >",
               "SPLINE|71 3|40 0|40 0|40 0|40 0|40 1|40 1|40 1|40 1|10 <|20 >|10 1|20 <|10 >|20 1|10 3|20 "
               "<",
               "SPLINE|71 3|40 <|40 <|40 0|40 0|40 1|40 1|40 >|40 >|41 <|41 >|41 1|41 <|10 0|10 1|10 2|10 "
               "3",
               "SPLINE|71 3|11 <|21 >|11 1|21 <|11 >|21 2|12 <|22 0|13 >|23 1",
               "HATCH|210 0|220 <|230 >|91 1|92 1|93 3|72 2|10 <|20 >|40 >|50 <|51 >|73 1|72 3|10 <|20 "
               "0|11 >"
               "|21 <|40 >|50 <|51 >|73 0|72 1|10 0|20 0|11 <|21 >|97 0|75 0|76 1",
               "HATCH|91 1|92 7|72 1|73 1|93 3|10 <|20 0|42 >|10 1|20 >|42 <|10 0|20 1|97 0|75 0|76 1",
               "LEADER|71 1|72 0|76 3|10 <|20 >|10 1|20 <|30 >|10 >|20 1|210 <|230 >|211 <|213 >",
               "LEADER|71 1|72 1|76 3|10 <|20 >|10 1|20 <|10 >|20 2",
               "SOLID|10 <|20 >|11 >|21 <|12 0|13 1|39 >",
               "SOLID|10 0|20 1|11 1|12 3|13 5|210 <|220 >|230 <",
               "3DFACE|10 <|20 >|30 <|11 >|21 <|12 1|13 2",
               "RAY|10 <|20 0|11 >|21 <|31 0",
               "XLINE|10 >|20 <|11 <|21 >|31 1",
               "INSERT|2 B|10 <|41 >|42 <|50 >|70 9|71 9|44 <|45 >",
               "INSERT|2 B|10 0|70 <|71 >|44 1|45 1",
               "DIMENSION|2 *D1|10 <|20 >|11 >|21 <|13 <|23 >|50 <|53 >|210 <|220 >",
               "POLYLINE|66 1|70 16|71 <|72 >|30 <|210 >",
               "VERTEX|10 <|20 >|30 1|70 64",
               "VERTEX|10 1|70 64"}),
          .blocks = {{"B", {unitLine}}, {"*D1", {unitLine}}}}},
    };
    for (const auto& [name, content] : cases) expectSeconds(name, content.bytes());
    const std::pair<const char*, std::string> oddBytes[] = {
        {"blocks without ends", withoutBlockEnds(DrawingText{.entities = references("INSERT|2 B%d", many),
                                                             .blocks = named("B%d", many)}
                                                     .bytes())},
        {"a long text", lengthened({.entities = {text}}, std::string(std::size_t{1} << 20, 'x'))},
        {"a long line without a break",
         lengthened({.entities = {mtext}}, std::string(std::size_t{1} << 20, 'x'))},
        {"braces in braces", lengthened({.entities = {mtext}}, repeated("{\\H2x;a", 100000))},
        {"fractions without end", lengthened({.entities = {mtext}}, repeated("\\Sa^", 100000))},
        {"a long name", lengthened({.entities = {"INSERT|2 B", "LINE|8 LONG|10 0|11 1"}},
                                   std::string(std::size_t{10} << 20, 'N'))},
    };
    for (const auto& [name, bytes] : oddBytes) expectSeconds(name, bytes);
}

TEST(HostileDrawings, aTextBeyondAllMeasureIsShownByItsBeginning) {
    constexpr std::size_t shown = std::size_t{1} << 20;
    for (const char* form : {"MTEXT|10 1.0|40 1.0|1 LONG", "TEXT|10 1.0|40 1.0|1 LONG"}) {
        SCOPED_TRACE(form);
        const DrawingText text{.entities = {form}};
        const auto whole = read(lengthened(text, std::string(shown, 'x')));
        const auto cut = read(lengthened(text, std::string(8 * shown, 'x')));
        EXPECT_EQ(extents(*cut, 0x100), extents(*whole, 0x100));
        EXPECT_TRUE(whole->findings().empty());
        ASSERT_EQ(cut->findings().size(), 1u);
        EXPECT_EQ(cut->findings()[0].sentence, "the text is longer than 1 MiB; only its beginning is shown");
    }
}

// Every point that is typed asks for the frame.
TEST(HostileDrawings, aLongHeaderIsReadOnce) {
    const DrawingText text{.entities = {unitLine}, .header = "|9 $LONG|1 LONG" + repeated("|40 1.0", 200000)};
    const auto drawing = read(text);
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 20000; ++i) EXPECT_EQ(drawing->ucs().xAxis.x, 1);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{5});
}

// Each finding tells its line, and a line is found by counting.
TEST(HostileDrawings, manyFindingsInALargeFileAreQuick) {
    DrawingText text{.entities = {"TEXT|10 1.0|40 1.0|1 LONG"}};
    const auto wrong = references("LINE|10 x%d", 1000);
    text.entities.insert(text.entities.end(), wrong.begin(), wrong.end());
    const auto drawing = read(lengthened(text, std::string(std::size_t{64} << 20, 'x')));
    const auto begin = std::chrono::steady_clock::now();
    drawing->forEachInModelSpace([&](Record* each) { static_cast<void>(drawing->live(each)); });
    EXPECT_EQ(drawing->findings().size(), 1000u);
    EXPECT_EQ(drawing->findings().back().line - drawing->findings()[1].line, 998u * 10);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{2});
}

} // namespace
