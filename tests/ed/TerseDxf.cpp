#include "ed/TerseDxf.h"

#include <sstream>

namespace qx::tests {
namespace {

constexpr std::string_view tables = R"(SECTION 2=TABLES
TABLE 2=LAYER 5=2 330=0 100=AcDbSymbolTable 70=4
LAYER 5=10 330=2 100=AcDbSymbolTableRecord 100=AcDbLayerTableRecord 2=0 70=0 62=7 6=Continuous
LAYER 5=11 330=2 100=AcDbSymbolTableRecord 100=AcDbLayerTableRecord 2=LOCKED 70=4 62=7 6=Continuous
LAYER 5=12 330=2 100=AcDbSymbolTableRecord 100=AcDbLayerTableRecord 2=OFF 70=0 62=-7 6=Continuous
LAYER 5=13 330=2 100=AcDbSymbolTableRecord 100=AcDbLayerTableRecord 2=FROZEN 70=1 62=7 6=Continuous
ENDTAB
TABLE 2=BLOCK_RECORD 5=1 330=0 100=AcDbSymbolTable 70=1
BLOCK_RECORD 5=1F 330=1 100=AcDbSymbolTableRecord 100=AcDbBlockTableRecord 2=*Model_Space
ENDTAB
ENDSEC
SECTION 2=BLOCKS
BLOCK 5=20 330=1F 100=AcDbEntity 8=0 100=AcDbBlockBegin 2=*Model_Space 70=0 10=0 20=0 30=0 3=*Model_Space
ENDBLK 5=21 330=1F 100=AcDbEntity 8=0 100=AcDbBlockEnd
ENDSEC
SECTION 2=ENTITIES
)";

} // namespace

std::string tagsOf(std::string_view lines) {
    std::string tags;
    std::istringstream all{std::string{lines}};
    for (std::string line; std::getline(all, line);) {
        std::istringstream words{line};
        std::string word;
        if (!(words >> word)) continue;
        tags += "0\n" + word + '\n';
        while (words >> word) {
            const std::size_t equals = word.find('=');
            tags += word.substr(0, equals) + '\n' + word.substr(equals + 1) + '\n';
        }
    }
    return tags;
}

std::string drawingText(std::string_view entities, std::string_view groups, std::string_view objects,
                        std::string_view header) {
    std::string text = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$HANDSEED\n5\nFFFF\n";
    text += std::string{header} + "0\nENDSEC\n" + tagsOf(tables) + tagsOf(entities);
    text += tagsOf("ENDSEC\nSECTION 2=OBJECTS\n"
                   "DICTIONARY 5=C 330=0 100=AcDbDictionary 281=1 3=ACAD_GROUP 350=D\n"
                   "DICTIONARY 5=D 330=C 100=AcDbDictionary 281=1");
    std::istringstream words{std::string{groups}};
    for (std::string name, handle; words >> name >> handle;) text += "3\n" + name + "\n350\n" + handle + '\n';
    return text + tagsOf(objects) + tagsOf("ENDSEC\nEOF");
}

} // namespace qx::tests
