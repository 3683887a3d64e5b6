// fuzz_seeds FOLDER: small drawings to begin fuzzing from, one for each kind of object.
#include "drawings/DrawingText.h"

#include <filesystem>
#include <fstream>

using namespace drawings;

namespace {

const DrawingText drawingsOfKinds[] = {
    {.entities = {"LINE|10 1.0|20 2.0|11 3.0|21 2.0|210 0.0|220 0.0|230 -1.0", "POINT|10 1.0|20 2.0"}},
    {.entities = {"CIRCLE|10 5.0|20 4.0|40 1.0", "ARC|10 5.0|20 4.0|40 2.0|50 350.0|51 90.0"}},
    {.entities = {"ELLIPSE|10 5.0|20 4.0|11 4.0|21 0.0|40 0.5|41 0.0|42 3.0"}},
    {.entities = {"TEXT|10 1.0|20 2.0|40 2.5|1 %%u\xC3\xC5H\\U+4E2D|50 30.0|41 0.8|72 1|73 2|11 4.0|21 4.0"}},
    {.entities =
         {"MTEXT|10 5.0|20 5.0|40 2.0|41 9.0|71 5|3 {\\H2x;a} b\\P|1 \\S1/2;\\L\\~\\A1;|11 1.0|21 1.0"}},
    {.entities = {"LWPOLYLINE|90 3|70 1|38 1.0|10 0.0|20 0.0|42 0.5|10 9.0|20 0.0|10 9.0|20 9.0|91 7"}},
    {.entities = {"POLYLINE|66 1|10 0.0|70 1", "VERTEX|10 0.0|20 0.0|42 1.0", "VERTEX|10 4.0|20 3.0",
                  "SEQEND"}},
    {.entities = {"POLYLINE|66 1|70 8", "VERTEX|70 32|10 0.0|30 1.0", "VERTEX|70 32|10 4.0|20 3.0",
                  "SEQEND"}},
    {.entities = {"INSERT|66 1|2 B|10 7.0|41 2.0|42 3.0|50 30.0|70 1|71 1",
                  "ATTRIB|10 1.0|40 1.0|1 H|2 T|70 0", "SEQEND", "INSERT|2 C|10 0.0"},
     .blocks = {{"B", {"LINE|10 1.0|11 3.0", "INSERT|2 C|10 1.0"}}, {"C", {"CIRCLE|10 5.0|40 1.0"}}}},
    {.entities = {"LINE|10 0.0|11 1.0|21 1.0", "CIRCLE|8 LOCKED|10 9.0|40 1.0", "LINE|8 OFF|10 5.0|11 6.0"},
     .groups = {{"G", {"100", "101"}}, {"H", {"101", "102", "101"}, false}}},
    {.entities = {"HATCH|10 1.0", "SPLINE|10 1.0", "DIMENSION|10 1.0",
                  "LINE|1001 ACAD|1010 1.0|1020 2.0|1071 3"},
     .version = "AC1021",
     .lineEnd = "\r\n",
     .header = "|9 $UCSORG|10 1.0|20 2.0|30 0.0|9 $UCSXDIR|10 0.0|20 1.0|30 0.0"},
};

} // namespace

int main(int, char** arguments) {
    int number = 0;
    for (const DrawingText& each : drawingsOfKinds) {
        const std::string name = "kind" + std::to_string(++number) + ".dxf";
        std::ofstream{std::filesystem::path{arguments[1]} / name, std::ios::binary} << each.bytes();
    }
}
