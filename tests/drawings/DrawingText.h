// Small but complete drawings for tests, made from compact text: tags are separated by '|', a code and its
// value by the first blank, so that "LINE|10 1.000|20 2.0" is a line's groups.
#pragma once

#include "db/Drawing.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "shape/boxText.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <regex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace drawings {

using Handle = std::uint64_t;

inline std::string hex(Handle handle) {
    char text[20];
    std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
    return text;
}

/// The lines of compact tags, codes padded to three characters.
inline std::string tags(std::string_view compact, std::string_view lineEnd = "\n") {
    std::string lines;
    while (!compact.empty()) {
        const std::string_view tag = compact.substr(0, compact.find('|'));
        compact.remove_prefix(std::min(tag.size() + 1, compact.size()));
        const std::size_t blank = std::min(tag.find(' '), tag.size());
        lines.append(blank < 3 ? 3 - blank : 0, ' ').append(tag.substr(0, blank)).append(lineEnd);
        lines.append(tag.substr(std::min(blank + 1, tag.size()))).append(lineEnd);
    }
    return lines;
}

/// An object's compact tags with what the snippet leaves out: group 0 in front, the handle, and for an entity
/// the layer.
inline std::string completed(std::string_view snippet, std::uint64_t handle, bool isEntity = true) {
    const std::string_view name = snippet.substr(0, snippet.find('|'));
    const std::string rest{snippet.substr(name.size())};
    std::string whole = "0 " + std::string{name};
    if (rest.find("|5 ") == std::string::npos) whole += "|5 " + hex(handle);
    if (isEntity && rest.find("|8 ") == std::string::npos) whole += "|100 AcDbEntity|8 0";
    return whole + rest;
}

/// A group behind others: "|40 1.5".
inline std::string tag(int code, double value) {
    char text[40];
    std::snprintf(text, sizeof text, "|%d %.17g", code, value);
    return text;
}

inline std::string point(int code, const AcGePoint3d& p) {
    return tag(code, p.x) + tag(code + 10, p.y) + tag(code + 20, p.z);
}

struct BlockText {
    std::string name;
    std::vector<std::string> entities; ///< snippets
    std::string base = "10 0.0|20 0.0|30 0.0";
};

struct GroupText {
    std::string name;
    std::vector<std::string> members = {}; ///< handles
    bool isSelectable = true;
};

/// What tells one test drawing from another; handles are given in the order of the lists.
struct DrawingText {
    static constexpr std::uint64_t firstEntity = 0x100, firstInBlocks = 0x400, firstBlock = 0x30,
                                   firstGroup = 0xE0;
    static constexpr std::uint64_t modelSpace = 0x1F, paperSpace = 0x1E, groupDictionary = 0xD;

    std::vector<std::string> entities = {}; ///< snippets, from handle 100 on
    std::vector<BlockText> blocks = {};
    std::vector<GroupText> groups = {};
    std::string version = "AC1015", codePage = "ANSI_936", handSeed = "1000", currentLayer = "0";
    std::string lineEnd = "\n";
    std::vector<std::string> layers = {}; ///< besides 0, LOCKED, FROZEN and OFF: "Blue|70 0|62 5"
    std::string header = {};              ///< more variables: "|9 $UCSORG|10 1|20 0|30 0"
    bool hasGroupDictionary = true;

    Handle add(const std::string& snippet) {
        entities.push_back(snippet);
        return firstEntity + entities.size() - 1;
    }
    /// Snippets that are separated by "; ".
    void addEach(std::string_view snippets) {
        for (std::size_t end = 0; end != snippets.npos;
             snippets.remove_prefix(std::min(end + 2, snippets.size())))
            add(std::string{snippets.substr(0, end = snippets.find("; "))});
    }
    Handle line(const AcGePoint3d& from, const AcGePoint3d& to, const std::string& layer = "0") {
        return add("LINE|8 " + layer + point(10, from) + point(11, to));
    }
    Handle circle(const AcGePoint3d& centre, double radius) {
        return add("CIRCLE" + point(10, centre) + tag(40, radius));
    }
    Handle group(const std::string& name, const std::vector<Handle>& members) {
        groups.push_back({name});
        for (const Handle each : members) groups.back().members.push_back(hex(each));
        return firstGroup + groups.size() - 1;
    }

    std::string bytes() const {
        return tags("0 SECTION|2 HEADER|9 $ACADVER|1 " + version + "|9 $DWGCODEPAGE|3 " + codePage +
                        "|9 $CLAYER|8 " + currentLayer + "|9 $HANDSEED|5 " + handSeed + header +
                        "|0 ENDSEC|0 SECTION|2 TABLES" + layerTable() + blockRecords() +
                        "|0 ENDSEC|0 SECTION|2 BLOCKS" + blockDefinitions() +
                        "|0 ENDSEC|0 SECTION|2 ENTITIES" + listed(entities, firstEntity) +
                        "|0 ENDSEC|0 SECTION|2 OBJECTS" + objects() + "|0 ENDSEC|0 EOF",
                    lineEnd);
    }

private:
    std::string layerTable() const {
        std::string text = "|0 TABLE|2 LAYER|5 2|70 6";
        std::vector<std::string> all{"0|70 0|62 7", "LOCKED|70 4|62 7", "FROZEN|70 1|62 7", "OFF|70 0|62 -7"};
        all.insert(all.end(), layers.begin(), layers.end());
        std::uint64_t handle = 0x10;
        for (const std::string& layer : all) text += "|0 LAYER|5 " + hex(handle++) + "|2 " + layer;
        if (currentLayer != "0") text += "|0 LAYER|5 " + hex(handle) + "|2 " + currentLayer + "|70 0|62 7";
        return text + "|0 ENDTAB";
    }
    std::string blockRecords() const {
        std::string text = "|0 TABLE|2 BLOCK_RECORD|5 1|70 2|0 BLOCK_RECORD|5 1F|2 *Model_Space"
                           "|0 BLOCK_RECORD|5 1E|2 *Paper_Space";
        for (std::size_t i = 0; i < blocks.size(); ++i)
            text += "|0 BLOCK_RECORD|5 " + hex(firstBlock + i) + "|2 " + blocks[i].name;
        return text + "|0 ENDTAB";
    }
    std::string blockDefinitions() const {
        std::string text = "|0 BLOCK|8 0|2 *Model_Space|70 0|10 0.0|20 0.0|30 0.0|0 ENDBLK|8 0"
                           "|0 BLOCK|8 0|2 *Paper_Space|70 0|10 0.0|20 0.0|30 0.0|0 ENDBLK|8 0";
        std::uint64_t handle = firstInBlocks;
        for (const BlockText& block : blocks) {
            text += "|0 BLOCK|8 0|2 " + block.name + "|70 0|" + block.base + listed(block.entities, handle);
            text += "|0 ENDBLK|8 0";
            handle += block.entities.size();
        }
        return text;
    }
    static std::string listed(const std::vector<std::string>& snippets, std::uint64_t handle) {
        std::string text;
        for (const std::string& snippet : snippets) text += "|" + completed(snippet, handle++);
        return text;
    }
    std::string objects() const {
        if (!hasGroupDictionary) return "|0 DICTIONARY|5 C|330 0|100 AcDbDictionary";
        std::string text = "|0 DICTIONARY|5 C|330 0|100 AcDbDictionary|3 ACAD_GROUP|350 D"
                           "|0 DICTIONARY|5 D|330 C|100 AcDbDictionary";
        for (std::size_t i = 0; i < groups.size(); ++i)
            text += "|3 " + groups[i].name + "|350 " + hex(firstGroup + i);
        for (std::size_t i = 0; i < groups.size(); ++i) {
            text += "|0 GROUP|5 " + hex(firstGroup + i) + "|330 D|100 AcDbGroup|300 |70 0|71 ";
            text += groups[i].isSelectable ? "1" : "0";
            for (const std::string& member : groups[i].members) text += "|340 " + member;
        }
        return text;
    }
};

/// The drawing, locked for changes; a refusal is an error of the test. Braces mean the other function.
template <std::same_as<std::string> Bytes> std::unique_ptr<qx::db::Drawing> read(const Bytes& bytes) {
    auto drawing = qx::db::Drawing::fromBytes(bytes, "test.dxf");
    if (!drawing) throw std::runtime_error{drawing.error()};
    (*drawing)->setLocked(true);
    return std::move(*drawing);
}
inline std::unique_ptr<qx::db::Drawing> read(const DrawingText& content) { return read(content.bytes()); }

inline AcDbObjectId idOf(const qx::db::Drawing& drawing, std::uint64_t handle) {
    return AcDbObjectId{drawing.find(handle)};
}

/// One undo step that runs `change`; false when nothing was changed.
inline bool step(qx::db::Drawing& drawing, const std::function<void()>& change) {
    drawing.history().begin("step");
    change();
    return drawing.history().end();
}

/// Opens the entity, moves it and closes it.
inline Acad::ErrorStatus move(const qx::db::Drawing& drawing, std::uint64_t handle,
                              const AcGeMatrix3d& matrix) {
    AcDbObjectPointer<AcDbEntity> entity{idOf(drawing, handle), AcDb::kForWrite};
    return entity.openStatus() == Acad::eOk ? entity->transformBy(matrix) : entity.openStatus();
}

inline Acad::ErrorStatus erase(const qx::db::Drawing& drawing, std::uint64_t handle, bool erasing = true) {
    AcDbObjectPointer<AcDbObject> object{idOf(drawing, handle), AcDb::kForWrite, true};
    return object.openStatus() == Acad::eOk ? object->erase(erasing) : object.openStatus();
}

enum class Marked { before, after };

/// Compact tags before or after what is marked in them has happened: in "10 1.0>2.0" the value changes,
/// "|>30 7.0" comes.
inline std::string as(Marked state, const std::string& tags) {
    static const std::regex news{"\\|?>[^|;]*"}, olds{"([0-9]+ )[^|;>]*>|>"};
    return state == Marked::after ? std::regex_replace(tags, olds, "$1") : std::regex_replace(tags, news, "");
}

inline AcGeMatrix3d shift(double x, double y, double z = 0) { return AcGeMatrix3d::translation({x, y, z}); }

/// Extents of an entity as text, or "status N".
inline std::string extents(const qx::db::Drawing& drawing, std::uint64_t handle) {
    AcDbObjectPointer<AcDbEntity> entity{idOf(drawing, handle)};
    AcDbExtents box;
    const Acad::ErrorStatus status =
        entity.openStatus() == Acad::eOk ? entity->getGeomExtents(box) : entity.openStatus();
    if (status != Acad::eOk) return "status " + std::to_string(status);
    return shapes::text(qx::shape::Box{box.minPoint(), box.maxPoint()});
}

} // namespace drawings
