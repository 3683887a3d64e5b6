#include "ed/hostCommands.h"
#include "ed/prompts.h"
#include "rx/ModuleLoader.h"

#include <cmath>

namespace qx::ed {
namespace {

std::string textOf(const Variables::Value& value) {
    return value.isText ? '"' + value.text + '"' : std::to_string(value.number);
}

void listVariables(Session& session) {
    for (const std::string& name : session.variables().names())
        say(session, name + "  " + textOf(*session.variables().find(name)));
}

const char* complaintAbout(Variables::Status status) {
    switch (status) {
    case Variables::Status::done:
        return nullptr;
    case Variables::Status::unknown:
        return "没有这个变量。";
    case Variables::Status::readOnly:
        return "该变量为只读。";
    case Variables::Status::outOfRange:
        break;
    }
    return "变量值超出范围。";
}

Variables::Status setReal(Session& session, const std::string& name, double value) {
    if (value != std::floor(value) || std::fabs(value) > 32767) return Variables::Status::outOfRange;
    return session.variables().set(name, static_cast<int>(value));
}

void change(Session& session, const std::string& name, const Variables::Value& old) {
    for (;;) {
        const auto answer =
            askReal(session.line(), {.prompt = "输入 " + name + " 的新值 <" + textOf(old) + ">: "});
        if (answer.kind != Answered::value) return;
        const char* complaint = complaintAbout(setReal(session, name, answer.value));
        if (!complaint) return;
        session.line().refuse(complaint, name + " does not take this value");
    }
}

void listModules(Session& session) {
    const auto modules = rx::moduleLoader().list();
    if (modules.empty()) say(session, "没有加载模块。");
    for (const rx::ModuleInfo& module : modules) say(session, module.name + "  " + module.path);
}

void loadOrUnload(Session& session, bool load) {
    const auto name = askText(session.line(), {.prompt = "输入模块文件名: "});
    if (name.kind != Answered::value) return;
    auto& loader = rx::moduleLoader();
    const Outcome outcome = load ? loader.load(name.value) : loader.unload(name.value);
    if (!outcome)
        return session.line().refuse((load ? "无法加载模块 " : "无法卸载模块 ") + name.value, outcome);
    say(session, name.value + (load ? " 已加载。" : " 已卸载。"));
}

} // namespace

void setVariableCommand() {
    Session& session = *Session::current();
    const auto typed = askText(session.line(), {.prompt = "输入变量名或 [?]: "});
    if (typed.kind != Answered::value) return;
    if (typed.value == "?") return listVariables(session);
    const std::string name = upperCase(typed.value);
    const auto old = session.variables().find(name);
    if (!old)
        return session.line().refuse("没有变量 " + abridged(name) + "。",
                                     "there is no variable " + abridged(name));
    if (old->isText) return say(session, name + " = " + textOf(*old) + " (只读)");
    change(session, name, *old);
}

void modulesCommand() {
    Session& session = *Session::current();
    const auto option = askKeyword(
        session.line(), {.prompt = "输入选项 [?/加载(L)/卸载(U)]: ", .keywords = Keywords{"? Load Unload"}});
    if (option.value == "?") listModules(session);
    if (option.value == "Load") loadOrUnload(session, true);
    if (option.value == "Unload") loadOrUnload(session, false);
}

} // namespace qx::ed
