#include "controls/keywordPrompt.h"
#include "objectalign/askSettings.h"

#include "adslib.h"

namespace qx::objectalign {
namespace {
using controls::askKeyword;
using controls::Keyword;

constexpr Keyword<SelectionMode> modes[] = {
    {L"G", SelectionMode::groups}, {L"P", SelectionMode::polylines}, {L"O", SelectionMode::objects}};
constexpr Keyword<Method> methods[] = {{L"S", Method::each}, {L"W", Method::whole}};
constexpr Keyword<Action> actions[] = {{L"L", Action::toLine}, {L"P", Action::atPoint}};

/// Groups are always aligned as a whole, polylines each by the segment picked.
std::optional<Method> askMethod(SelectionMode mode) {
    if (mode == SelectionMode::groups) return Method::whole;
    if (mode == SelectionMode::polylines) return Method::each;
    return askKeyword<Method>(methods, L"S W", L"对齐方式 [单独(S)/整体(W)] <S>: ", Method::each);
}

/// False when the person cancels. A number, 0 as well, means that the spacing is adjusted.
bool askSpacing(ObjectAlignSettings& settings) {
    acedInitGet(0, nullptr);
    const int result = acedGetReal(L"间距 <不调整>: ", &settings.spacing);
    settings.adjustSpacing = result == RTNORM;
    return result == RTNORM || result == RTNONE;
}
} // namespace

std::optional<ObjectAlignSettings> settingsFromPrompts() {
    const auto mode = askKeyword<SelectionMode>(
        modes, L"G P O", L"选择模式 [组(G)/多段线(P)/一般对象(O)] <O>: ", SelectionMode::objects);
    if (!mode) return std::nullopt;
    const auto method = askMethod(*mode);
    if (!method) return std::nullopt;
    ObjectAlignSettings settings{.mode = *mode, .method = *method};
    if (!askSpacing(settings)) return std::nullopt;
    const auto action =
        askKeyword<Action>(actions, L"L P", L"动作 [直线对齐(L)/单点对齐(P)]: ", std::nullopt);
    if (!action) return std::nullopt;
    settings.action = *action;
    return settings;
}

} // namespace qx::objectalign
