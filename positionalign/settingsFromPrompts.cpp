#include "controls/keywordPrompt.h"
#include "positionalign/alignment.h"
#include "positionalign/askSettings.h"

#include "adslib.h"

namespace qx::positionalign {
namespace {
using controls::askKeyword;
using controls::Keyword;

constexpr Keyword<SelectionMode> modes[] = {{L"O", SelectionMode::objects}, {L"G", SelectionMode::groups}};

constexpr Keyword<Action> actions[] = {
    {L"HC", Action::horizontalCentre},
    {L"T", Action::top},
    {L"L", Action::left},
    {L"C", Action::centre},
    {L"R", Action::right},
    {L"VC", Action::verticalCentre},
    {L"B", Action::bottom},
    {L"HD", Action::horizontalDistribution},
    {L"VD", Action::verticalDistribution},
};

std::optional<double> askOffset() {
    ads_real offset = 0;
    acedInitGet(0, nullptr);
    const int result = acedGetReal(L"偏移值 <0>: ", &offset);
    if (result == RTNONE) return 0.0;
    return result == RTNORM ? std::optional{offset} : std::nullopt;
}
} // namespace

std::optional<PositionAlignSettings> settingsFromPrompts() {
    const auto mode =
        askKeyword<SelectionMode>(modes, L"O G", L"选择模式 [对象(O)/组(G)] <O>: ", SelectionMode::objects);
    if (!mode) return std::nullopt;
    const auto action =
        askKeyword<Action>(actions, L"HC T L C R VC B HD VD",
                           L"对齐方式 [水平居中(HC)/上(T)/左(L)/中心(C)/右(R)/垂直居中(VC)/下(B)/"
                           L"横向分布(HD)/纵向分布(VD)]: ",
                           std::nullopt);
    if (!action) return std::nullopt;
    const auto offset = takesOffset(*action) ? askOffset() : 0.0;
    if (!offset) return std::nullopt;
    return PositionAlignSettings{*action, !movesOf(*action).empty(), *offset, *mode};
}

} // namespace qx::positionalign
