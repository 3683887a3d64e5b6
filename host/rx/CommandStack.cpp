#include "CommandStack.h"

#include "names.h"
#include "os/encoding.h"

#include <algorithm>

ACRX_DEFINE_MEMBERS(AcEdCommand, AcRxObject, nullptr)
ACRX_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject, nullptr)

namespace qx::rx {
namespace {

std::wstring_view viewOf(const ACHAR* text) { return text ? std::wstring_view{text} : std::wstring_view{}; }

class ResourceHandleScope {
public:
    explicit ResourceHandleScope(HINSTANCE handle)
        : old_{AfxGetResourceHandle()}, switched_{handle != nullptr} {
        if (switched_) AfxSetResourceHandle(handle);
    }
    ~ResourceHandleScope() {
        if (switched_) AfxSetResourceHandle(old_);
    }
    ResourceHandleScope(const ResourceHandleScope&) = delete;
    ResourceHandleScope& operator=(const ResourceHandleScope&) = delete;

private:
    HINSTANCE old_;
    bool switched_;
};

} // namespace

void Command::retire() {
    stale_ = true;
    entry_.function = nullptr;
    entry_.uiContext = nullptr;
    entry_.resources = nullptr;
}

Outcome Command::run() const {
    const std::string name = os::toUtf8(entry_.global);
    if (stale_)
        return Outcome::failure("The module of the command " + name + " was unloaded; load it again.");
    const ResourceHandleScope resources{entry_.resources};
    if (const auto problem = thrownBy(entry_.owner, entry_.function))
        return Outcome::failure("The command " + name + " failed: " + *problem + ".");
    return {};
}

Acad::ErrorStatus CommandStack::addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                           const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                                           AcRxFunctionPtr functionAddr, AcEdUIContext* UIContext, int fcode,
                                           HINSTANCE hResourceHandle, AcEdCommand** cmdPtrRet) {
    const auto groupName = viewOf(cmdGroupName);
    const auto global = viewOf(cmdGlobalName);
    const auto local = viewOf(cmdLocalName).empty() ? global : viewOf(cmdLocalName);
    if (groupName.empty() || global.empty() || !functionAddr) return Acad::eInvalidInput;

    const auto clashes = [&](const CommandPtr& command) {
        return sameName(command->globalName(), global) || sameName(command->localName(), local);
    };
    if (Group* group = groupNamed(groupName)) {
        auto& commands = group->commands;
        if (std::any_of(commands.begin(), commands.end(),
                        [&](const CommandPtr& command) { return !command->isStale() && clashes(command); }))
            return Acad::eDuplicateKey;
        std::erase_if(commands, clashes);
        dropEmptyGroups(); // a group of stale commands only begins anew, as the newest
    }
    const auto command = std::make_shared<Command>(
        CommandEntry{std::wstring{groupName}, std::wstring{global}, std::wstring{local}, commandFlags,
                     functionAddr, UIContext, fcode, hResourceHandle, ModuleScope::current()});
    Group* group = groupNamed(groupName);
    if (!group) group = &groups_.emplace_back(Group{std::wstring{groupName}, {}});
    group->commands.push_back(command);
    if (cmdPtrRet) *cmdPtrRet = command.get();
    return Acad::eOk;
}

Acad::ErrorStatus CommandStack::removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) {
    Group* group = groupNamed(viewOf(cmdGroupName));
    const auto removed =
        group ? std::erase_if(group->commands,
                              [&](const CommandPtr& command) {
                                  return sameName(command->globalName(), viewOf(cmdGlobalName));
                              })
              : 0;
    dropEmptyGroups();
    return removed ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus CommandStack::removeGroup(const ACHAR* groupName) {
    Group* group = groupNamed(viewOf(groupName));
    if (!group) return Acad::eKeyNotFound;
    group->commands.clear();
    dropEmptyGroups();
    return Acad::eOk;
}

AcEdCommand* CommandStack::lookupGlobalCmd(const ACHAR* name) {
    return lookup(viewOf(name), NameKind::global).get();
}

AcEdCommand* CommandStack::lookupLocalCmd(const ACHAR* name) {
    return lookup(viewOf(name), NameKind::local).get();
}

AcEdCommand* CommandStack::lookupCmd(const ACHAR* name) {
    return lookup(viewOf(name), NameKind::either).get();
}

CommandStack::CommandPtr CommandStack::find(std::wstring_view typed) const {
    const auto start = std::min(typed.find_first_not_of(L"_.'"), typed.size());
    const bool globalOnly = typed.substr(0, start).find(L'_') != std::wstring_view::npos;
    return lookup(typed.substr(start), globalOnly ? NameKind::global : NameKind::either);
}

std::vector<CommandStack::CommandPtr> CommandStack::all() const {
    std::vector<CommandPtr> commands;
    for (const Group& group : groups_)
        commands.insert(commands.end(), group.commands.begin(), group.commands.end());
    return commands;
}

void CommandStack::retire(ModuleId owner) {
    for (const CommandPtr& command : all())
        if (command->entry().owner == owner) command->retire();
}

CommandStack::Group* CommandStack::groupNamed(std::wstring_view name) {
    const auto found = std::find_if(groups_.begin(), groups_.end(),
                                    [&](const Group& group) { return sameName(group.name, name); });
    return found == groups_.end() ? nullptr : &*found;
}

CommandStack::CommandPtr CommandStack::lookup(std::wstring_view name, NameKind kind) const {
    const auto matches = [&](const CommandPtr& command) {
        return (kind != NameKind::local && sameName(command->globalName(), name)) ||
               (kind != NameKind::global && sameName(command->localName(), name));
    };
    CommandPtr stale;
    for (auto group = groups_.rbegin(); group != groups_.rend(); ++group)
        for (const CommandPtr& command : group->commands) {
            if (!matches(command)) continue;
            if (!command->isStale()) return command;
            if (!stale) stale = command;
        }
    return stale;
}

void CommandStack::dropEmptyGroups() {
    std::erase_if(groups_, [](const Group& group) { return group.commands.empty(); });
}

CommandStack& commandStack() {
    static CommandStack& stack = *new CommandStack; // outlives every module
    return stack;
}

} // namespace qx::rx
