// What surrounds the entities of a drawing file: HEADER, CLASSES, TABLES, the two layout blocks, and OBJECTS
// with the group dictionary and both layouts. Handles below firstFreeHandle belong to the frame. The sections
// are separate functions, so that a caller can stream millions of entities between them.
#pragma once

#include "TagWriter.h"

#include <string>
#include <vector>

namespace samples {

enum class LayerState { shown, locked, frozen, off };

struct Layer {
    std::string name;
    int colour = 7;
    std::string lineType = "Continuous";
    LayerState state = LayerState::shown;
    int lineWeight = -3; ///< hundredths of a millimetre; -3: the default
};

struct BlockName {
    std::string name;
    Handle record = 0;
};

struct Group {
    std::string name;
    std::string description;
    Handle handle = 0;
    std::vector<Handle> members;
};

enum class Version { r2000, r2007, r2010, r2018 };
enum class Unit { millimetre = 4, metre = 6 };

struct Frame {
    Version version = Version::r2010;
    Unit unit = Unit::millimetre;
    Point min, max;            ///< extents of model space
    std::vector<Layer> layers; ///< beside layer 0
    std::string currentLayer = "0";
    std::string textStyle = "Standard";
    std::string application = "GENAPP"; ///< registered for extended data
    double lineTypeScale = 100;
    double textSize = 350; ///< of new text
};

inline constexpr Handle modelSpace = 0x1F;
inline constexpr Handle groupDictionary = 0xD;
inline constexpr Handle firstFreeHandle = 0x100;

void writeHeader(TagWriter& out, const Frame& frame, Handle nextHandle);
void writeTables(TagWriter& out, const Frame& frame, const std::vector<BlockName>& blocks);
void openBlock(TagWriter& out, const BlockName& block, Handle begin, bool hasAttributes = false);
void closeBlock(TagWriter& out, const BlockName& block, Handle end);
void writeLayoutBlocks(TagWriter& out);
void writeObjects(TagWriter& out, const Frame& frame, const std::vector<Group>& groups);
void openSection(TagWriter& out, const char* name);
void closeSection(TagWriter& out);

/// The start every entity has in common, up to its own subclass mark. `group` 0: a member of none.
void openEntity(TagWriter& out, const char* kind, Handle handle, Handle group, Handle owner,
                std::string_view layer);

} // namespace samples
