#include "ed/prompts.h"

namespace qx::ed {
namespace {

struct Wanted {
    Ask what;
    const char* sentence; ///< said when the answer is none of them
    const char* reason;
};
constexpr Wanted wantedPoint{Ask::point, "点无效。", "is not a point"};
constexpr Wanted wantedReal{Ask::real, "需要数值。", "is not a number"};
constexpr Wanted wantedKeyword{Ask::keyword, "选项关键字无效。", "is not one of the keywords"};

void refuseText(CommandLine& line, const Wanted& wanted, const std::string& text) {
    line.refuse(wanted.sentence, '"' + abridged(text) + "\" " + wanted.reason);
}

// Asks until the answer is Enter, a cancel, a keyword, or text that `take` takes.
template <class Value, class Take>
Answer<Value> askUntil(CommandLine& line, const Request& request, const Wanted& wanted, const Take& take) {
    for (;;) {
        const Input input = line.ask(wanted.what, request.prompt);
        if (input.kind == Input::Kind::cancel) return {};
        if (input.kind == Input::Kind::enter) {
            if (request.mayBeNone) return {.kind = Answered::none, .value = {}, .keyword = {}};
            line.refuse(wanted.sentence, "an answer is needed here");
            continue;
        }
        Answer<Value> answer;
        if (take(input.text, answer.value)) {
            answer.kind = Answered::value;
            return answer;
        }
        if (auto keyword = request.keywords.match(input.text)) {
            answer.kind = Answered::keyword;
            answer.keyword = std::move(*keyword);
            return answer;
        }
        refuseText(line, wanted, input.text);
    }
}

const char* complaintAbout(double value, const Request& request) {
    if (value == 0 && !request.mayBeZero)
        return request.mayBeNegative ? "值不能为零。" : "值必须为正且非零。";
    if (value < 0 && !request.mayBeNegative) return request.mayBeZero ? "值不能为负。" : "值必须为正且非零。";
    return nullptr;
}

} // namespace

Answer<TypedPoint> askPoint(CommandLine& line, const Request& request) {
    return askUntil<TypedPoint>(line, request, wantedPoint, [](const std::string& text, TypedPoint& value) {
        const auto point = parsePoint(text);
        if (point) value = *point;
        return point.has_value();
    });
}

Answer<double> askReal(CommandLine& line, const Request& request) {
    for (;;) {
        auto answer = askUntil<double>(line, request, wantedReal, [](const std::string& text, double& value) {
            const auto real = parseReal(text);
            if (real) value = *real;
            return real.has_value();
        });
        const char* complaint =
            answer.kind == Answered::value ? complaintAbout(answer.value, request) : nullptr;
        if (!complaint) return answer;
        line.refuse(complaint, "the number is not allowed here");
    }
}

Answer<std::string> askKeyword(CommandLine& line, const Request& request) {
    auto answer = askUntil<std::string>(line, request, wantedKeyword,
                                        [](const std::string&, std::string&) { return false; });
    answer.value = answer.keyword;
    return answer;
}

Answer<std::string> askText(CommandLine& line, const Request& request) {
    return askUntil<std::string>(line, request, {Ask::text, "需要文字。", "is not a text"},
                                 [](const std::string& text, std::string& value) {
                                     value = text;
                                     return true;
                                 });
}

} // namespace qx::ed
