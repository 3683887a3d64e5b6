// The system variables that commands and people ask for: whole numbers within limits, and texts that only the
// editor sets. Names in any case.
#pragma once

#include "qxexport.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::ed {

class QX_HOST_API Variables {
public:
    enum class Status { done, unknown, readOnly, outOfRange };
    struct Value {
        bool isText = false;
        int number = 0;
        std::string text;
    };

    Variables();

    /// Nothing for a name that there is not.
    std::optional<Value> find(std::string_view name) const;
    int number(std::string_view name) const;
    /// For people and modules: within the limits of the variable, and not for those that only the editor
    /// sets.
    Status set(std::string_view name, int number);
    /// For the editor: without limits.
    void force(std::string_view name, int number);
    void force(std::string_view name, std::string text);
    std::vector<std::string> names() const;
    struct Setting {
        std::string name;
        int number;
        friend bool operator==(const Setting&, const Setting&) = default;
    };
    /// Of all that people may set.
    std::vector<Setting> settings() const;

private:
    struct Variable {
        std::string name;
        Value value;
        int least = 0, most = 0;
        bool readOnly = false;
    };
    static Variable number(const char* name, int value, int least, int most);
    static Variable readOnlyNumber(const char* name);
    static Variable readOnlyText(const char* name);
    const Variable* entry(std::string_view name) const;
    Variable* entry(std::string_view name);
    std::vector<Variable> variables_;
};

} // namespace qx::ed
