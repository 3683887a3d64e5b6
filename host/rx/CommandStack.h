// The host's command stack, as the host itself sees it. An entry belongs to the module that registered it;
// when that module is unloaded, entries it left behind turn stale: still listed, but they can't be run, and
// give way to a new registration of the same command.
#pragma once

#include "ModuleScope.h"
#include "accmd.h"
#include "os/Result.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qx::rx {

/// What addCommand was told, and by whom.
struct CommandEntry {
    std::wstring group;
    std::wstring global;
    std::wstring local;
    Adesk::Int32 flags = ACRX_CMD_MODAL;
    AcRxFunctionPtr function = nullptr;
    AcEdUIContext* uiContext = nullptr;
    int functionCode = -1;
    HINSTANCE resources = nullptr;
    ModuleId owner = hostItself;
};

class QX_HOST_API Command final : public AcEdCommand {
public:
    explicit Command(CommandEntry entry) : entry_{std::move(entry)} {}

    const ACHAR* globalName() const override { return entry_.global.c_str(); }
    const ACHAR* localName() const override { return entry_.local.c_str(); }
    Adesk::Int32 commandFlags() const override { return entry_.flags; }
    /// Null once the command is stale.
    AcRxFunctionPtr functionAddr() const override { return entry_.function; }
    AcEdUIContext* UIContext() const override { return entry_.uiContext; }

    const CommandEntry& entry() const { return entry_; }
    bool isStale() const { return stale_; }
    /// The module is gone: what it gave must not be touched any more.
    void retire();

    /// Runs the command's function with its resource handle current. Fails, with a sentence in English, when
    /// the command is stale or its function threw. The command may remove itself meanwhile.
    Outcome run() const;

private:
    CommandEntry entry_;
    bool stale_ = false;
};

class QX_HOST_API CommandStack final : public AcEdCommandStack {
public:
    using CommandPtr = std::shared_ptr<Command>;

    Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                 const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                                 AcRxFunctionPtr functionAddr, AcEdUIContext* UIContext = nullptr,
                                 int fcode = -1, HINSTANCE hResourceHandle = nullptr,
                                 AcEdCommand** cmdPtrRet = nullptr) override;
    Acad::ErrorStatus removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) override;
    Acad::ErrorStatus removeGroup(const ACHAR* groupName) override;
    AcEdCommand* lookupGlobalCmd(const ACHAR* name) override;
    AcEdCommand* lookupLocalCmd(const ACHAR* name) override;
    AcEdCommand* lookupCmd(const ACHAR* name) override;

    /// The command that a typed name means, or null. '_' in front asks for global names only, '.' and '\'' in
    /// front mean nothing. The newest group wins; a stale command is found only when no other has the name.
    CommandPtr find(std::wstring_view typed) const;

    /// All commands, stale ones too: groups from the oldest to the newest, commands in order of registration.
    std::vector<CommandPtr> all() const;

    /// Makes what `owner` left behind stale.
    void retire(ModuleId owner);

private:
    struct Group {
        std::wstring name;
        std::vector<CommandPtr> commands;
    };
    enum class NameKind { global, local, either };

    Group* groupNamed(std::wstring_view name);
    CommandPtr lookup(std::wstring_view name, NameKind kind) const;
    void dropEmptyGroups();

    std::vector<Group> groups_; // oldest first
};

/// The one that the system registry knows.
QX_HOST_API CommandStack& commandStack();

} // namespace qx::rx
