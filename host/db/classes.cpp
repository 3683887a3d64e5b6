#include "db/classes.h"

#include "db/FieldTable.h"
#include "dbdict.h"
#include "dbdim.h"
#include "dbelipse.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dbhatch.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbray.h"
#include "dbspline.h"
#include "dbsymtb.h"
#include "dbxline.h"
#include "dxf/Tag.h"

#include <algorithm>
#include <array>

namespace qx::db {

namespace {

/// Whatever has no class of its own here.
class KeptObject final : public AcDbObject {};

template <class T> std::unique_ptr<AcDbObject> make() { return std::make_unique<T>(); }

struct ClassEntry {
    std::string_view name;
    Kind kind;
    std::unique_ptr<AcDbObject> (*make)();
};

constexpr std::array classes{
    ClassEntry{"3DFACE", Kind::face, make<AcDbFace>},
    ClassEntry{"3DLINE", Kind::line, make<AcDbLine>}, // up to R10
    ClassEntry{"ARC", Kind::arc, make<AcDbArc>},
    ClassEntry{"ATTDEF", Kind::attributeDefinition, make<AcDbAttributeDefinition>},
    ClassEntry{"ATTRIB", Kind::attribute, make<AcDbAttribute>},
    ClassEntry{"BLOCK", Kind::block, make<KeptObject>},
    ClassEntry{"BLOCK_RECORD", Kind::blockRecord, make<AcDbBlockTableRecord>},
    ClassEntry{"CIRCLE", Kind::circle, make<AcDbCircle>},
    ClassEntry{"DICTIONARY", Kind::dictionary, make<AcDbDictionary>},
    ClassEntry{"DIMENSION", Kind::dimension, make<AcDbDimension>},
    ClassEntry{"ELLIPSE", Kind::ellipse, make<AcDbEllipse>},
    ClassEntry{"ENDBLK", Kind::endBlock, make<KeptObject>},
    ClassEntry{"ENDSEC", Kind::endSection, make<KeptObject>},
    ClassEntry{"ENDTAB", Kind::endTable, make<KeptObject>},
    ClassEntry{"EOF", Kind::endOfFile, make<KeptObject>},
    ClassEntry{"GROUP", Kind::group, make<AcDbGroup>},
    ClassEntry{"HATCH", Kind::hatch, make<AcDbHatch>},
    ClassEntry{"INSERT", Kind::insert, make<AcDbBlockReference>},
    ClassEntry{"LAYER", Kind::layer, make<AcDbLayerTableRecord>},
    ClassEntry{"LEADER", Kind::leader, make<AcDbLeader>},
    ClassEntry{"LINE", Kind::line, make<AcDbLine>},
    ClassEntry{"LWPOLYLINE", Kind::lwPolyline, make<AcDbPolyline>},
    ClassEntry{"MTEXT", Kind::mtext, make<AcDbMText>},
    ClassEntry{"POINT", Kind::point, make<AcDbPoint>},
    ClassEntry{"POLYLINE", Kind::polyline, make<AcDb2dPolyline>},
    ClassEntry{"RAY", Kind::ray, make<AcDbRay>},
    ClassEntry{"SECTION", Kind::section, make<KeptObject>},
    ClassEntry{"SEQEND", Kind::sequenceEnd, make<KeptObject>},
    ClassEntry{"SOLID", Kind::solid, make<AcDbSolid>},
    ClassEntry{"SPLINE", Kind::spline, make<AcDbSpline>},
    ClassEntry{"TABLE", Kind::table, make<AcDbBlockTable>},
    ClassEntry{"TEXT", Kind::text, make<AcDbText>},
    ClassEntry{"TRACE", Kind::trace, make<AcDbTrace>},
    ClassEntry{"VERTEX", Kind::vertex, make<AcDbEntity>},
    ClassEntry{"XLINE", Kind::xline, make<AcDbXline>},
};

// Every record asks for its kind: one comparison mostly tells it.
constexpr std::size_t places = 128;
constexpr std::size_t placeOf(std::string_view name) {
    if (name.empty()) return 0;
    return (name.size() * 2 + static_cast<unsigned char>(name.front()) +
            static_cast<unsigned char>(name[name.size() / 2]) * 13 +
            static_cast<unsigned char>(name.back()) * 5) %
           places;
}
constexpr std::array<const ClassEntry*, places> classesByName = [] {
    std::array<const ClassEntry*, places> table{};
    for (const ClassEntry& each : classes) {
        std::size_t place = placeOf(each.name);
        while (table[place % places]) ++place;
        table[place % places] = &each;
    }
    return table;
}();

std::string_view firstValue(std::string_view bytes, int code) {
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag) && tag.code < 1000;)
        if (tag.code == code) return tag.value;
    return {};
}

int flagsIn(std::string_view bytes) {
    const double value = dxf::toReal(firstValue(bytes, 70)).value_or(0);
    return value >= 0 && value < 1024 ? static_cast<int>(value) : 0;
}

constexpr int isIn3d = 8, isPolygonMesh = 16, isPolyFaceMesh = 64; // of a polyline
constexpr int isPartOfPolyFaces = 128, isPlace = 64;               // of a vertex

std::unique_ptr<AcDbObject> newPolyline(std::string_view bytes) {
    const int flags = flagsIn(bytes);
    if (flags & isPolyFaceMesh) return make<AcDbPolyFaceMesh>();
    if (flags & isPolygonMesh) return make<AcDbPolygonMesh>();
    return flags & isIn3d ? make<AcDb3dPolyline>() : make<AcDb2dPolyline>();
}

/// Vertices that stand alone are only kept.
std::unique_ptr<AcDbObject> newVertex(std::string_view bytes, std::string_view header) {
    if (header.empty()) return make<AcDbEntity>();
    const int flags = flagsIn(header);
    if (flags & isPolyFaceMesh) {
        const bool isFace = (flagsIn(bytes) & (isPartOfPolyFaces | isPlace)) == isPartOfPolyFaces;
        return isFace ? make<AcDbFaceRecord>() : make<AcDbPolyFaceMeshVertex>();
    }
    if (flags & isPolygonMesh) return make<AcDbPolygonMeshVertex>();
    return flags & isIn3d ? make<AcDb3dPolylineVertex>() : make<AcDb2dVertex>();
}

bool isInRowsOrColumns(std::string_view insertion) {
    FieldTags tags{insertion};
    for (dxf::Tag tag; tags.next(tag);)
        if ((tag.code == 70 || tag.code == 71) && dxf::toReal(tag.value).value_or(1) > 1) return true;
    return false;
}

} // namespace

Kind kindOf(std::string_view name, bool amongEntities) {
    for (std::size_t place = placeOf(name); const ClassEntry* entry = classesByName[place % places]; ++place)
        if (entry->name == name) return entry->kind;
    return amongEntities ? Kind::otherEntity : Kind::otherObject;
}

std::unique_ptr<AcDbObject> newObject(Kind kind, std::string_view bytes, std::string_view headerBytes) {
    if (kind == Kind::otherEntity) return make<AcDbEntity>();
    if (kind == Kind::polyline) return newPolyline(bytes);
    if (kind == Kind::vertex) return newVertex(bytes, headerBytes);
    if (kind == Kind::insert && isInRowsOrColumns(bytes)) return make<AcDbMInsertBlock>();
    if (kind == Kind::table && !bytes.empty() && dxf::trimmed(firstValue(bytes, 2)) != "BLOCK_RECORD")
        return make<KeptObject>();
    const auto found = std::ranges::find(classes, kind, &ClassEntry::kind);
    return found == classes.end() ? make<KeptObject>() : found->make();
}

} // namespace qx::db
