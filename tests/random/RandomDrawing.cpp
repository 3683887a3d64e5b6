#include "random/RandomDrawing.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>

namespace qx::tests {
using namespace drawings;
namespace {

constexpr const char* layers[] = {"0", "0", "0", "0", "0", "0", "LOCKED", "FROZEN", "OFF", "Blue"};

// What is written for one object, and for each of its vertices or attributes, beside the common groups. Parts
// are divided by bars, and one that begins with
//   P is a point, F one without height, V a direction, L a length, A an angle in degrees, S a small number,
//     each followed by its group code
//   ? is often left out
//   [a;b] is one of these
//   # and a code is the number of repetitions of what stands in braces: {P10}
//   W is a line at an angle that may be decisive, E and U a direction with a length, B a bulge, I the name of
//   a block, T and M text, X an extrusion, D data of an application, all without a code or with one
// and any other is a group as it stands.
//
// The first ones are what one mostly aligns to.
constexpr std::size_t curves = 14;
constexpr ObjectClass classes[] = {
    {"LINE|100 AcDbLine|?S39|P10|P11|X|D"},
    {"LINE|100 AcDbLine|P10|P11"},
    {"LINE|100 AcDbLine|W"},
    {"LINE|100 AcDbLine|W"},
    {"CIRCLE|100 AcDbCircle|?S39|P10|L40|X|D"},
    {"CIRCLE|100 AcDbCircle|P10|L40"},
    {"ARC|100 AcDbCircle|?S39|P10|L40|X|100 AcDbArc|A50|A51|D"},
    {"ARC|100 AcDbCircle|P10|L40|100 AcDbArc|A50|A51"},
    {"ELLIPSE|100 AcDbEllipse|P10|E11|[40 1;40 0.5;40 0.01]|[41 0|42 6.283185307179586;41 1|42 2.5;41 5|42 "
     "7]|D"},
    {"POINT|100 AcDbPoint|P10|?S39|X|?A50|D"},
    {"LWPOLYLINE|100 AcDbPolyline|#90|[70 0;70 1;70 129]|?S43|?S38|?S39|X|{F10|?S40|?S41|?B42}|D"},
    {"LWPOLYLINE|100 AcDbPolyline|#90|[70 0;70 1]|{F10}"},
    {"POLYLINE|100 AcDb2dPolyline|66 1|10 0|20 0|[30 0;30 0;30 25]|[70 0;70 1;70 128]|X|?S40|D",
     "VERTEX|100 AcDbVertex|100 AcDb2dVertex|F10|30 0|?B42|?S40|D"},
    {"POLYLINE|100 AcDb2dPolyline|66 1|10 0|20 0|30 0|[70 4|75 6;70 5|75 5;70 2]|X",
     "VERTEX|100 AcDbVertex|100 AcDb2dVertex|F10|30 0|[70 16;70 8;70 1;70 0]|?B42"},
    {"POLYLINE|100 AcDb3dPolyline|66 1|10 0|20 0|30 0|[70 8;70 9]|D",
     "VERTEX|100 AcDbVertex|100 AcDb3dPolylineVertex|P10|70 32|D"},
    {"POLYLINE|100 AcDb3dPolyline|66 1|10 0|20 0|30 0|70 12|75 6",
     "VERTEX|100 AcDbVertex|100 AcDb3dPolylineVertex|P10|[70 48;70 40]"},
    {"POLYLINE|100 AcDbPolygonMesh|66 1|10 0|20 0|30 0|[70 16;70 17;70 48]|71 2|72 3",
     "VERTEX|100 AcDbVertex|100 AcDbPolygonMeshVertex|P10|70 64"},
    {"POLYLINE|100 AcDbPolyFaceMesh|66 1|10 0|20 0|30 0|70 64|71 4|72 1",
     "VERTEX|100 AcDbVertex|100 AcDbPolyFaceMeshVertex|P10|70 192",
     "VERTEX|100 AcDbFaceRecord|10 0|20 0|30 0|70 128|71 1|72 -2|73 3|[74 1;74 2;74 4;74 9]"},
    {"TEXT|100 AcDbText|?S39|P10|L40|T1|?A50|?41 0.7|?[51 15;51 -30;51 80]|?7 Other|?[71 2;71 4;71 6]|"
     "[;72 1;72 2;72 3;72 4;72 5]|?P11|X|100 AcDbText|[;73 1;73 2;73 3]|D"},
    {"TEXT|100 AcDbText|P10|L40|T1|A50"},
    {"MTEXT|100 AcDbMText|P10|L40|[41 0;41 60;41 200]|[71 1;71 2;71 5;71 7;71 9]|72 1|M1|?V11|X|?A50|?44 "
     "1.5|D"},
    {"INSERT|100 AcDbBlockReference|I|P10|A50|D"},
    {"INSERT|100 AcDbBlockReference|I|P10|?S41|?S42|?S43|A50|X|D"},
    {"INSERT|100 AcDbBlockReference|66 1|I|P10|?S41|?S42|?S43|A50|X",
     "ATTRIB|100 AcDbText|P10|L40|T1|?A50|[;72 1|P11;72 4|P11]|X|100 AcDbAttribute|2 TAG|[70 0;70 0;70 "
     "1]|?74 2|D"},
    {"INSERT|100 AcDbMInsertBlock|I|P10|A50|70 3|71 2|44 30|45 20|X"},
    {"SPLINE|100 AcDbSpline|[70 8;70 12]|71 3|72 9|73 5|74 0|40 0|40 0|40 0|40 0|40 1|40 2|40 2|40 2|40 "
     "2|P10|P10|"
     "P10|P10|P10|D"},
    {"SPLINE|100 AcDbSpline|70 4|71 2|72 6|73 3|74 0|40 0|40 0|40 0|40 1|40 1|40 1|P10|P10|P10|41 1|41 "
     "0.7|41 1"},
    {"SPLINE|100 AcDbSpline|70 8|71 3|72 0|73 0|74 4|P11|P11|P11|P11|?V12|?V13"},
    {"SOLID|100 AcDbTrace|P10|P11|P12|P13|?S39|X|D"},
    {"TRACE|100 AcDbTrace|P10|P11|P12|P13|X"},
    {"3DFACE|100 AcDbFace|P10|P11|P12|P13|?70 5|D"},
    {"HATCH|100 AcDbHatch|10 0|20 0|[30 0;30 40]|X|2 SOLID|70 1|71 0|91 1|92 3|72 1|73 1|#93|{F10|B42}|97 "
     "0|75 0|"
     "76 1|98 1|F10|D"},
    {"HATCH|100 AcDbHatch|10 0|20 0|30 0|X|2 ANSI31|70 0|71 0|91 2|92 1|93 2|72 1|F10|F11|72 "
     "2|F10|L40|A50|A51|73 1|"
     "97 0|92 16|93 2|72 3|F10|U11|40 0.5|A50|A51|73 0|72 4|94 2|73 0|74 0|95 6|96 3|40 0|40 0|40 0|40 1|40 "
     "1|40 1|"
     "F10|F10|F10|97 0|75 1|76 1|A52|41 1|77 0|78 1|A53|F43|45 -2|46 2|79 0|98 0"},
    {"LEADER|100 AcDbLeader|3 STANDARD|71 1|[72 0;72 1]|73 3|74 1|75 0|L40|41 1|#76|{P10}|340 "
     "0|X|?V211|?V212|V213|D"},
    {"DIMENSION|100 AcDbDimension|2 *D1|P10|P11|[70 0;70 32;70 33]|1 <>|71 5|X|3 STANDARD|100 "
     "AcDbAlignedDimension|P13|"
     "P14|A50|100 AcDbRotatedDimension|D"},
    {"DIMENSION|100 AcDbDimension|2 *D1|P10|P11|70 36|71 5|100 AcDbRadialDimension|P15|L40"},
    {"ATTDEF|100 AcDbText|P10|L40|1 default|?A50|[;72 1|P11;72 2|P11]|X|100 AcDbAttributeDefinition|3 ?|2 "
     "TAG|[70 0;70 1]"},
    {"RAY|100 AcDbRay|P10|V11|D"},
    {"XLINE|100 AcDbXline|P10|V11"},
    {"VIEWPORT|100 AcDbViewport|P10|L40|L41|68 1|69 1|12 0|22 0"},
    {"QXUNKNOWN|100 AcDbQx|P10|P11|L40|T1|D"},
};

class Pattern {
public:
    Pattern(Chance& chance, std::string_view text, Look look)
        : chance_{chance}, text_{text}, isPlain_{look == Look::plain} {}

    std::string written() {
        std::string all;
        takeAll(text_, all);
        return all;
    }

private:
    /// Bars inside of braces and brackets divide nothing.
    static std::string_view cutAtBar(std::string_view& rest, char bar) {
        int depth = 0;
        std::size_t at = 0;
        for (; at < rest.size(); ++at) {
            if (rest[at] == '{' || rest[at] == '[') ++depth;
            if (rest[at] == '}' || rest[at] == ']') --depth;
            if (rest[at] == bar && depth == 0) break;
        }
        const std::string_view part = rest.substr(0, at);
        rest.remove_prefix(std::min(at + 1, rest.size()));
        return part;
    }

    void takeAll(std::string_view parts, std::string& all) {
        while (!parts.empty()) take(cutAtBar(parts, '|'), all);
    }

    void take(std::string_view part, std::string& all) {
        const std::string_view rest = part.substr(std::min<std::size_t>(1, part.size()));
        int code = 0;
        std::from_chars(rest.data(), rest.data() + rest.size(), code);
        switch (part.empty() ? ' ' : part[0]) {
        case '?':
            if (chance_.oneIn(4)) take(rest, all);
            break;
        case '[':
            takeAll(oneOf(rest.substr(0, rest.size() - 1)), all);
            break;
        case '{':
            for (std::size_t i = 0; i < repetitions_; ++i) takeAll(rest.substr(0, rest.size() - 1), all);
            break;
        case '#':
            repetitions_ = chance_.oneIn(20) ? chance_.below(2) : 2 + chance_.below(6);
            all += "|" + std::to_string(code) + " " + std::to_string(repetitions_);
            break;
        default:
            all += isLiteral(part) ? "|" + std::string{part} : value(part[0], code);
        }
    }
    static bool isLiteral(std::string_view part) { return part.empty() || part[0] < 'A' || part.size() > 4; }

    std::string_view oneOf(std::string_view alternatives) {
        std::vector<std::string_view> all;
        for (std::size_t count = 1 + std::ranges::count(alternatives, ';'); count > 0; --count)
            all.push_back(cutAtBar(alternatives, ';'));
        return chance_.oneOf(all);
    }

    std::string value(char kind, int code) {
        switch (kind) {
        case 'P':
            return point(code, place());
        case 'F':
            return flat(code, place());
        case 'W':
            return lineAtAnAngle();
        case 'V':
            return point(code, AcGePoint3d::kOrigin + chance_.direction());
        case 'E':
            return point(code, AcGePoint3d::kOrigin + chance_.direction() * chance_.length());
        case 'U':
            return flat(code, AcGePoint3d::kOrigin + chance_.direction() * chance_.length());
        case 'L':
            return tag(code, chance_.length());
        case 'A':
            return tag(code, chance_.angle() * 180 / std::numbers::pi);
        case 'S':
            return tag(code, chance_.oneIn(2) ? chance_.number(-3, 3) : chance_.oneIn(2) ? -1 : 2);
        case 'B':
            return tag(code, chance_.oneIn(3) ? 1 : chance_.oneIn(3) ? 0 : chance_.number(-2, 2));
        case 'T':
            return coded(code, oneOf(texts, 5));
        case 'M':
            return coded(code, oneOf(paragraphs, 5));
        case 'I':
            return coded(2, oneOf(blocks, 1));
        case 'X':
            return extrusion();
        default:
            return chance_.oneIn(6) ? applicationData() : "";
        }
    }

    /// A plain object takes one of the first ones.
    template <std::size_t count> const char* oneOf(const char* const (&all)[count], std::size_t plain) {
        return all[chance_.below(isPlain_ ? plain : count)];
    }
    AcGePoint3d place() {
        if (!repeated_ || !chance_.oneIn(8)) repeated_ = chance_.place();
        return *repeated_;
    }
    static std::string coded(int code, const char* text) { return "|" + std::to_string(code) + " " + text; }
    static std::string flat(int code, const AcGePoint3d& p) { return tag(code, p.x) + tag(code + 10, p.y); }
    std::string lineAtAnAngle() {
        const AcGePoint3d from = place();
        return point(10, from) + point(11, from + chance_.direction() * (chance_.length() * 3));
    }
    std::string extrusion() {
        if (chance_.oneIn(4)) return "|210 0|220 0|230 -1";
        if (chance_.oneIn(10))
            return "|210 0.01|220 -0.01|230 3"; // near Z, where the frame is found otherwise
        if (chance_.oneIn(8)) return point(210, AcGePoint3d::kOrigin + chance_.vector(1).normal());
        return chance_.oneIn(8) ? "|210 0|220 0|230 1" : "";
    }
    std::string applicationData() {
        return "|1001 QX|1002 {|1000 note" + point(1010, chance_.place()) + point(1011, chance_.place()) +
               point(1013, AcGePoint3d::kOrigin + chance_.direction()) + tag(1041, 2.5) + "|1002 }";
    }

    static constexpr const char* texts[] = {"H", "abc def", "%%c45%%d", "\\U+4E2D\\U+6587", "%%uWide%%u g",
                                            "",  " "};
    static constexpr const char* paragraphs[] = {"one",
                                                 "two\\Plines",
                                                 "{\\H2x;large} {\\fArial;x}\\P",
                                                 "\\S1/2; and ^I tab",
                                                 "a long line of words that is broken",
                                                 "",
                                                 " "};
    static constexpr const char* blocks[] = {"Box",    "Box",  "Marks",   "Empty",
                                             "Nested", "Loop", "Missing", "*D1"};

    Chance& chance_;
    std::string_view text_;
    bool isPlain_;
    std::size_t repetitions_ = 1;
    std::optional<AcGePoint3d> repeated_;
};

std::string record(Chance& chance, std::string_view pattern, Look look) {
    const std::string_view name = pattern.substr(0, pattern.find('|'));
    const bool isPlain = look == Look::plain;
    std::string head = std::string{name} + "|100 AcDbEntity|8 " + (isPlain ? "0" : chance.oneOf(layers));
    if (chance.oneIn(4)) head += "|62 " + std::to_string(chance.below(257));
    if (!isPlain && chance.oneIn(50)) head += chance.oneIn(2) ? "|60 1" : "|67 1";
    return head + Pattern{chance, pattern.substr(std::min(name.size() + 1, pattern.size())), look}.written();
}

} // namespace

std::span<const ObjectClass> objectClasses() { return classes; }

std::vector<std::string> recordsOf(Chance& chance, const ObjectClass& one, Look look) {
    std::vector<std::string> records{record(chance, one.pattern, look)};
    const std::string_view part = one.part;
    const std::size_t count = chance.oneIn(20) ? chance.below(2) : 2 + chance.below(5);
    for (std::size_t i = 0; i < count && !part.empty(); ++i) records.push_back(record(chance, part, look));
    if (*one.more) records.push_back(record(chance, one.more, look));
    if (!part.empty()) records.push_back("SEQEND");
    return records;
}

RandomDrawing::RandomDrawing(Chance& chance) : chance_{chance} {
    addBlocks();
    for (std::size_t count = 1 + chance.below(18); count > 0; --count) addObject();
    for (std::size_t count = chance.below(6); count > 0; --count) addGroup();
    addSurroundings();
}

void RandomDrawing::addBlocks() {
    const auto some = [&] {
        std::vector<std::string> records;
        for (std::size_t count = 1 + chance_.below(3); count > 0; --count)
            for (std::string& each : recordsOf(chance_, chance_.oneOf(classes)))
                records.push_back(std::move(each));
        return records;
    };
    content.blocks = {{"Box", {"LINE|10 0|20 0|11 20|21 0", "LINE|10 0|20 0|11 0|21 10"}},
                      {"Marks", some()},
                      {"Empty", {}},
                      {"Nested", {"INSERT|2 Box|10 5|20 5|50 30", "INSERT|2 Marks|10 0|20 0|41 2|42 -1"}},
                      {"Loop", {"INSERT|2 Loop|10 1|20 0", "CIRCLE|10 0|20 0|40 5"}},
                      {"*D1", {"LINE|10 0|20 0|11 40|21 0", "TEXT|10 15|20 2|40 3|1 40"}}};
    if (chance_.oneIn(3)) content.blocks[0].base = "10 3|20 4|30 0";
}

void RandomDrawing::addObject() {
    const auto records =
        recordsOf(chance_, classes[chance_.below(chance_.oneIn(2) ? curves : std::size(classes))]);
    objects.push_back(content.add(records[0]));
    for (std::size_t i = 1; i < records.size(); ++i) content.add(records[i]);
}

void RandomDrawing::addGroup() {
    constexpr Handle strangers[] = {0, 0xFFF, 0x10, DrawingText::modelSpace};
    std::vector<Handle> members;
    for (std::size_t count = chance_.below(7); count > 0; --count)
        members.push_back(chance_.oneIn(15) ? chance_.oneOf(strangers) : chance_.oneOf(objects));
    const std::string number =
        std::to_string(chance_.below(100)) + "-" + std::to_string(content.groups.size());
    content.group((chance_.oneIn(3) ? "*A" : "G") + number, members);
    content.groups.back().isSelectable = !chance_.oneIn(4);
}

void RandomDrawing::addSurroundings() {
    constexpr const char* versions[] = {"AC1015", "AC1018", "AC1021", "AC1032"};
    content.version = chance_.oneOf(versions);
    content.layers = {"Blue|70 0|62 5"};
    content.currentLayer = chance_.oneOf(layers);
    if (chance_.oneIn(3)) content.lineEnd = "\r\n";
    if (chance_.oneIn(10) && content.groups.empty()) content.hasGroupDictionary = false;
    if (!chance_.oneIn(6)) return;
    const double turn = chance_.angle();
    content.header = "|9 $UCSORG" + point(10, chance_.place()) + "|9 $UCSXDIR" +
                     point(10, {std::cos(turn), std::sin(turn), 0}) + "|9 $UCSYDIR" +
                     point(10, {-std::sin(turn), std::cos(turn), 0});
}

} // namespace qx::tests
