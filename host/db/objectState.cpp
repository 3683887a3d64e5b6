#include "db/FieldTable.h"
#include "dbpl.h"

#include <algorithm>
#include <cstring>

namespace qx::db {

namespace {

struct Stretch {
    std::byte* bytes;
    std::size_t size;
};

template <class T> Stretch stretchOf(std::vector<T>& values) {
    return {reinterpret_cast<std::byte*>(values.data()), values.size() * sizeof(T)};
}

/// Calls `visit` for each stretch of memory that the object's state consists of, always in the same order.
/// None of them changes its size while the object lives.
template <class Visit> void forEachStretch(AcDbObject& object, Visit&& visit) {
    const auto [table, base, tail, normal] = object.fields();
    if (!table) return;
    visit(Stretch{static_cast<std::byte*>(base), table->plainSize});
    if (table->vertices) {
        visit(stretchOf(memberAt<std::vector<AcDbPolyline::Vertex>>(base, table->vertices->offset)));
        visit(stretchOf(memberAt<std::vector<AcDbPolyline::Widths>>(base, table->vertices->widthsOffset)));
    }
    for (GroupList* list : {listOf(object.fields()), tail})
        if (list) visit(stretchOf(list->values));
}

} // namespace

std::size_t stateSize(AcDbObject& object) {
    std::size_t size = 0;
    forEachStretch(object, [&](Stretch stretch) { size += stretch.size; });
    return (size + 7) / 8 * 8;
}

void saveState(AcDbObject& object, std::byte* to) {
    forEachStretch(object, [&](Stretch stretch) {
        if (stretch.size) std::memcpy(to, stretch.bytes, stretch.size);
        to += stretch.size;
    });
}

void swapState(AcDbObject& object, std::byte* with) {
    forEachStretch(object, [&](Stretch stretch) {
        std::swap_ranges(stretch.bytes, stretch.bytes + stretch.size, with);
        with += stretch.size;
    });
}

} // namespace qx::db
