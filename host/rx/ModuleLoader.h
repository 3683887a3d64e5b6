// Loads modules, sends them the host's messages in the order they may rely on, and takes them out again.
// A module that throws, or answers kRetError to anything but an unload message, is unloaded. Sentences are in
// English.
#pragma once

#include "CommandStack.h"
#include "LispFunctions.h"
#include "os/Result.h"
#include "rxdefs.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qx::rx {

struct ModuleInfo {
    std::string name; ///< file name, such as "QX_GroupAlignment.arx"
    std::string path;
    bool locked;   ///< can't be unloaded now
    bool mdiAware; ///< gets along with several open drawings
};

/// How a call of a LISP function ended.
struct LispAnswer {
    bool defined = false;
    std::string text; ///< the value as LISP prints it; empty for no value
    Outcome outcome;  ///< fails when the function threw or reported an error
};

class QX_HOST_API ModuleLoader {
public:
    ModuleLoader(CommandStack& commands, LispFunctions& functions);
    ~ModuleLoader();
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    /// Loads the module at a path, or with a file name in the working folder or beside the program; ".arx"
    /// may be left out. Sends kInitAppMsg, and kLoadDwgMsg when a drawing is open. Refuses a second module of
    /// the same file name.
    Outcome load(const std::string& nameOrPath);
    /// Unloads by path, file name, or file name without extension: kUnloadDwgMsg when a drawing is open,
    /// kUnloadAppMsg. Refuses locked and running modules.
    Outcome unload(const std::string& nameOrPath);
    /// The end of the session: unloads everything, locked modules too, the newest first.
    std::vector<std::string> unloadAll();

    /// In order of loading.
    std::vector<ModuleInfo> list() const;

    /// Tells the modules that a drawing has been opened or is about to be closed, once for each change.
    /// Closing forgets the LISP functions. Gives a sentence for each module that had to be unloaded.
    std::vector<std::string> setDrawingOpen(bool open);
    /// Sends any other message to all modules; kEndMsg and kQuitMsg go to those with LISP functions only.
    /// kLoadDwgMsg and kUnloadDwgMsg are setDrawingOpen.
    std::vector<std::string> broadcast(AcRx::AppMsgCode message);

    /// Calls a LISP function: directly, or by kInvkSubrMsg to its module.
    LispAnswer invoke(std::wstring_view functionName);

    /// What a module may do with the packet that its entry point was given; false for any other pointer.
    bool setLocked(const void* packet, bool locked);
    bool setMdiAware(const void* packet, bool aware);
    bool isLocked(const std::string& nameOrPath) const;

    /// Where failures of loads that a module asks for are shown.
    void setReporter(std::function<void(const std::string& sentence)> reporter) {
        reporter_ = std::move(reporter);
    }
    void report(const std::string& sentence) const {
        if (reporter_) reporter_(sentence);
    }

private:
    struct Module;

    Module* find(const std::string& nameOrPath) const;
    Module* find(ModuleId id) const;
    Module* ofPacket(const void* packet) const;
    std::vector<ModuleId> ids() const;
    static Outcome send(Module& module, AcRx::AppMsgCode message);
    Outcome openDrawingFor(Module& module);
    Outcome start(Module& module);
    Outcome release(Module& module);
    void forget(Module& module);
    std::vector<std::string> sendToAll(const std::function<Outcome(Module&)>& call);
    Outcome callFunction(const LispFunction& function);

    CommandStack& commands_;
    LispFunctions& functions_;
    std::vector<std::unique_ptr<Module>> modules_; // oldest first
    ModuleId lastId_ = hostItself;
    bool drawingOpen_ = false;
    std::function<void(const std::string&)> reporter_;
};

/// The one that modules reach through the system registry.
QX_HOST_API ModuleLoader& moduleLoader();

} // namespace qx::rx
