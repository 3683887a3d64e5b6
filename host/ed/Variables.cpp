#include "ed/Variables.h"

#include "ed/Keywords.h"

#include <algorithm>

namespace qx::ed {

Variables::Variables()
    : variables_{
          readOnlyNumber("CMDACTIVE"),  number("CMDDIA", 0, 0, 1),  readOnlyText("CMDNAMES"),
          readOnlyText("DWGNAME"),      number("ERRNO", 0, 0, 255), number("PICKBOX", 3, 0, 32767),
          number("PICKSTYLE", 1, 0, 3),
      } {}

Variables::Variable Variables::number(const char* name, int value, int least, int most) {
    return {name, {false, value, {}}, least, most, false};
}

Variables::Variable Variables::readOnlyNumber(const char* name) { return {name, {}, 0, 0, true}; }

Variables::Variable Variables::readOnlyText(const char* name) { return {name, {true, 0, {}}, 0, 0, true}; }

const Variables::Variable* Variables::entry(std::string_view name) const {
    const std::string upper = upperCase(name);
    const auto found = std::ranges::find(variables_, upper, &Variable::name);
    return found == variables_.end() ? nullptr : &*found;
}

Variables::Variable* Variables::entry(std::string_view name) {
    return const_cast<Variable*>(static_cast<const Variables*>(this)->entry(name));
}

std::optional<Variables::Value> Variables::find(std::string_view name) const {
    const Variable* variable = entry(name);
    return variable ? std::optional{variable->value} : std::nullopt;
}

int Variables::number(std::string_view name) const {
    const Variable* variable = entry(name);
    return variable ? variable->value.number : 0;
}

Variables::Status Variables::set(std::string_view name, int number) {
    Variable* variable = entry(name);
    if (!variable) return Status::unknown;
    if (variable->readOnly) return Status::readOnly;
    if (number < variable->least || number > variable->most) return Status::outOfRange;
    variable->value.number = number;
    return Status::done;
}

void Variables::force(std::string_view name, int number) {
    if (Variable* variable = entry(name)) variable->value.number = number;
}

void Variables::force(std::string_view name, std::string text) {
    if (Variable* variable = entry(name)) variable->value.text = std::move(text);
}

std::vector<std::string> Variables::names() const {
    std::vector<std::string> result;
    for (const Variable& variable : variables_) result.push_back(variable.name);
    return result;
}

std::vector<Variables::Setting> Variables::settings() const {
    std::vector<Setting> result;
    for (const Variable& each : variables_)
        if (!each.readOnly) result.push_back({each.name, each.value.number});
    return result;
}

} // namespace qx::ed
