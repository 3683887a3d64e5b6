#include "drawings/DrawingText.h"

#include <map>

using namespace drawings;
using qx::db::Drawing;
using qx::db::Record;

namespace {

Record* appendLine(Drawing& drawing) {
    auto* line = new AcDbLine{{0, 0, 0}, {1, 0, 0}};
    Record* record = drawing.append(drawing.modelSpace(), line);
    line->close();
    return record;
}

/// Entities with these handles, in this order.
std::string drawingWith(const std::vector<Handle>& handles) {
    DrawingText text;
    for (std::size_t i = 0; i < handles.size(); ++i)
        text.entities.push_back("POINT|5 " + hex(handles[i]) + "|10 " + std::to_string(i));
    return text.bytes();
}

TEST(Handles, findTheFirstRecordThatHasThem) {
    constexpr Handle top = ~Handle{0};
    std::vector<Handle> dense, sparse, collected;
    for (Handle i = 0; i < 500; ++i) {
        dense.push_back(0x100 + i);
        sparse.push_back(0x100 + (i * i * i << 10));
        collected.push_back(i % 3 == 0 ? top - 2000 - i : 0x100 + i * 7 % 350); // many stand twice
    }
    for (const auto& handles : {dense, sparse, collected, {}, {top - 2000, 0x100}}) {
        const auto drawing = read(drawingWith(handles));
        std::map<Handle, const Record*> expected;
        for (const Record* each = drawing->firstRecord(); each; each = qx::db::RecordChain::next(each))
            if (each->handle) expected.emplace(each->handle, each);
        for (const Handle handle : {Handle{0x99999}, top, top - 2000, Handle{0x100}})
            EXPECT_EQ(drawing->find(handle), expected.contains(handle) ? expected[handle] : nullptr);
        for (int i = 0; i < 700; ++i) {
            const Record* made = appendLine(*drawing);
            EXPECT_TRUE(expected.emplace(made->handle, made).second) << hex(made->handle) << " is taken";
        }
        for (const auto& [handle, record] : expected) EXPECT_EQ(drawing->find(handle), record) << hex(handle);
        EXPECT_EQ(drawing->find(0), nullptr);
    }
}

} // namespace
