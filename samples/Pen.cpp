#include "Pen.h"

#include <stdexcept>

namespace samples {
namespace {

struct JustifyCodes {
    int horizontal; // group 72
    int vertical;   // group 73, 74 in attributes
    double shift;   // of the left end, in text widths
    double drop;    // of the base line, in text heights
};

JustifyCodes codesOf(Justify justify) {
    switch (justify) {
    case Justify::left:
        return {0, 0, 0, 0};
    case Justify::centre:
        return {1, 0, 0.5, 0};
    case Justify::right:
        return {2, 0, 1, 0};
    case Justify::middleLeft:
        return {0, 2, 0, 0.5};
    case Justify::middleCentre:
        return {1, 2, 0.5, 0.5};
    default:
        return {2, 2, 1, 0.5};
    }
}

// A drafter's rule of thumb; programs work out the left end of justified text anew from their own fonts.
double roughWidth(std::string_view utf8, double height) {
    double em = 0;
    for (const char c : utf8) em += (c & 0x80) == 0 ? 0.7 : (c & 0x40) != 0 ? 1.1 : 0;
    return em * height * 0.8;
}

} // namespace

void Pen::series(Handle first) {
    if (first < next_) throw std::logic_error("a series of handles starts behind the last handle");
    next_ = first;
}

Handle Pen::open(const char* kind, const char* subclass) {
    const Handle handle = next_++;
    openEntity(out_, kind, handle, group_ ? group_->handle : 0, owner_, layer_);
    out_.text(100, subclass);
    if (group_) group_->members.push_back(handle);
    return handle;
}

void Pen::extrude() {
    if (!mirrored_) return;
    out_.point(210, {0, 0});
    out_.real(230, -1);
}

Handle Pen::line(Point from, Point to) {
    const Handle handle = open("LINE", "AcDbLine");
    out_.point3(10, from);
    out_.point3(11, to);
    return handle;
}

Handle Pen::ellipse(Point centre, Point majorAxis, double ratio) {
    const Handle handle = open("ELLIPSE", "AcDbEllipse");
    out_.point3(10, centre);
    out_.point3(11, majorAxis);
    out_.point(210, {0, 0});
    out_.real(230, 1);
    out_.real(40, ratio);
    out_.real(41, 0);
    out_.real(42, 6.28318530717958647692);
    return handle;
}

Handle Pen::point(Point at) {
    const Handle handle = open("POINT", "AcDbPoint");
    out_.point3(10, at);
    return handle;
}

Handle Pen::circle(Point centre, double radius) {
    const Handle handle = open("CIRCLE", "AcDbCircle");
    place(10, centre);
    out_.real(40, radius);
    extrude();
    return handle;
}

Handle Pen::arc(Point centre, double radius, double fromAngle, double toAngle) {
    const Handle handle = open("ARC", "AcDbCircle");
    place(10, centre);
    out_.real(40, radius);
    extrude();
    out_.text(100, "AcDbArc");
    out_.real(50, mirrored_ ? 180 - toAngle : fromAngle);
    out_.real(51, mirrored_ ? 180 - fromAngle : toAngle);
    return handle;
}

Handle Pen::polyline(const std::vector<Vertex>& vertices, Closed closed, double width) {
    const Handle handle = open("LWPOLYLINE", "AcDbPolyline");
    out_.integer(90, static_cast<std::int64_t>(vertices.size()));
    out_.integer(70, closed == Closed::yes ? 1 : 0);
    out_.real(43, width);
    for (const auto& vertex : vertices) {
        out_.point(10, vertex.at);
        if (vertex.bulge != 0) out_.real(42, vertex.bulge);
    }
    return handle;
}

void Pen::openVertices(int flags, double width) {
    out_.integer(66, 1);
    out_.point3(10, {0, 0});
    out_.integer(70, flags);
    if (width == 0) return;
    out_.real(40, width);
    out_.real(41, width);
}

void Pen::openVertex(Handle polyline, const char* subclass, Elevated at) {
    openEntity(out_, "VERTEX", next_++, 0, polyline, layer_);
    out_.text(100, "AcDbVertex");
    out_.text(100, subclass);
    out_.point(10, at.at);
    out_.real(30, at.z);
}

void Pen::endVertices(Handle polyline) { openEntity(out_, "SEQEND", next_++, 0, polyline, layer_); }

Handle Pen::polyline2d(const std::vector<Vertex>& vertices, Closed closed, double width) {
    const Handle handle = open("POLYLINE", "AcDb2dPolyline");
    openVertices(closed == Closed::yes ? 1 : 0, width);
    for (const auto& vertex : vertices) {
        openVertex(handle, "AcDb2dVertex", {vertex.at, 0});
        if (vertex.bulge != 0) out_.real(42, vertex.bulge);
        out_.integer(70, 0);
    }
    endVertices(handle);
    return handle;
}

Handle Pen::polyline3d(const std::vector<Elevated>& vertices) {
    const Handle handle = open("POLYLINE", "AcDb3dPolyline");
    openVertices(8, 0);
    for (const auto& vertex : vertices) {
        openVertex(handle, "AcDb3dPolylineVertex", vertex);
        out_.integer(70, 32);
    }
    endVertices(handle);
    return handle;
}

Handle Pen::rectangle(Point corner, double width, double height) {
    return polyline(
        {corner, corner + Point{width, 0}, corner + Point{width, height}, corner + Point{0, height}},
        Closed::yes);
}

void Pen::writeText(Point at, double height, std::string_view content, Justify justify, double angle) {
    const auto [horizontal, vertical, shift, drop] = codesOf(justify);
    const bool justified = horizontal != 0 || vertical != 0;
    const Point left =
        polar(polar(at, angle, -shift * roughWidth(content, height)), angle + 90, -drop * height);
    out_.point3(10, left);
    out_.real(40, height);
    out_.text(1, content);
    if (angle != 0) out_.real(50, angle);
    out_.real(41, 0.8);
    out_.text(7, style_);
    if (!justified) return;
    out_.integer(72, horizontal);
    out_.point3(11, at);
}

Handle Pen::text(Point at, double height, std::string_view content, Justify justify, double angle) {
    const Handle handle = open("TEXT", "AcDbText");
    writeText(at, height, content, justify, angle);
    out_.text(100, "AcDbText");
    if (codesOf(justify).vertical != 0) out_.integer(73, codesOf(justify).vertical);
    return handle;
}

Handle Pen::multilineText(Point topLeft, double height, double width, std::string_view content) {
    const Handle handle = open("MTEXT", "AcDbMText");
    out_.point3(10, topLeft);
    out_.real(40, height);
    out_.real(41, width);
    out_.integer(71, 1);
    out_.integer(72, 5);
    out_.text(1, content);
    out_.text(7, style_);
    out_.point3(11, {1, 0});
    out_.integer(73, 1);
    out_.real(44, 1);
    return handle;
}

void Pen::openInsert(std::string_view block, Point at, bool attributes) {
    if (attributes) out_.integer(66, 1);
    out_.text(2, block);
    place(10, at);
}

Handle Pen::insert(std::string_view block, Point at, Placement placement) {
    const Handle handle = open("INSERT", "AcDbBlockReference");
    openInsert(block, at, false);
    if (placement.scaleX != 1 || placement.scaleY != 1) {
        out_.real(41, placement.scaleX);
        out_.real(42, placement.scaleY);
        out_.real(43, 1);
    }
    if (placement.angle != 0) out_.real(50, mirrored_ ? -placement.angle : placement.angle);
    extrude();
    return handle;
}

Handle Pen::insertWith(std::string_view block, Point at, const std::vector<AttributeSlot>& slots,
                       const std::vector<std::string>& values, double angle) {
    const Handle handle = open("INSERT", "AcDbBlockReference");
    openInsert(block, at, true);
    if (angle != 0) out_.real(50, angle);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        openEntity(out_, "ATTRIB", next_++, 0, handle, layer_);
        out_.text(100, "AcDbText");
        writeText(at + turned(slots[i].offset, angle), slots[i].height, values.at(i), Justify::middleCentre,
                  angle);
        out_.text(100, "AcDbAttribute");
        out_.integer(280, 0);
        out_.text(2, slots[i].tag);
        out_.integer(70, 0);
        out_.integer(74, 2);
    }
    openEntity(out_, "SEQEND", next_++, 0, handle, layer_);
    return handle;
}

void Pen::definitions(const std::vector<AttributeSlot>& slots) {
    for (const auto& slot : slots) {
        open("ATTDEF", "AcDbText");
        writeText(slot.offset, slot.height, slot.tag, Justify::middleCentre, 0);
        out_.text(100, "AcDbAttributeDefinition");
        out_.integer(280, 0);
        out_.text(3, slot.prompt);
        out_.text(2, slot.tag);
        out_.integer(70, 0);
        out_.integer(74, 2);
    }
}

Drawing::Drawing(Frame frame, LineEnd lineEnd, Encoding encoding)
    : frame_(std::move(frame)), lineEnd_(lineEnd), encoding_(encoding), blocks_(emptyWriter()),
      entities_(emptyWriter()), model_(entities_, next_, modelSpace) {}

void Drawing::block(std::string name, const std::function<void(Pen&)>& draw, bool hasAttributes) {
    const BlockName block{std::move(name), next_++};
    openBlock(blocks_, block, next_++, hasAttributes);
    Pen pen(blocks_, next_, block.record);
    draw(pen);
    closeBlock(blocks_, block, next_++);
    blockNames_.push_back(block);
}

Group& Drawing::group(std::string name, std::string description) {
    groups_.push_back({std::move(name), std::move(description), firstGroup + groups_.size(), {}});
    return groups_.back();
}

std::string Drawing::bytes() const {
    if (next_ > firstGroup) throw std::logic_error("the entities' handles reach those of the groups");
    TagWriter out = emptyWriter();
    writeHeader(out, frame_, firstGroup + groups_.size());
    writeTables(out, frame_, blockNames_);
    openSection(out, "BLOCKS");
    writeLayoutBlocks(out);
    out.raw(blocks_);
    closeSection(out);
    openSection(out, "ENTITIES");
    out.raw(entities_);
    closeSection(out);
    writeObjects(out, frame_, {groups_.begin(), groups_.end()});
    return out.bytes();
}

} // namespace samples
