#include "CommandStack.h"
#include "ModuleLoader.h"
#include "names.h"
#include "os/encoding.h"
#include "rxdlinkr.h"

#include <map>

ACRX_DEFINE_MEMBERS(AcRxDictionary, AcRxObject, nullptr)
ACRX_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject, nullptr)

namespace qx::rx {
namespace {

std::string nameOf(const ACHAR* name) { return name ? os::toUtf8(name) : std::string{}; }

class Dictionary final : public AcRxDictionary {
public:
    AcRxObject* at(const ACHAR* key) const override {
        const auto found = key ? entries_.find(std::wstring_view{key}) : entries_.end();
        return found == entries_.end() ? nullptr : found->second.object;
    }
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::Int32& number) override {
        if (!key) return nullptr;
        const auto [entry, added] = entries_.try_emplace(key, Entry{nullptr, nextNumber_});
        if (added) ++nextNumber_;
        number = entry->second.number;
        return std::exchange(entry->second.object, object);
    }
    AcRxObject* remove(const ACHAR* key) override {
        AcRxObject* object = at(key);
        if (key) entries_.erase(key);
        return object;
    }
    bool has(const ACHAR* key) const override { return key && entries_.contains(std::wstring_view{key}); }

private:
    struct Entry {
        AcRxObject* object;
        Adesk::Int32 number;
    };
    std::map<std::wstring, Entry, NameLess> entries_;
    Adesk::Int32 nextNumber_ = 0;
};

class DynamicLinker final : public AcRxDynamicLinker {
public:
    bool loadModule(const ACHAR* fileName, bool printit, bool) override {
        const Outcome outcome = moduleLoader().load(nameOf(fileName));
        if (!outcome && printit) moduleLoader().report(outcome.error());
        return static_cast<bool>(outcome);
    }
    bool unloadModule(const ACHAR* fileName, bool) override {
        return static_cast<bool>(moduleLoader().unload(nameOf(fileName)));
    }
    bool lockApplication(void* pkt) const override { return moduleLoader().setLocked(pkt, true); }
    bool unlockApplication(void* pkt) const override { return moduleLoader().setLocked(pkt, false); }
    bool isApplicationLocked(const ACHAR* name) const override {
        return moduleLoader().isLocked(nameOf(name));
    }
    bool registerAppMDIAware(void* pkt) const override { return moduleLoader().setMdiAware(pkt, true); }
    bool registerAppNotMDIAware(void* pkt) const override { return moduleLoader().setMdiAware(pkt, false); }
};

DynamicLinker& dynamicLinker() {
    static DynamicLinker& linker = *new DynamicLinker; // outlives every module
    return linker;
}

Dictionary* newSystemRegistry() {
    auto* registry = new Dictionary;
    Adesk::Int32 number = 0;
    registry->atPut(L"DynamicLinker", &dynamicLinker(), number);
    registry->atPut(L"ACAD_REGISTERED_COMMANDS", &commandStack(), number);
    return registry;
}

} // namespace
} // namespace qx::rx

AcRxDictionary* acrxSysRegistry() {
    static AcRxDictionary* registry = qx::rx::newSystemRegistry();
    return registry;
}

void acrxBuildClassHierarchy() {}

bool acrxLoadModule(const ACHAR* moduleName, bool printit, bool asCmd) {
    return qx::rx::dynamicLinker().loadModule(moduleName, printit, asCmd);
}

bool acrxUnloadModule(const ACHAR* moduleName, bool asCmd) {
    return qx::rx::dynamicLinker().unloadModule(moduleName, asCmd);
}

bool acrxUnlockApplication(void* pkt) { return qx::rx::dynamicLinker().unlockApplication(pkt); }
