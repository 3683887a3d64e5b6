#include "ed/entityPrompt.h"

#include "ed/forms.h"
#include "ed/picking.h"

#include <variant>

namespace qx::ed {
namespace {

struct Refusal {
    std::string sentence;
    std::string reason; ///< in English
};
using PickOrRefusal = std::variant<EntityPick, Refusal>;

AcGePoint3d takenPoint(Session& session, const TypedPoint& typed) {
    return session.lastPoint = session.frame().resolved(typed, session.lastPoint);
}

EntityPick pickAt(Session& session, const TypedPoint& typed) {
    const AcGePoint3d user = takenPoint(session, typed);
    return {pickedAt(*session.drawing(), session.frame().toWorld(user), session.pickReach()), user};
}

PickOrRefusal named(Session& session, const TypedPick& typed, const std::string& text) {
    if (!typed.handle) return EntityPick{nullptr, takenPoint(session, typed.point)};
    db::Record* record = session.drawing()->find(*typed.handle);
    if (!record) return Refusal{"没有这个句柄的对象。", "no object has the handle in " + text};
    if (record->has(db::Record::erased))
        return Refusal{"该对象已删除。", "the object of " + text + " is erased"};
    if (!session.drawing()->isSelectable(record))
        return Refusal{"该对象不能选择。", "the object of " + text + " can't be selected"};
    return EntityPick{record, takenPoint(session, typed.point)};
}

PickOrRefusal taken(Session& session, const std::string& text) {
    if (const auto point = parsePoint(text)) return pickAt(session, *point);
    const std::string said = abridged(text);
    if (const auto pick = parsePick(text)) return named(session, *pick, said);
    if (parseHandent(text))
        return Refusal{"需要拾取点: (list (handent \"句柄\") (list x y z))。",
                       said + " does not say where the object is picked: (list " + said + " (list x y z))"};
    return Refusal{"需要点，或 (list (handent \"句柄\") (list x y z))。", '"' + said + "\" picks nothing"};
}

} // namespace

Answer<EntityPick> askEntity(Session& session, const Request& request) {
    for (;;) {
        const Input input = session.line().ask(Ask::entity, request.prompt);
        if (input.kind == Input::Kind::cancel) return {};
        if (input.kind == Input::Kind::enter) return {.kind = Answered::none, .value = {}, .keyword = {}};
        if (auto keyword = request.keywords.match(input.text))
            return {.kind = Answered::keyword, .value = {}, .keyword = std::move(*keyword)};
        const PickOrRefusal pick = taken(session, input.text);
        if (const auto* picked = std::get_if<EntityPick>(&pick))
            return {.kind = Answered::value, .value = *picked, .keyword = {}};
        const auto& [sentence, reason] = std::get<Refusal>(pick);
        session.line().refuse(sentence, reason);
    }
}

} // namespace qx::ed
