// A loaded shared object (DLL). It is unloaded with its owner, or stays in the process for good after
// `abandon`.
#pragma once

#include "Result.h"
#include "qxexport.h"

#include <utility>

namespace qx::os {

class QX_HOST_API SharedObject {
public:
    /// Loads the file at `path` (UTF-8, not searched for) and binds everything it needs at once, so that a
    /// missing symbol is a sentence now and not a crash later.
    static Result<SharedObject> load(const std::string& path);

    SharedObject(SharedObject&& other) noexcept : handle_{std::exchange(other.handle_, nullptr)} {}
    SharedObject& operator=(SharedObject&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~SharedObject();

    /// Address of an exported symbol, or null.
    void* symbol(const char* name) const;
    template <class Function> Function* function(const char* name) const {
        return reinterpret_cast<Function*>(symbol(name));
    }

    /// Gives up the right to unload: for code that is still on the call stack.
    void abandon() { handle_ = nullptr; }

private:
    explicit SharedObject(void* handle) : handle_{handle} {}

    void* handle_;
};

} // namespace qx::os
