#include "ModuleLoader.h"

#include "adscodes.h"
#include "names.h"
#include "os/SharedObject.h"
#include "os/encoding.h"
#include "os/files.h"
#include "os/terminal.h"

#include <algorithm>
#include <filesystem>

namespace qx::rx {

namespace fs = std::filesystem;

ModuleScope* ModuleScope::innermost_ = nullptr;

using EntryPoint = AcRx::AppRetCode(AcRx::AppMsgCode, void*);

struct ModuleLoader::Module {
    ModuleId id;
    std::string name;
    std::string path;
    os::SharedObject object;
    EntryPoint* entryPoint;
    bool locked = true;
    bool mdiAware = false;
    bool hasDrawing = false; // has had kLoadDwgMsg and not yet kUnloadDwgMsg
};

namespace {

fs::path pathFrom(const std::string& utf8) { return std::u8string{utf8.begin(), utf8.end()}; }

std::string utf8Of(const fs::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

std::string canonical(const std::string& path) {
    std::error_code error;
    const auto result = fs::weakly_canonical(pathFrom(path), error);
    return error ? path : utf8Of(result);
}

/// The module file that a name or path means, as canonical path; empty when there is none.
std::string located(const std::string& nameOrPath) {
    std::vector<std::string> places{nameOrPath};
    if (!pathFrom(nameOrPath).has_parent_path()) places.push_back(os::programFolder() + "/" + nameOrPath);
    for (const std::string& place : places)
        for (const char* extension : {"", ".arx"})
            if (os::isFile(place + extension)) return canonical(place + extension);
    return {};
}

struct Opened {
    os::SharedObject object;
    EntryPoint* entryPoint;
};

Result<Opened> opened(const std::string& path) {
    const auto refused = [&](const std::string& reason) { return Result<Opened>::failure(path + reason); };
    auto object = os::SharedObject::load(path);
    if (!object) return Result<Opened>::failure(object.error());
    auto* entryPoint = object->function<EntryPoint>("acrxEntryPoint");
    auto* apiVersion = object->function<int()>("acrxGetApiVersion");
    if (!entryPoint) return refused(" is not a module: it does not export acrxEntryPoint.");
    if (!apiVersion) return refused(" is not a module: it does not export acrxGetApiVersion.");
    if (const int version = apiVersion(); version != qxHostApiVersion)
        return refused(" was built for another host (its API version is " + std::to_string(version) +
                       ", not " + std::to_string(qxHostApiVersion) + ").");
    return Opened{std::move(*object), entryPoint};
}

bool endsSession(AcRx::AppMsgCode message) { return message == AcRx::kEndMsg || message == AcRx::kQuitMsg; }

bool errorIsIgnored(AcRx::AppMsgCode message) {
    return message == AcRx::kUnloadAppMsg || message == AcRx::kOleUnloadAppMsg;
}

} // namespace

ModuleLoader::ModuleLoader(CommandStack& commands, LispFunctions& functions)
    : commands_{commands}, functions_{functions} {}

ModuleLoader::~ModuleLoader() = default;

Outcome ModuleLoader::load(const std::string& nameOrPath) {
    const std::string path = located(nameOrPath);
    if (path.empty()) return Outcome::failure("Can't find the module " + nameOrPath + ".");
    const std::string name = utf8Of(pathFrom(path).filename());
    if (find(name)) return Outcome::failure(name + " is already loaded.");
    auto file = opened(path);
    if (!file) return Outcome::failure(file.error());
    modules_.push_back(std::make_unique<Module>(Module{.id = ++lastId_,
                                                       .name = name,
                                                       .path = path,
                                                       .object = std::move(file->object),
                                                       .entryPoint = file->entryPoint}));
    return start(*modules_.back());
}

Outcome ModuleLoader::start(Module& module) {
    if (Outcome initialised = send(module, AcRx::kInitAppMsg); !initialised) {
        forget(module);
        return initialised;
    }
    Outcome drawing = drawingOpen_ ? openDrawingFor(module) : Outcome{};
    if (!drawing) static_cast<void>(release(module)); // the first sentence is the one that helps
    return drawing;
}

Outcome ModuleLoader::unload(const std::string& nameOrPath) {
    Module* module = find(nameOrPath);
    if (!module) return Outcome::failure(nameOrPath + " is not loaded.");
    if (module->locked) return Outcome::failure(module->name + " is locked and can't be unloaded.");
    if (ModuleScope::isRunning(module->id))
        return Outcome::failure(module->name + " is running and can't be unloaded.");
    return release(*module);
}

std::vector<std::string> ModuleLoader::unloadAll() {
    std::vector<std::string> problems;
    while (!modules_.empty())
        if (const Outcome outcome = release(*modules_.back()); !outcome) problems.push_back(outcome.error());
    return problems;
}

/// Says goodbye and unloads, whatever the module answers.
Outcome ModuleLoader::release(Module& module) {
    Outcome drawing;
    if (std::exchange(module.hasDrawing, false)) drawing = send(module, AcRx::kUnloadDwgMsg);
    Outcome application = send(module, AcRx::kUnloadAppMsg);
    forget(module);
    return drawing ? application : drawing;
}

void ModuleLoader::forget(Module& module) {
    commands_.retire(module.id);
    functions_.removeAllOf(module.id);
    if (ModuleScope::isRunning(module.id)) module.object.abandon();
    std::erase_if(modules_, [&](const auto& each) { return each.get() == &module; });
}

std::vector<ModuleInfo> ModuleLoader::list() const {
    std::vector<ModuleInfo> infos;
    for (const auto& module : modules_)
        infos.push_back({module->name, module->path, module->locked, module->mdiAware});
    return infos;
}

std::vector<std::string> ModuleLoader::setDrawingOpen(bool open) {
    if (open == drawingOpen_) return {};
    drawingOpen_ = open;
    if (open) return sendToAll([this](Module& module) { return openDrawingFor(module); });
    auto problems = sendToAll([](Module& module) {
        return std::exchange(module.hasDrawing, false) ? send(module, AcRx::kUnloadDwgMsg) : Outcome{};
    });
    functions_.clear();
    return problems;
}

std::vector<std::string> ModuleLoader::broadcast(AcRx::AppMsgCode message) {
    if (message == AcRx::kLoadDwgMsg || message == AcRx::kUnloadDwgMsg)
        return setDrawingOpen(message == AcRx::kLoadDwgMsg);
    return sendToAll([&](Module& module) {
        const bool wanted = !endsSession(message) || functions_.hasAny(module.id);
        return wanted ? send(module, message) : Outcome{};
    });
}

/// A module may load and unload others while it is called: the ids are taken first.
std::vector<std::string> ModuleLoader::sendToAll(const std::function<Outcome(Module&)>& call) {
    std::vector<std::string> problems;
    for (const ModuleId id : ids()) {
        Module* module = find(id);
        const Outcome outcome = module ? call(*module) : Outcome{};
        if (outcome) continue;
        problems.push_back(outcome.error());
        if (Module* failed = find(id)) static_cast<void>(release(*failed));
    }
    return problems;
}

Outcome ModuleLoader::openDrawingFor(Module& module) {
    const ModuleId id = module.id;
    Outcome outcome = send(module, AcRx::kLoadDwgMsg);
    if (Module* still = find(id)) still->hasDrawing = static_cast<bool>(outcome);
    return outcome;
}

Outcome ModuleLoader::send(Module& module, AcRx::AppMsgCode message) {
    const std::string name = module.name;
    const std::string which = " (message " + std::to_string(message) + ")";
    AcRx::AppRetCode answer = AcRx::kRetOK;
    const auto problem = thrownBy(module.id, [&] { answer = module.entryPoint(message, &module); });
    if (problem) return Outcome::failure(name + " failed and was unloaded" + which + ": " + *problem + ".");
    if (answer == AcRx::kRetError && !errorIsIgnored(message))
        return Outcome::failure(name + " reported an error and was unloaded" + which + ".");
    return {};
}

LispAnswer ModuleLoader::invoke(std::wstring_view functionName) {
    const LispFunction* found = functions_.find(functionName);
    if (!found) return {};
    const LispFunction function = *found; // the call may change the table
    LispCall call{function.code};
    Outcome outcome = callFunction(function);
    return {true, call.text(), std::move(outcome)};
}

Outcome ModuleLoader::callFunction(const LispFunction& function) {
    const std::string name = os::toUtf8(function.name);
    if (function.direct) {
        int answer = RTNORM;
        const auto problem = thrownBy(function.owner, [&] { answer = function.direct(); });
        if (problem) return Outcome::failure("The function " + name + " failed: " + *problem + ".");
        return answer == RTNORM ? Outcome{}
                                : Outcome::failure("The function " + name + " reported an error.");
    }
    Module* owner = find(function.owner);
    if (!owner) return Outcome::failure("The function " + name + " belongs to no loaded module.");
    Outcome outcome = send(*owner, AcRx::kInvkSubrMsg);
    if (Module* failed = outcome ? nullptr : find(function.owner)) static_cast<void>(release(*failed));
    return outcome;
}

bool ModuleLoader::setLocked(const void* packet, bool locked) {
    Module* module = ofPacket(packet);
    if (module) module->locked = locked;
    return module != nullptr;
}

bool ModuleLoader::setMdiAware(const void* packet, bool aware) {
    Module* module = ofPacket(packet);
    if (module) module->mdiAware = aware;
    return module != nullptr;
}

bool ModuleLoader::isLocked(const std::string& nameOrPath) const {
    const Module* module = find(nameOrPath);
    return module && module->locked;
}

ModuleLoader::Module* ModuleLoader::find(const std::string& nameOrPath) const {
    const bool isPath = pathFrom(nameOrPath).has_parent_path();
    const std::string path = isPath ? canonical(nameOrPath) : std::string{};
    for (const auto& module : modules_) {
        const bool same = isPath ? sameName(module->path, path) || sameName(module->path, path + ".arx")
                                 : sameName(module->name, nameOrPath) ||
                                       sameName(utf8Of(pathFrom(module->name).stem()), nameOrPath);
        if (same) return module.get();
    }
    return nullptr;
}

ModuleLoader::Module* ModuleLoader::find(ModuleId id) const {
    const auto found =
        std::find_if(modules_.begin(), modules_.end(), [&](const auto& module) { return module->id == id; });
    return found == modules_.end() ? nullptr : found->get();
}

ModuleLoader::Module* ModuleLoader::ofPacket(const void* packet) const {
    const auto found = std::find_if(modules_.begin(), modules_.end(),
                                    [&](const auto& module) { return module.get() == packet; });
    return found == modules_.end() ? nullptr : found->get();
}

std::vector<ModuleId> ModuleLoader::ids() const {
    std::vector<ModuleId> result;
    for (const auto& module : modules_) result.push_back(module->id);
    return result;
}

ModuleLoader& moduleLoader() {
    static ModuleLoader& loader = *new ModuleLoader{commandStack(), lispFunctions()}; // outlives every module
    return loader;
}

} // namespace qx::rx
