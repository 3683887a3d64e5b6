// A text DXF as its lines: read here without the product's reader, so that the two can't share a mistake.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qx::tests {

struct Tag {
    std::string_view codeLine, valueLine; ///< as in the file, a CR included
    std::size_t object;                   ///< index in TagList::objects
    int code() const;
    bool isCoordinate() const { return code() >= 10 && code() <= 37; }
    bool isAngle() const { return code() == 50 || code() == 51; }
};

struct Object {
    std::string type, handle, layer;
};

struct TagList {
    explicit TagList(std::string content);
    TagList(const TagList&) = delete;
    TagList& operator=(const TagList&) = delete;

    const Object& objectOf(const Tag& tag) const { return objects[tag.object]; }
    /// The handles of the entities on locked layers.
    std::set<std::string> lockedEntities() const;

    std::string bytes;
    std::vector<Tag> tags;
    std::vector<Object> objects; ///< what begins with a 0 tag; the first stands for what precedes
};

enum class Rewrites { coordinates, anglesAsWell };

/// The handles of the objects with a line that differs. Fails when anything does but those that may; an angle
/// may be a new line too, since files leave out those that are 0.
std::set<std::string> movedObjects(const TagList& before, const TagList& after,
                                   Rewrites rewrites = Rewrites::coordinates);

/// How far the numbers of the two are apart at most; infinity if anything else differs.
double greatestDifference(const TagList& left, const TagList& right);

} // namespace qx::tests
