#include "db/patches.h"

#include "db/Blocks.h"
#include "db/FieldTable.h"
#include "db/Layers.h"
#include "dbpl.h"
#include "dxf/Tag.h"
#include "os/encoding.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <optional>

namespace qx::db {

namespace {

ShortText codeText(int code) {
    char text[16];
    std::snprintf(text, sizeof text, "%3d", code);
    return ShortText{text};
}

ShortText tagText(int code, std::string_view value, std::string_view lineEnd) {
    return codeText(code).add(lineEnd).add(value).add(lineEnd);
}

int slotsOf(const Field& field) {
    if (!field.hasValue()) return 0;
    return field.isPoint() ? 3 : 1;
}

bool differsFromFallback(const Slot& slot, void* base) {
    if (slot.form == Slot::Form::text) return false;
    if (slot.form == Slot::Form::integer) return memberAt<Adesk::Int32>(base, slot.offset) != slot.fallback;
    return memberAt<double>(base, slot.offset) != slot.fallback;
}

ShortText valueText(const Slot& slot, void* base) {
    if (slot.form == Slot::Form::real) return realText(memberAt<double>(base, slot.offset));
    char text[16];
    std::snprintf(text, sizeof text, "%6d", memberAt<Adesk::Int32>(base, slot.offset));
    return ShortText{text};
}

/// Where the tag ends that begins the fields of that subclass; empty when the file leaves it out.
std::optional<const char*> behindMarker(std::string_view bytes, std::string_view marker) {
    FieldTags tags{bytes};
    for (dxf::Tag tag; tags.next(tag);)
        if (tag.code == 100 && dxf::trimmed(tag.value) == marker) return tag.end;
    return std::nullopt;
}

} // namespace

ShortText& ShortText::add(std::string_view text) {
    assert(size_ + text.size() <= sizeof bytes_);
    std::memcpy(bytes_ + size_, text.data(), text.size());
    size_ = static_cast<std::uint8_t>(size_ + text.size());
    return *this;
}

std::string tagString(int code, std::string_view value, std::string_view lineEnd) {
    return std::string{codeText(code).view()}.append(lineEnd).append(value).append(lineEnd);
}

ShortText realText(double value) {
    char text[64];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value);
    const std::string_view shortest{text, end};
    ShortText result{shortest};
    if (std::ranges::none_of(shortest, [](char c) { return c == '.' || c == 'e' || c == 'n'; }))
        result.add(".0");
    return result;
}

void Patcher::patch(const char* at, std::size_t replaced, const ShortText& text) {
    isInOrder_ = isInOrder_ && (patches_.empty() || patches_.back().at <= at);
    patches_.push_back({at, replaced, text});
}

const std::vector<Patch>& Patcher::patchesFor(std::string_view bytes, AcDbObject& object) {
    patches_.clear();
    isInOrder_ = true;
    touched_ = object.touched();
    const Fields fields = object.fields();
    table_ = fields.table;
    base_ = fields.base;
    tail_ = fields.tail;
    if (!table_) return patches_;
    std::fill_n(seenAt_.begin(), table_->slots.size(), nullptr);
    std::fill_n(patchOf_.begin(), table_->slots.size(), -1);
    vertex_ = 0;
    isYMissing_ = false;
    lastVertexTag_ = nullptr;
    compareFields(bytes);
    insertMissing(bytes);
    if (!isInOrder_) std::ranges::stable_sort(patches_, {}, &Patch::at);
    return patches_;
}

void Patcher::compareFields(std::string_view bytes) {
    FieldTags tags{bytes};
    dxf::Tag tag;
    defaultAnchor_ = nullptr;
    std::optional<ListPlace> listed;
    if (table_->lists)
        listed.emplace(
            ListPlace{&memberAt<GroupList>(base_, table_->lists->offset), GroupWalk{table_->lists->grammar}});
    while (tags.next(tag)) {
        if (tag.code == 8) defaultAnchor_ = tag.end;
        const std::uint8_t slot = table_->slotOf(tag.code);
        if (const auto place = listed ? listed->walk.step(tag) : std::nullopt)
            compareListed(*listed, tag, *place);
        else if (slot != FieldTable::noSlot)
            compareSlot(slot, tag.value, tag.end);
        else if (table_->vertices && table_->vertices->holds(tag.code))
            compareVertex(tag);
    }
    finishVertex();
    if (listed) {
        finishListed(*listed);
        lastVertexTag_ = listed->behind;
    }
    if (tags.end()) compareTail(tags.end(), bytes.data() + bytes.size());
    if (!defaultAnchor_) defaultAnchor_ = tags.end() ? tags.end() : bytes.data() + bytes.size();
}

// Of a group that stands twice the last one counts, as in reading: an earlier patch for it is withdrawn.
void Patcher::compareSlot(std::size_t index, std::string_view text, const char* end) {
    const Slot& slot = table_->slots[index];
    if (patchOf_[index] >= 0) {
        Patch& earlier = patches_[static_cast<std::size_t>(patchOf_[index])];
        earlier = {earlier.at, 0, {}};
        patchOf_[index] = -1;
    }
    seenAt_[index] = end;
    if (slot.form == Slot::Form::text || !(touched_ & slot.axes)) return;
    const std::size_t before = patches_.size();
    if (slot.form == Slot::Form::real)
        compareReal(text, memberAt<double>(base_, slot.offset));
    else if (toInteger(text) != memberAt<Adesk::Int32>(base_, slot.offset))
        patch(text.data(), text.size(), valueText(slot, base_));
    if (patches_.size() > before) patchOf_[index] = static_cast<int>(before);
}

void Patcher::compareReal(std::string_view text, double value) {
    if (dxf::toReal(text) != value) patch(text.data(), text.size(), realText(value));
}

void Patcher::compareVertex(const dxf::Tag& tag) {
    const VertexGroups& groups = *table_->vertices;
    const auto& vertices = memberAt<std::vector<AcDbPolyline::Vertex>>(base_, groups.offset);
    const auto& widths = memberAt<std::vector<AcDbPolyline::Widths>>(base_, groups.widthsOffset);
    if (tag.code == 10) {
        finishVertex();
        ++vertex_;
        isYMissing_ = true;
    }
    lastVertexTag_ = tag.end;
    if (vertex_ == 0 || vertex_ > vertices.size()) return;
    const AcDbPolyline::Vertex& vertex = vertices[vertex_ - 1];
    if (tag.code == 10 && touched_ & 1) compareReal(tag.value, vertex.x);
    if (tag.code == 10) afterX_ = tag.end;
    if (tag.code == 20) isYMissing_ = false;
    if (tag.code == 20 && touched_ & 2) compareReal(tag.value, vertex.y);
    if (vertex_ > widths.size() || !(touched_ & 8)) return;
    if (tag.code == 40) compareReal(tag.value, widths[vertex_ - 1].start);
    if (tag.code == 41) compareReal(tag.value, widths[vertex_ - 1].end);
}

void Patcher::finishVertex() {
    if (!isYMissing_) return;
    isYMissing_ = false;
    const double y =
        memberAt<std::vector<AcDbPolyline::Vertex>>(base_, table_->vertices->offset)[vertex_ - 1].y;
    if (y != 0) patch(afterX_, 0, tagText(20, realText(y).view(), lineEnd_));
}

void Patcher::compareTail(const char* begin, const char* end) {
    if (!tail_) return;
    ListPlace at{tail_, GroupWalk{*table_->tail}};
    dxf::TagCursor cursor{begin, end};
    for (dxf::Tag tag; cursor.next(tag);) {
        const auto place = countsInTail(tag) ? at.walk.step(tag) : std::nullopt;
        if (place) compareListed(at, tag, *place);
    }
    finishListed(at);
}

// A translation reaches points along its axes and nothing else.
void Patcher::compareListed(ListPlace& at, const dxf::Tag& tag, const GroupWalk::Place& place) {
    if (place.axis == 0) finishListed(at);
    at.last = place;
    at.behind = tag.end;
    at.seen = (place.axis == 0 ? 0 : at.seen) | 1u << place.axis;
    const GroupValue& each = at.list->values[place.index];
    const bool isPoint = each.role == Role::worldPoint || each.role == Role::flatPoint;
    if (touched_ & (isPoint ? 1u << place.axis : 8u)) compareReal(tag.value, each.value[place.axis]);
}

// What the file leaves out comes behind what it has.
void Patcher::finishListed(ListPlace& at) {
    if (!at.last.group) return;
    const GroupValue& each = at.list->values[at.last.index];
    for (unsigned axis = 0; axis < numbersOf(each.role); ++axis)
        if (const double value = each.value[axis]; value != 0 && !(at.seen & 1u << axis))
            patch(at.behind, 0,
                  tagText(each.code + static_cast<int>(axis) * at.last.group->step, realText(value).view(),
                          lineEnd_));
}

bool Patcher::isAnyMissing() const {
    for (std::size_t i = 0; i < table_->slots.size(); ++i)
        if (!seenAt_[i] && touched_ & table_->slots[i].axes && differsFromFallback(table_->slots[i], base_))
            return true;
    return false;
}

// A missing group goes behind the last one before it in the table that the file has, markers included.
void Patcher::insertMissing(std::string_view bytes) {
    if (!isAnyMissing()) return;
    const char* anchor = defaultAnchor_;
    std::size_t slot = 0;
    for (const Field& field : table_->fields) {
        const auto count = static_cast<std::size_t>(slotsOf(field));
        for (std::size_t i = slot; i < slot + count; ++i)
            if (seenAt_[i]) anchor = seenAt_[i];
        if (field.role == Role::vertices && lastVertexTag_) anchor = lastVertexTag_;
        if (field.role == Role::subclass) anchor = behindMarker(bytes, field.marker).value_or(anchor);
        insertMissing(field, slot, anchor);
        slot += count;
    }
}

// Of a point either all groups are there or the missing ones follow those that are.
void Patcher::insertMissing(const Field& field, std::size_t firstSlot, const char* anchor) {
    const auto count = static_cast<std::size_t>(slotsOf(field));
    bool isNeeded = false;
    for (std::size_t i = firstSlot; i < firstSlot + count; ++i)
        isNeeded = isNeeded || (!seenAt_[i] && differsFromFallback(table_->slots[i], base_));
    if (!isNeeded) return;
    for (std::size_t i = firstSlot; i < firstSlot + count; ++i) {
        const Slot& slot = table_->slots[i];
        if (!seenAt_[i]) patch(anchor, 0, tagText(slot.code, valueText(slot, base_).view(), lineEnd_));
    }
}

namespace {

std::string vertexText(const VertexGroups& groups, void* base, std::string_view lineEnd) {
    const auto& vertices = memberAt<std::vector<AcDbPolyline::Vertex>>(base, groups.offset);
    const auto& widths = memberAt<std::vector<AcDbPolyline::Widths>>(base, groups.widthsOffset);
    std::string bytes = tagString(90, std::to_string(vertices.size()), lineEnd);
    const auto add = [&](int code, double value) {
        bytes += tagString(code, realText(value).view(), lineEnd);
    };
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        add(10, vertices[i].x);
        add(20, vertices[i].y);
        if (i < widths.size()) add(40, widths[i].start);
        if (i < widths.size()) add(41, widths[i].end);
        if (vertices[i].bulge != 0) add(42, vertices[i].bulge);
    }
    return bytes;
}

std::string fieldsText(const FieldTable& table, void* base, const NewObjectForm& form) {
    const std::string_view lineEnd = form.lineEnd;
    std::string bytes;
    std::size_t slot = 0;
    for (const Field& field : table.fields) {
        if (field.role == Role::subclass && form.hasMarkers) bytes += tagString(100, field.marker, lineEnd);
        const auto count = static_cast<std::size_t>(slotsOf(field));
        if (field.role == Role::vertices) bytes += vertexText(*table.vertices, base, lineEnd);
        const bool isOptional =
            field.role == Role::integer || field.role == Role::normal || field.role == Role::height;
        bool isWritten = !isOptional;
        for (std::size_t i = slot; i < slot + count; ++i)
            isWritten = isWritten || differsFromFallback(table.slots[i], base);
        for (std::size_t i = slot; isWritten && i < slot + count; ++i)
            bytes += tagString(table.slots[i].code, valueText(table.slots[i], base).view(), lineEnd);
        slot += count;
    }
    return bytes;
}

} // namespace

std::string newObjectBytes(AcDbEntity& entity, const BlockDefinition& owner, const NewObjectForm& form) {
    std::string bytes;
    const auto add = [&](int code, std::string_view value) { bytes += tagString(code, value, form.lineEnd); };
    add(0, os::toUtf8(std::wstring_view{entity.isA()->dxfName()}));
    if (form.hasHandle) add(5, dxf::handleText(entity.objectId().record()->handle));
    if (form.hasOwner && owner.record->handle != 0) add(330, dxf::handleText(owner.record->handle));
    if (form.hasMarkers) add(100, "AcDbEntity");
    if (owner.isPaper) add(67, "1");
    add(8, entity.layerState().bytes);
    return bytes + fieldsText(*entity.fields().table, entity.fields().base, form);
}

} // namespace qx::db
