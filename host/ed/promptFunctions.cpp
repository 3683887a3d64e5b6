#include "acedads.h"
#include "ed/adsNames.h"
#include "ed/entityPrompt.h"
#include "os/encoding.h"

#include <algorithm>
#include <optional>

namespace {

using namespace qx;
using ed::Answered;
using ed::Session;

constexpr std::size_t longestKeyword = 132;
constexpr int pickedNothing = 7, answeredEnter = 52; // ERRNO

ed::Request requestFor(Session& session, const ACHAR* prompt) {
    enum Bits { noNull = 1, noZero = 2, noNegative = 4 };
    const ed::InputRules rules = session.takeRules();
    return {.prompt = prompt ? os::toUtf8(prompt) : std::string{},
            .keywords = ed::Keywords{rules.keywords},
            .mayBeNone = (rules.bits & noNull) == 0,
            .mayBeZero = (rules.bits & noZero) == 0,
            .mayBeNegative = (rules.bits & noNegative) == 0};
}

template <class Value> int resultOf(Session& session, const ed::Answer<Value>& answer) {
    switch (answer.kind) {
    case Answered::value:
        return RTNORM;
    case Answered::none:
        return RTNONE;
    case Answered::keyword:
        session.lastKeyword = answer.keyword;
        return RTKWORD;
    case Answered::cancel:
        break;
    }
    return RTCAN;
}

void copyPoint(const AcGePoint3d& point, ads_point result) {
    result[0] = point.x;
    result[1] = point.y;
    result[2] = point.z;
}

int withErrorNumber(Session& session, int number) {
    session.variables().force("ERRNO", number);
    return RTERROR;
}

void copyKeyword(const std::string& keyword, ACHAR* result) {
    const std::wstring wide = os::toWide(keyword).substr(0, longestKeyword);
    *std::copy(wide.begin(), wide.end(), result) = 0;
}

} // namespace

int acedInitGet(int val, const ACHAR* kwl) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    session->setRules({val, kwl ? os::toUtf8(kwl) : std::string{}});
    return RTNORM;
}

int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result) {
    Session* session = Session::current();
    if (!session || !session->drawing()) return RTERROR;
    const std::optional<AcGePoint3d> base =
        pt ? std::optional{AcGePoint3d{pt[0], pt[1], pt[2]}} : std::nullopt;
    if (base) session->rubberBand = {.from = session->frame().toWorld(*base)};
    const auto answer = ed::askPoint(session->line(), requestFor(*session, prompt));
    session->rubberBand.reset();
    if (answer.kind == Answered::value) {
        const AcGePoint3d last = base.value_or(session->lastPoint);
        session->lastPoint = session->frame().resolved(answer.value, last);
        copyPoint(session->lastPoint, result);
    }
    return resultOf(*session, answer);
}

int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres) {
    Session* session = Session::current();
    if (!session || !session->drawing()) return RTERROR;
    const auto answer = ed::askEntity(*session, requestFor(*session, str ? str : L"选择对象: "));
    if (answer.kind == Answered::none) return withErrorNumber(*session, answeredEnter);
    if (answer.kind != Answered::value) return resultOf(*session, answer);
    if (!answer.value.entity) return withErrorNumber(*session, pickedNothing);
    ed::nameEntity(entres, answer.value.entity);
    copyPoint(answer.value.point, ptres);
    return RTNORM;
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    const auto answer = ed::askReal(session->line(), requestFor(*session, prompt));
    if (answer.kind == Answered::value) *result = answer.value;
    return resultOf(*session, answer);
}

int acedGetKword(const ACHAR* prompt, ACHAR* result) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    const auto answer = ed::askKeyword(session->line(), requestFor(*session, prompt));
    const int code = resultOf(*session, answer);
    if (code != RTKWORD) return code;
    copyKeyword(answer.keyword, result);
    return RTNORM;
}

int acedGetInput(ACHAR* result) {
    const Session* session = Session::current();
    if (!session || !result) return RTERROR;
    copyKeyword(session->lastKeyword, result);
    return RTNORM;
}
