#include "ed/forms.h"

#include "dxf/Tag.h"
#include "ed/FormReader.h"

#include <utility>

namespace qx::ed {
namespace {

FormReader& takeHandent(FormReader& reader, std::uint64_t& handle) {
    return reader.mark('(').word("HANDENT").handle(handle).mark(')');
}

} // namespace

bool hasOwnHandle(const db::Record* record) {
    return record->handle != 0 && db::RecordChain::drawingOf(record)->find(record->handle) == record;
}

std::string handentForm(std::uint64_t handle) { return "(handent \"" + dxf::handleText(handle) + "\")"; }

std::string pickForm(const db::Record* record, const AcGePoint3d& point) {
    return "(list " + (record ? handentForm(record->handle) : "nil") + " (list " + textOf(point, ' ') + "))";
}

std::optional<std::uint64_t> parseHandent(std::string_view form) {
    std::uint64_t handle = 0;
    FormReader reader{form};
    return takeHandent(reader, handle).isComplete() ? std::optional{handle} : std::nullopt;
}

std::optional<TypedPick> parsePick(std::string_view form) {
    TypedPick pick;
    auto& [x, y, z] = pick.point.coordinates;
    FormReader reader{form};
    reader.mark('(').word("LIST");
    reader.isAt('(') ? takeHandent(reader, pick.handle.emplace()) : reader.word("NIL");
    reader.mark('(').word("LIST").real(x).real(y);
    if (!reader.isAt(')')) reader.real(z);
    return reader.mark(')').mark(')').isComplete() ? std::optional{pick} : std::nullopt;
}

std::optional<TypedSelection> parseSelection(std::string_view form) {
    TypedSelection selection;
    FormReader reader{form};
    reader.mark('(').word("SELECT");
    selection.adds = reader.isAt('a') || reader.isAt('A');
    if (selection.adds) reader.word("ADD");
    while (reader.isAt('(')) takeHandent(reader, selection.handles.emplace_back());
    return reader.mark(')').isComplete() ? std::optional{std::move(selection)} : std::nullopt;
}

} // namespace qx::ed
