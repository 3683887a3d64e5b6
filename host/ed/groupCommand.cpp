#include "ed/forms.h"
#include "ed/hostCommands.h"
#include "ed/prompts.h"
#include "os/encoding.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace qx::ed {
namespace {

bool canBeInName(char c) {
    constexpr std::string_view forbidden = "<>/\\\":;?*|,=`\x7F";
    return static_cast<unsigned char>(c) >= ' ' && forbidden.find(c) == std::string_view::npos;
}

bool isName(const std::string& text) {
    constexpr std::size_t longest = 255;
    return !text.empty() && std::ranges::all_of(text, canBeInName) && text.front() != ' ' &&
           text.back() != ' ' && os::brokenUtf8In(text) == text.size() && os::toWide(text).size() <= longest;
}

// Nothing when the person cancels; empty for an unnamed group.
std::optional<std::string> askName(Session& session) {
    for (;;) {
        const auto answer = askText(session.line(), {.prompt = "输入编组名或 <未命名>: "});
        const std::string& name = answer.value;
        if (answer.kind == Answered::cancel) return std::nullopt;
        if (answer.kind == Answered::none) return name;
        if (!isName(name))
            session.line().refuse("编组名无效。", '"' + name + "\" can't be the name of a group");
        else if (session.drawing()->hasGroup(name))
            session.line().refuse("编组“" + name + "”已存在。", "there is a group \"" + name + "\" already");
        else
            return name;
    }
}

// A group names its members by their handles.
std::vector<db::Record*> askMembers(Session& session) {
    std::vector<db::Record*> members;
    for (const AcDbObjectId id : askObjects()) members.push_back(id.record());
    const auto unnamed = std::erase_if(members, std::not_fn(hasOwnHandle));
    if (unnamed > 0) say(session, std::to_string(unnamed) + " 个对象没有自己的句柄，不能编组。");
    return members;
}

} // namespace

void groupCommand() {
    Session& session = *Session::current();
    db::Drawing& drawing = *session.drawing();
    if (!drawing.version().hasGroups())
        return session.line().refuse("R12 及更早版本的图形不能有编组。",
                                     "a drawing of R12 or before can't have groups");
    const auto answer = askName(session);
    if (!answer) return;
    const auto members = askMembers(session);
    if (members.empty()) return say(session, "没有选择对象，没有建立编组。");
    const std::string name = answer->empty() ? drawing.freeGroupName() : *answer;
    drawing.makeGroup(name, members);
    say(session, "编组“" + name + "”有 " + std::to_string(members.size()) + " 个对象。");
}

} // namespace qx::ed
