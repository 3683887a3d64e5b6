#include "db/classes.h"

#include "dbdict.h"
#include "dbelipse.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
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

// Sorted by name for the search.
constexpr std::array classes{
    ClassEntry{"3DLINE", Kind::line, make<AcDbLine>}, // up to R10
    ClassEntry{"ARC", Kind::arc, make<AcDbArc>},
    ClassEntry{"ATTRIB", Kind::attribute, make<AcDbAttribute>},
    ClassEntry{"BLOCK", Kind::block, make<KeptObject>},
    ClassEntry{"BLOCK_RECORD", Kind::blockRecord, make<AcDbBlockTableRecord>},
    ClassEntry{"CIRCLE", Kind::circle, make<AcDbCircle>},
    ClassEntry{"DICTIONARY", Kind::dictionary, make<AcDbDictionary>},
    ClassEntry{"ELLIPSE", Kind::ellipse, make<AcDbEllipse>},
    ClassEntry{"ENDBLK", Kind::endBlock, make<KeptObject>},
    ClassEntry{"ENDSEC", Kind::endSection, make<KeptObject>},
    ClassEntry{"ENDTAB", Kind::endTable, make<KeptObject>},
    ClassEntry{"EOF", Kind::endOfFile, make<KeptObject>},
    ClassEntry{"GROUP", Kind::group, make<AcDbGroup>},
    ClassEntry{"INSERT", Kind::insert, make<AcDbBlockReference>},
    ClassEntry{"LAYER", Kind::layer, make<AcDbLayerTableRecord>},
    ClassEntry{"LINE", Kind::line, make<AcDbLine>},
    ClassEntry{"LWPOLYLINE", Kind::lwPolyline, make<AcDbPolyline>},
    ClassEntry{"MTEXT", Kind::mtext, make<AcDbMText>},
    ClassEntry{"POINT", Kind::point, make<AcDbPoint>},
    ClassEntry{"POLYLINE", Kind::polyline, make<AcDb2dPolyline>},
    ClassEntry{"SECTION", Kind::section, make<KeptObject>},
    ClassEntry{"SEQEND", Kind::sequenceEnd, make<KeptObject>},
    ClassEntry{"TABLE", Kind::table, make<AcDbBlockTable>},
    ClassEntry{"TEXT", Kind::text, make<AcDbText>},
    ClassEntry{"VERTEX", Kind::vertex, make<AcDbEntity>},
};
static_assert(std::ranges::is_sorted(classes, {}, &ClassEntry::name));

std::string_view firstValue(std::string_view bytes, int code) {
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag) && tag.code < 1000;)
        if (tag.code == code) return tag.value;
    return {};
}

enum class PolylineClass { flat, spatial, mesh };

PolylineClass polylineClassOf(std::string_view header) {
    constexpr int isIn3d = 8, isMesh = 16 | 64;
    const double value = dxf::toReal(firstValue(header, 70)).value_or(0);
    const int flags = value >= 0 && value < 1024 ? static_cast<int>(value) : 0;
    if (flags & isMesh) return PolylineClass::mesh;
    return flags & isIn3d ? PolylineClass::spatial : PolylineClass::flat;
}

/// Meshes are only kept, and so are vertices that stand alone.
template <class Flat, class Spatial> std::unique_ptr<AcDbObject> newInPolyline(std::string_view header) {
    if (header.empty()) return make<AcDbEntity>();
    switch (polylineClassOf(header)) {
    case PolylineClass::flat:
        return make<Flat>();
    case PolylineClass::spatial:
        return make<Spatial>();
    default:
        return make<AcDbEntity>();
    }
}

} // namespace

Kind kindOf(std::string_view name, bool amongEntities) {
    const auto found = std::ranges::lower_bound(classes, name, {}, &ClassEntry::name);
    if (found != classes.end() && found->name == name) return found->kind;
    return amongEntities ? Kind::otherEntity : Kind::otherObject;
}

std::unique_ptr<AcDbObject> newObject(Kind kind, std::string_view bytes, std::string_view headerBytes) {
    if (kind == Kind::otherEntity) return make<AcDbEntity>();
    if (kind == Kind::polyline) return newInPolyline<AcDb2dPolyline, AcDb3dPolyline>(bytes);
    if (kind == Kind::vertex) return newInPolyline<AcDb2dVertex, AcDb3dPolylineVertex>(headerBytes);
    const bool isOther = !bytes.empty() && dxf::trimmed(firstValue(bytes, 2)) != "BLOCK_RECORD";
    if (kind == Kind::table && isOther) return make<KeptObject>();
    const auto found = std::ranges::find(classes, kind, &ClassEntry::kind);
    return found == classes.end() ? make<KeptObject>() : found->make();
}

} // namespace qx::db
