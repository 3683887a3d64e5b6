// Walks the vertices of a polyline or mesh in order, as they are now; those of a copy that was made from the
// file, as they are there.
#pragma once

#include "db/Drawing.h"

#include <memory>

namespace qx::db {

/// `Vertex` is a class that all vertices of the owner have.
template <class Vertex> class VertexCursor {
public:
    explicit VertexCursor(const AcDbEntity& owner) : header_{owner.objectId().record()}, record_{header_} {
        drawing_ = header_ ? RecordChain::drawingOf(header_) : nullptr;
        isOfCopy_ = header_ && header_->live != &owner;
    }

    /// Null behind the last. Valid until the next call.
    const Vertex* next() {
        while (drawing_ && (record_ = RecordChain::next(record_)) && record_->owner == header_)
            if (const Vertex* vertex = at(record_)) return vertex;
        drawing_ = nullptr;
        return nullptr;
    }

    /// The vertex that the record holds; null when it is erased or can't be read, or is no vertex of the
    /// owner.
    const Vertex* at(Record* record) {
        if (!record || record->owner != header_ || record->kind != Kind::vertex) return nullptr;
        if (!isOfCopy_ && record->has(Record::erased)) return nullptr;
        if (isOfCopy_) original_ = drawing_->asInFile(record);
        return static_cast<const Vertex*>(isOfCopy_ ? original_.get() : drawing_->live(record));
    }

private:
    Record* header_;
    Record* record_;
    const Drawing* drawing_;
    bool isOfCopy_;
    std::unique_ptr<AcDbObject> original_;
};

} // namespace qx::db
