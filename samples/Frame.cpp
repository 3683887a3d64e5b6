#include "Frame.h"

namespace samples {
namespace {

// Handles of the frame; the well-known ones are those that new drawings usually have.
constexpr Handle blockTable = 0x1, layerTable = 0x2, styleTable = 0x3, lineTypeTable = 0x5, viewTable = 0x6,
                 ucsTable = 0x7, viewportTable = 0x8, applicationTable = 0x9, dimStyleTable = 0xA,
                 rootDictionary = 0xC, plotStyleDictionary = 0xE, plotStyle = 0xF, layoutDictionary = 0x1A,
                 paperSpace = 0x1B, paperLayout = 0x1E, modelLayout = 0x22, mlineDictionary = 0x17,
                 mlineStyle = 0x18;

struct VersionFacts {
    const char* acadver;
    const char* codePage;
};

VersionFacts factsOf(Version version) {
    switch (version) {
    case Version::r2000:
        return {"AC1015", "ANSI_936"};
    case Version::r2007:
        return {"AC1021", "ANSI_936"};
    case Version::r2010:
        return {"AC1024", "ANSI_936"};
    default:
        return {"AC1032", "ANSI_936"};
    }
}

void openTable(TagWriter& out, const char* name, Handle handle, std::size_t count) {
    out.text(0, "TABLE");
    out.text(2, name);
    out.handle(5, handle);
    out.handle(330, 0);
    out.text(100, "AcDbSymbolTable");
    out.integer(70, static_cast<std::int64_t>(count));
}

void openRecord(TagWriter& out, const char* kind, Handle handle, Handle table, const char* subclass,
                std::string_view name) {
    out.text(0, kind);
    out.handle(kind == std::string_view("DIMSTYLE") ? 105 : 5, handle);
    out.handle(330, table);
    out.text(100, "AcDbSymbolTableRecord");
    out.text(100, subclass);
    out.text(2, name);
}

void closeTable(TagWriter& out) { out.text(0, "ENDTAB"); }

void emptyTable(TagWriter& out, const char* name, Handle handle) {
    openTable(out, name, handle, 0);
    closeTable(out);
}

void writeViewports(TagWriter& out, const Frame& frame) {
    const double width = frame.max.x - frame.min.x, height = frame.max.y - frame.min.y;
    openTable(out, "VPORT", viewportTable, 1);
    openRecord(out, "VPORT", 0x29, viewportTable, "AcDbViewportTableRecord", "*Active");
    out.integer(70, 0);
    out.point(10, {0, 0});
    out.point(11, {1, 1});
    out.point(12, {frame.min.x + width / 2, frame.min.y + height / 2});
    out.point(13, {0, 0});
    out.point(14, {10, 10});
    out.point(15, {10, 10});
    out.point3(16, {0, 0});
    out.real(36, 1);
    out.point3(17, {0, 0});
    out.real(40, height * 1.05);
    out.real(41, width / height);
    out.real(42, 50);
    for (const int code : {43, 44, 50, 51}) out.real(code, 0);
    const std::pair<int, int> switches[] = {{71, 0}, {72, 1000}, {73, 1}, {74, 3},
                                            {75, 0}, {76, 0},    {77, 0}, {78, 0}};
    for (const auto& [code, value] : switches) out.integer(code, value);
    closeTable(out);
}

struct LineType {
    const char* name;
    const char* description;
    std::vector<double> dashes; // negative: a gap; scaled by $LTSCALE
};

void writeLineTypes(TagWriter& out) {
    const LineType types[] = {{"ByBlock", "", {}},
                              {"ByLayer", "", {}},
                              {"Continuous", "Solid line", {}},
                              {"CENTER", "Center ____ _ ____ _ ____", {6, -1.5, 1, -1.5}},
                              {"DASHED", "Dashed __ __ __ __ __ __", {3, -1.5}}};
    openTable(out, "LTYPE", lineTypeTable, std::size(types));
    Handle handle = 0x14; // up to 0x16 the three that every drawing has
    for (const auto& [name, description, dashes] : types) {
        openRecord(out, "LTYPE", handle, lineTypeTable, "AcDbLinetypeTableRecord", name);
        handle = handle == 0x16 ? 0x30 : handle + 1;
        out.integer(70, 0);
        out.text(3, description);
        out.integer(72, 65);
        out.integer(73, static_cast<std::int64_t>(dashes.size()));
        double total = 0;
        for (const double dash : dashes) total += dash < 0 ? -dash : dash;
        out.real(40, total);
        for (const double dash : dashes) {
            out.real(49, dash);
            out.integer(74, 0);
        }
    }
    closeTable(out);
}

void writeLayers(TagWriter& out, const std::vector<Layer>& layers) {
    openTable(out, "LAYER", layerTable, layers.size() + 1);
    Handle handle = 0x10;
    const auto write = [&](const Layer& layer) {
        openRecord(out, "LAYER", handle, layerTable, "AcDbLayerTableRecord", layer.name);
        handle = handle == 0x10 ? 0x40 : handle + 1;
        out.integer(70, layer.state == LayerState::frozen ? 1 : layer.state == LayerState::locked ? 4 : 0);
        out.integer(62, layer.state == LayerState::off ? -layer.colour : layer.colour);
        out.text(6, layer.lineType);
        out.integer(370, layer.lineWeight);
        out.handle(390, plotStyle);
    };
    write(Layer{"0"});
    for (const auto& layer : layers) write(layer);
    closeTable(out);
}

void writeStyles(TagWriter& out) {
    openTable(out, "STYLE", styleTable, 2);
    struct Style {
        const char* name;
        Handle handle;
        const char* font;
        const char* bigFont;
        double width;
    };
    for (const auto& style :
         {Style{"Standard", 0x11, "txt", "", 1.0}, Style{"汉字", 0x38, "gbenor.shx", "gbcbig.shx", 0.8}}) {
        openRecord(out, "STYLE", style.handle, styleTable, "AcDbTextStyleTableRecord", style.name);
        out.integer(70, 0);
        out.real(40, 0);
        out.real(41, style.width);
        out.real(50, 0);
        out.integer(71, 0);
        out.real(42, 2.5);
        out.text(3, style.font);
        out.text(4, style.bigFont);
    }
    closeTable(out);
}

void writeBlockRecords(TagWriter& out, const Frame& frame, const std::vector<BlockName>& blocks) {
    openTable(out, "BLOCK_RECORD", blockTable, blocks.size() + 2);
    const auto write = [&](std::string_view name, Handle handle, Handle layout) {
        openRecord(out, "BLOCK_RECORD", handle, blockTable, "AcDbBlockTableRecord", name);
        out.handle(340, layout);
        if (frame.version == Version::r2000) return;
        out.integer(70, static_cast<int>(frame.unit));
        out.integer(280, 1);
        out.integer(281, 0);
    };
    write("*Model_Space", modelSpace, modelLayout);
    write("*Paper_Space", paperSpace, paperLayout);
    for (const auto& block : blocks) write(block.name, block.record, 0);
    closeTable(out);
}

void openOwned(TagWriter& out, const char* kind, Handle handle, Handle reactor, Handle owner) {
    out.text(0, kind);
    out.handle(5, handle);
    if (reactor) {
        out.text(102, "{ACAD_REACTORS");
        out.handle(330, reactor);
        out.text(102, "}");
    }
    out.handle(330, owner);
}

void openObject(TagWriter& out, const char* kind, Handle handle, Handle owner) {
    openOwned(out, kind, handle, owner, owner);
}

struct DictionaryEntry {
    std::string_view name;
    Handle handle;
};

void writeEntries(TagWriter& out, const std::vector<DictionaryEntry>& entries) {
    out.text(100, "AcDbDictionary");
    out.integer(281, 1);
    for (const auto& [name, handle] : entries) {
        out.text(3, name);
        out.handle(350, handle);
    }
}

void writeDictionary(TagWriter& out, Handle handle, Handle owner,
                     const std::vector<DictionaryEntry>& entries) {
    openObject(out, "DICTIONARY", handle, owner);
    writeEntries(out, entries);
}

void writePlotStyles(TagWriter& out) {
    openObject(out, "ACDBDICTIONARYWDFLT", plotStyleDictionary, rootDictionary);
    writeEntries(out, {{"Normal", plotStyle}});
    out.text(100, "AcDbDictionaryWithDefault");
    out.handle(340, plotStyle);
    openObject(out, "ACDBPLACEHOLDER", plotStyle, plotStyleDictionary);
}

void writeMlineStyle(TagWriter& out) {
    openObject(out, "MLINESTYLE", mlineStyle, mlineDictionary);
    out.text(100, "AcDbMlineStyle");
    out.text(2, "STANDARD");
    out.integer(70, 0);
    out.text(3, "");
    out.integer(62, 256);
    out.real(51, 90);
    out.real(52, 90);
    out.integer(71, 2);
    for (const double offset : {0.5, -0.5}) {
        out.real(49, offset);
        out.integer(62, 256);
        out.text(6, "BYLAYER");
    }
}

void writePlotSettings(TagWriter& out, bool model) {
    out.text(100, "AcDbPlotSettings");
    out.text(1, "");
    out.text(2, "none_device");
    out.text(4, "");
    out.text(6, "");
    for (int code = 40; code <= 49; ++code) out.real(code, 0);
    out.real(140, 0);
    out.real(141, 0);
    out.real(142, 1);
    out.real(143, 1);
    out.integer(70, model ? 1024 : 0);
    for (const int code : {72, 73}) out.integer(code, 0);
    out.integer(74, 5);
    out.text(7, "");
    out.integer(75, 16);
    out.real(147, 1);
    out.real(148, 0);
    out.real(149, 0);
}

void writeLayout(TagWriter& out, std::string_view name, Handle handle, Handle record, const Frame& frame) {
    const bool model = record == modelSpace;
    openObject(out, "LAYOUT", handle, layoutDictionary);
    writePlotSettings(out, model);
    out.text(100, "AcDbLayout");
    out.text(1, name);
    out.integer(70, 1);
    out.integer(71, model ? 0 : 1);
    out.point(10, {0, 0});
    out.point(11, {420, 297});
    out.point3(12, {0, 0});
    out.point3(14, model ? frame.min : Point{});
    out.point3(15, model ? frame.max : Point{});
    out.real(146, 0);
    out.point3(13, {0, 0});
    out.point3(16, {1, 0});
    out.point3(17, {0, 1});
    out.integer(76, 0);
    out.handle(330, record);
}

void writeGroup(TagWriter& out, const Group& group) {
    openObject(out, "GROUP", group.handle, groupDictionary);
    out.text(100, "AcDbGroup");
    out.text(300, group.description);
    out.integer(70, 0);
    out.integer(71, 1);
    for (const Handle member : group.members) out.handle(340, member);
}

struct ClassName {
    const char* dxfName;
    const char* cppName;
};

void writeClasses(TagWriter& out, Version version) {
    openSection(out, "CLASSES");
    for (const auto& [dxfName, cppName] :
         {ClassName{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"},
          ClassName{"ACDBPLACEHOLDER", "AcDbPlaceHolder"}, ClassName{"LAYOUT", "AcDbLayout"}}) {
        out.text(0, "CLASS");
        out.text(1, dxfName);
        out.text(2, cppName);
        out.text(3, "ObjectDBX Classes");
        out.integer(90, 0);
        if (version != Version::r2000) out.integer(91, 1);
        out.integer(280, 0);
        out.integer(281, 0);
    }
    closeSection(out);
}

} // namespace

void openSection(TagWriter& out, const char* name) {
    out.text(0, "SECTION");
    out.text(2, name);
}

void closeSection(TagWriter& out) { out.text(0, "ENDSEC"); }

void writeHeader(TagWriter& out, const Frame& frame, Handle nextHandle) {
    const auto variable = [&](const char* name) { out.text(9, name); };
    const auto [acadver, codePage] = factsOf(frame.version);
    openSection(out, "HEADER");
    variable("$ACADVER"), out.text(1, acadver);
    variable("$DWGCODEPAGE"), out.text(3, codePage);
    variable("$INSBASE"), out.point3(10, {0, 0});
    variable("$EXTMIN"), out.point3(10, frame.min);
    variable("$EXTMAX"), out.point3(10, frame.max);
    variable("$LIMMIN"), out.point(10, frame.min);
    variable("$LIMMAX"), out.point(10, frame.max);
    variable("$LTSCALE"), out.real(40, frame.lineTypeScale);
    variable("$TEXTSIZE"), out.real(40, frame.textSize);
    variable("$TEXTSTYLE"), out.text(7, frame.textStyle);
    variable("$CLAYER"), out.text(8, frame.currentLayer);
    variable("$CELTYPE"), out.text(6, "ByLayer");
    variable("$CECOLOR"), out.integer(62, 256);
    variable("$DIMSTYLE"), out.text(2, "Standard");
    variable("$LUNITS"), out.integer(70, 2);
    variable("$LUPREC"), out.integer(70, 3);
    variable("$UCSORG"), out.point3(10, {0, 0});
    variable("$UCSXDIR"), out.point3(10, {1, 0});
    variable("$UCSYDIR"), out.point3(10, {0, 1});
    variable("$INSUNITS"), out.integer(70, static_cast<int>(frame.unit));
    variable("$MEASUREMENT"), out.integer(70, 1);
    variable("$PICKSTYLE"), out.integer(70, 1);
    variable("$HANDSEED"), out.handle(5, nextHandle);
    closeSection(out);
    writeClasses(out, frame.version);
}

void writeTables(TagWriter& out, const Frame& frame, const std::vector<BlockName>& blocks) {
    openSection(out, "TABLES");
    writeViewports(out, frame);
    writeLineTypes(out);
    writeLayers(out, frame.layers);
    writeStyles(out);
    emptyTable(out, "VIEW", viewTable);
    emptyTable(out, "UCS", ucsTable);
    openTable(out, "APPID", applicationTable, 2);
    for (const auto& [name, handle] :
         {DictionaryEntry{"ACAD", 0x12}, DictionaryEntry{frame.application, 0x13}}) {
        openRecord(out, "APPID", handle, applicationTable, "AcDbRegAppTableRecord", name);
        out.integer(70, 0);
    }
    closeTable(out);
    openTable(out, "DIMSTYLE", dimStyleTable, 1);
    out.text(100, "AcDbDimStyleTable");
    out.integer(71, 1);
    out.handle(340, 0x27);
    openRecord(out, "DIMSTYLE", 0x27, dimStyleTable, "AcDbDimStyleTableRecord", "Standard");
    out.integer(70, 0);
    closeTable(out);
    writeBlockRecords(out, frame, blocks);
    closeSection(out);
}

void openEntity(TagWriter& out, const char* kind, Handle handle, Handle group, Handle owner,
                std::string_view layer) {
    openOwned(out, kind, handle, group, owner);
    out.text(100, "AcDbEntity");
    if (owner == paperSpace) out.integer(67, 1);
    out.text(8, layer);
}

void openBlock(TagWriter& out, const BlockName& block, Handle begin, bool hasAttributes) {
    openEntity(out, "BLOCK", begin, 0, block.record, "0");
    out.text(100, "AcDbBlockBegin");
    out.text(2, block.name);
    out.integer(70, hasAttributes ? 2 : 0);
    out.point3(10, {0, 0});
    out.text(3, block.name);
    out.text(1, "");
}

void closeBlock(TagWriter& out, const BlockName& block, Handle end) {
    openEntity(out, "ENDBLK", end, 0, block.record, "0");
    out.text(100, "AcDbBlockEnd");
}

void writeLayoutBlocks(TagWriter& out) {
    const BlockName model{"*Model_Space", modelSpace}, paper{"*Paper_Space", paperSpace};
    openBlock(out, model, 0x20);
    closeBlock(out, model, 0x21);
    openBlock(out, paper, 0x1C);
    closeBlock(out, paper, 0x1D);
}

void writeObjects(TagWriter& out, const Frame& frame, const std::vector<Group>& groups) {
    openSection(out, "OBJECTS");
    writeDictionary(out, rootDictionary, 0,
                    {{"ACAD_GROUP", groupDictionary},
                     {"ACAD_LAYOUT", layoutDictionary},
                     {"ACAD_MLINESTYLE", mlineDictionary},
                     {"ACAD_PLOTSTYLENAME", plotStyleDictionary}});
    std::vector<DictionaryEntry> names;
    for (const auto& group : groups) names.push_back({group.name, group.handle});
    writeDictionary(out, groupDictionary, rootDictionary, names);
    writeDictionary(out, layoutDictionary, rootDictionary, {{"Model", modelLayout}, {"布局1", paperLayout}});
    writeDictionary(out, mlineDictionary, rootDictionary, {{"Standard", mlineStyle}});
    writeMlineStyle(out);
    writePlotStyles(out);
    writeLayout(out, "Model", modelLayout, modelSpace, frame);
    writeLayout(out, "布局1", paperLayout, paperSpace, frame);
    for (const auto& group : groups) writeGroup(out, group);
    closeSection(out);
    out.text(0, "EOF");
}

} // namespace samples
