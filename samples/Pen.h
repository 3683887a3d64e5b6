// Draws entities into one block or into model space, each with the next free handle.
// Points are world coordinates (in a block: the block's own); angles are degrees, counter-clockwise.
// Layer, group and mirroring stay as set until changed.
#pragma once

#include "Frame.h"

#include <cmath>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace samples {

struct Vertex {
    Point at;
    double bulge = 0; ///< of the segment that starts here; positive is counter-clockwise
    Vertex(Point p, double b = 0) : at(p), bulge(b) {}
    Vertex(double x, double y, double b = 0) : at{x, y}, bulge(b) {}
};

struct Elevated {
    Point at;
    double z;
};

enum class Justify { left, centre, right, middleLeft, middleCentre, middleRight };
enum class Closed { no, yes };

struct AttributeSlot {
    const char* tag;
    const char* prompt;
    Point offset; ///< from the insertion point, to the middle of the text
    double height;
};

struct Placement {
    double scaleX = 1;
    double scaleY = 1;
    double angle = 0;
};

inline Point polar(Point from, double angle, double distance) {
    const double radians = angle * 3.14159265358979323846 / 180;
    return {from.x + distance * std::cos(radians), from.y + distance * std::sin(radians)};
}

inline Point turned(Point p, double angle) {
    const double radians = angle * 3.14159265358979323846 / 180;
    return {p.x * std::cos(radians) - p.y * std::sin(radians),
            p.x * std::sin(radians) + p.y * std::cos(radians)};
}

class Pen {
public:
    Pen(TagWriter& out, Handle& next, Handle owner) : out_(out), next_(next), owner_(owner) {}

    void layer(std::string name) { layer_ = std::move(name); }
    void textStyle(std::string name) { style_ = std::move(name); }
    /// What follows is drawn in the coordinates of a mirrored object: extrusion 0,0,-1.
    void mirrored(bool on) { mirrored_ = on; }
    /// The next entity gets this handle; throws when it is already behind, since scripts rely on it.
    void series(Handle first);

    Handle line(Point from, Point to);
    Handle circle(Point centre, double radius);
    Handle arc(Point centre, double radius, double fromAngle, double toAngle);
    Handle ellipse(Point centre, Point majorAxis, double ratio);
    Handle point(Point at);
    Handle polyline(const std::vector<Vertex>& vertices, Closed closed, double width = 0);
    Handle rectangle(Point corner, double width, double height);
    /// With vertices that are objects of their own, which take handles behind the polyline's.
    Handle polyline2d(const std::vector<Vertex>& vertices, Closed closed, double width = 0);
    Handle polyline3d(const std::vector<Elevated>& vertices);
    Handle text(Point at, double height, std::string_view content, Justify justify = Justify::left,
                double angle = 0);
    Handle multilineText(Point topLeft, double height, double width, std::string_view content);
    Handle insert(std::string_view block, Point at, Placement placement = {});
    Handle insertWith(std::string_view block, Point at, const std::vector<AttributeSlot>& slots,
                      const std::vector<std::string>& values, double angle = 0);
    void definitions(const std::vector<AttributeSlot>& slots);

private:
    friend class GroupScope;
    Handle open(const char* kind, const char* subclass);
    void place(int code, Point p) { out_.point3(code, {mirrored_ ? -p.x : p.x, p.y}); }
    void extrude();
    void writeText(Point at, double height, std::string_view content, Justify justify, double angle);
    void openInsert(std::string_view block, Point at, bool attributes);
    void openVertices(int flags, double width);
    void openVertex(Handle polyline, const char* subclass, Elevated at);
    void endVertices(Handle polyline);

    TagWriter& out_;
    Handle& next_;
    Handle owner_;
    std::string layer_ = "0";
    std::string style_ = "汉字";
    bool mirrored_ = false;
    Group* group_ = nullptr;
};

/// While it lives, what the pen draws belongs to the group.
class GroupScope {
public:
    GroupScope(Pen& pen, Group& group) : pen_(pen) { pen_.group_ = &group; }
    ~GroupScope() { pen_.group_ = nullptr; }
    GroupScope(const GroupScope&) = delete;
    GroupScope& operator=(const GroupScope&) = delete;

private:
    Pen& pen_;
};

/// A whole drawing in memory. Block definitions take handles from firstFreeHandle on, groups from firstGroup
/// on; model space goes on after the blocks, or where a series starts.
class Drawing {
public:
    static constexpr Handle firstGroup = 0x2000;

    Drawing(Frame frame, LineEnd lineEnd, Encoding encoding);
    Drawing(const Drawing&) = delete; // the pen points into it
    Drawing& operator=(const Drawing&) = delete;
    void block(std::string name, const std::function<void(Pen&)>& draw, bool hasAttributes = false);
    Pen& pen() { return model_; }
    Group& group(std::string name, std::string description);
    std::string bytes() const;

private:
    TagWriter emptyWriter() const { return {lineEnd_, encoding_}; }

    Frame frame_;
    LineEnd lineEnd_;
    Encoding encoding_;
    Handle next_ = firstFreeHandle;
    std::vector<BlockName> blockNames_;
    std::deque<Group> groups_; // references to its groups are handed out
    TagWriter blocks_, entities_;
    Pen model_;
};

} // namespace samples
