#include "acedads.h"
#include "ed/Session.h"
#include "ed/prompts.h"
#include "os/encoding.h"

#include <algorithm>

namespace {

using namespace qx;
using ed::Answered;
using ed::Session;

constexpr std::size_t longestKeyword = 132;

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
    const auto answer = ed::askPoint(session->line(), requestFor(*session, prompt));
    if (answer.kind == Answered::value) {
        const AcGePoint3d last = pt ? AcGePoint3d{pt[0], pt[1], pt[2]} : session->lastPoint;
        session->lastPoint = session->frame().resolved(answer.value, last);
        result[0] = session->lastPoint.x;
        result[1] = session->lastPoint.y;
        result[2] = session->lastPoint.z;
    }
    return resultOf(*session, answer);
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
