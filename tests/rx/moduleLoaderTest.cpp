#include "rx/ModuleLoader.h"
#include "acedads.h"
#include "modules/Stage.h"
#include "os/encoding.h"
#include "os/files.h"
#include "rx/loadedModules.h"
#include "rxdlinkr.h"

#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

using namespace qx::rx;

namespace {

std::string pathOf(const std::string& name) { return QX_TEST_MODULES "/" + name + ".arx"; }

/// Lets puppets obey orders such as "A3 error": what puppet A does on message 3. Without orders they unlock
/// themselves and answer kRetOK.
class PuppetTest : public testing::Test {
protected:
    PuppetTest() {
        Adesk::Int32 number = 0;
        acrxSysRegistry()->atPut(L"Stage", &stage_, number);
        stage_.onMessage = [this](const Puppet& puppet, AcRx::AppMsgCode message) {
            return obey(puppet, message);
        };
        stage_.onCommand = [this](char puppet) { log_ << puppet << "! "; };
        stage_.onFunction = [](char puppet) { return puppet == 'A' ? acedRetInt(1) : acedRetT(); };
    }
    ~PuppetTest() override {
        orders_.clear();
        loader_.setDrawingOpen(false);
        loader_.unloadAll();
        loader_.setReporter({});
        for (const auto& command : commandStack().all())
            commandStack().removeGroup(command->entry().group.c_str());
        acrxSysRegistry()->remove(L"Stage");
    }

    AcRx::AppRetCode obey(const Puppet& puppet, AcRx::AppMsgCode message) {
        const std::string key = puppet.name + std::to_string(message);
        log_ << key << ' ';
        if (message == AcRx::kInitAppMsg) acrxUnlockApplication(puppet.packet);
        std::istringstream words{orders_[key]};
        for (std::string order; words >> order;) {
            if (order == "error") return AcRx::kRetError;
            if (order == "throw") throw std::runtime_error{"broken"};
            EXPECT_TRUE(deed(order, puppet)) << order;
        }
        return AcRx::kRetOK;
    }

    /// Does what an order says; whether the host agreed.
    bool deed(const std::string& order, const Puppet& puppet) {
        const int number = std::isdigit(order.back()) ? order.back() - '0' : 0;
        const std::map<std::string, std::function<bool()>> deeds = {
            {"lock", [&] { return acrxDynamicLinker->lockApplication(puppet.packet); }},
            {"aware", [&] { return acrxDynamicLinker->registerAppMDIAware(puppet.packet); }},
            {"command", [&] { return !acedRegCmds->addCommand(L"PUPPET", L"Do", L"Tu", 0, puppet.command); }},
            {"loadB", [&] { return acrxLoadModule(qx::os::toWide(pathOf("puppetB")).c_str(), true); }},
            {"unloadA", [&] { return acrxUnloadModule(L"puppetA"); }},
            {"stay", [&] { return !acrxUnloadModule(L"puppetA"); }},
            {"code", [&] { return acedRetInt(acedGetFunCode()) == RTNORM; }},
            {"text", [&] { return acedRetStr(L"文") == RTNORM; }},
            {"void", [&] { return acedRetVoid() == RTNORM; }},
            {"direct", [&] { return acedRegFunc(puppet.function, 1) == RTNORM; }},
            {"def", [&] { return acedDefun(L"fun", number) == RTNORM; }},
            {"undef", [&] { return acedUndef(L"FUN", number) == RTNORM; }},
        };
        return deeds.at(number ? order.substr(0, order.size() - 1) : order)();
    }

    /// "load puppetA" and the like; the sentence of a failure, else nothing.
    std::string perform(const std::string& step) {
        std::istringstream words{step};
        std::string verb;
        std::string name;
        words >> verb >> name;
        if (verb == "load") return loader_.load(pathOf("puppet" + name)).error();
        if (verb == "unload") return loader_.unload("puppet" + name).error();
        if (verb == "call") return call();
        std::vector<std::string> problems;
        if (verb == "end") problems = loader_.unloadAll();
        if (verb == "open" || verb == "close") problems = loader_.setDrawingOpen(verb == "open");
        if (verb == "send") problems = loader_.broadcast(static_cast<AcRx::AppMsgCode>(std::stoi(name)));
        std::string all;
        for (const std::string& problem : problems) all += problem;
        return all;
    }

    std::string call() {
        const LispAnswer answer = loader_.invoke(L"FUN");
        log_ << "=" << (answer.defined ? answer.text : "undefined") << ' ';
        return answer.outcome.error();
    }

    /// Steps separated by commas; gives what the puppets saw.
    std::string play(const std::string& steps) {
        std::istringstream lines{steps};
        for (std::string step; std::getline(lines, step, ',');)
            if (const std::string sentence = perform(step); !sentence.empty()) problems_ += sentence + "|";
        std::string log = log_.str();
        log_.str("");
        if (!log.empty()) log.pop_back();
        return log;
    }

    Stage stage_;
    ModuleLoader& loader_ = moduleLoader();
    std::map<std::string, std::string> orders_;
    std::ostringstream log_;
    std::string problems_;
};

struct Play {
    const char* name;
    const char* orders; // "A3 error, B1 lock"
    const char* steps;
    const char* seen;
    const char* problems; // sentences, each ended by '|'
    const char* loadedAfter;
};

const Play plays[] = {
    {"drawing open", "", "open,load A,unload A,close", "A1 A3 A4 A2", "", ""},
    {"one drawing message per drawing", "", "load A,open,send 3,close,send 4,open,close", "A1 A3 A4 A3 A4",
     "", "A"},
    {"twice", "", "load A,load A", "A1", "puppetA.arx is already loaded.|", "A"},
    {"locked", "A1 lock", "load A,unload A", "A1", "puppetA.arx is locked and can't be unloaded.|", "A"},
    {"refuses to start", "A1 error", "load A", "A1",
     "puppetA.arx reported an error and was unloaded (message 1).|", ""},
    {"throws at the start", "A1 throw", "load A", "A1",
     "puppetA.arx failed and was unloaded (message 1): broken.|", ""},
    {"refuses the drawing at load", "A3 error", "open,load A", "A1 A3 A2",
     "puppetA.arx reported an error and was unloaded (message 3).|", ""},
    {"refuses a drawing later", "A3 error", "load A,load B,open", "A1 B1 A3 A2 B3",
     "puppetA.arx reported an error and was unloaded (message 3).|", "B"},
    {"throws later, locked or not", "A1 lock, A9 throw", "open,load A,send 9", "A1 A3 A9 A4 A2",
     "puppetA.arx failed and was unloaded (message 9): broken.|", ""},
    {"error at unloading is no error", "A2 error", "load A,unload A", "A1 A2", "", ""},
    {"error at OLE unloading is no error", "A12 error", "load A,send 12", "A1 A12", "", "A"},
    {"throws at unloading", "A2 throw", "load A,unload A", "A1 A2",
     "puppetA.arx failed and was unloaded (message 2): broken.|", ""},
    {"end and quit only with functions", "B3 def1", "load A,load B,open,send 7,send 8,send 9",
     "A1 B1 A3 B3 B7 B8 A9 B9", "", "AB"},
    {"loads another", "A1 loadB", "open,load A", "A1 B1 B3 A3", "", "AB"},
    {"loads another at a message", "A9 loadB", "load A,send 9", "A1 A9 B1", "", "AB"},
    {"can't unload itself while it runs", "A9 stay", "load A,send 9", "A1 A9", "", "A"},
    {"unloads another that is next", "B9 unloadA", "load B,load A,send 9", "B1 A1 B9 A2", "", "B"},
    {"function by message", "A3 def7, A5 text code", "load A,open,call", "A1 A3 A5 =7", "", "A"},
    {"last value counts", "A3 def7, A5 code text", "load A,open,call", "A1 A3 A5 =\"文\"", "", "A"},
    {"no value given: nil", "A3 def7", "load A,open,call", "A1 A3 A5 =nil", "", "A"},
    {"no drawing, no function", "A3 def7", "load A,open,close,call", "A1 A3 A4 =undefined", "", "A"},
    {"newest definition hides", "A3 def1, B3 def2, B5 code", "load A,load B,open,call", "A1 B1 A3 B3 B5 =2",
     "", "AB"},
    {"unloading uncovers", "A3 def1, A5 code, B3 def2", "open,load A,load B,unload B,call",
     "A1 A3 B1 B3 B4 B2 A5 =1", "", "A"},
    {"defining again replaces", "A3 def1 def4 undef4", "load A,open,call", "A1 A3 =undefined", "", "A"},
    {"direct call", "A3 def1 direct", "load A,open,call", "A1 A3 =1", "", "A"},
    {"function that fails", "A3 def1, A5 error", "load A,open,call", "A1 A3 A5 A4 A2 =nil",
     "puppetA.arx reported an error and was unloaded (message 5).|", ""},
    {"stale command", "A1 command", "load A,unload A", "A1 A2", "", ""},
    {"the session's end takes locked ones too", "A1 lock, B2 throw", "load A,load B,open,end",
     "A1 B1 A3 B3 B4 B2 A4 A2", "puppetB.arx failed and was unloaded (message 2): broken.|", ""},
};

TEST_F(PuppetTest, Plays) {
    for (const Play& p : plays) {
        SCOPED_TRACE(p.name);
        problems_.clear();
        std::istringstream orders{p.orders};
        for (std::string order; std::getline(orders >> std::ws, order, ',');)
            orders_[order.substr(0, order.find(' '))] = order.substr(order.find(' '));
        EXPECT_EQ(play(p.steps), p.seen);
        EXPECT_EQ(problems_, p.problems);
        std::string loaded;
        for (const ModuleInfo& info : loader_.list()) loaded += info.name[6];
        EXPECT_EQ(loaded, p.loadedAfter);
        for (const char* name : {"A", "B"})
            EXPECT_EQ(isInProcess(pathOf(std::string{"puppet"} + name)),
                      loaded.find(*name) != std::string::npos)
                << name;
        orders_.clear();
        loader_.setDrawingOpen(false);
        loader_.unloadAll();
        log_.str("");
    }
}

TEST_F(PuppetTest, CommandOutlivesItsModuleAndComesBack) {
    orders_["A1"] = "command";
    EXPECT_EQ(play("load A"), "A1");
    EXPECT_TRUE(commandStack().find(L"do")->run());
    EXPECT_EQ(play("unload A"), "A! A2");
    ASSERT_FALSE(isInProcess(pathOf("puppetA")));
    ASSERT_TRUE(commandStack().find(L"do"));
    EXPECT_NE(commandStack().find(L"do")->run().error().find("was unloaded"), std::string::npos);
    EXPECT_EQ(play("load A"), "A1");
    EXPECT_TRUE(commandStack().find(L"do")->run());
    EXPECT_EQ(commandStack().all().size(), 1u);
}

TEST_F(PuppetTest, ModuleThatFailsInsideItsOwnCommandStaysMapped) {
    orders_["A1"] = "command";
    orders_["A9"] = "error";
    stage_.onCommand = [this](char) { log_ << loader_.broadcast(AcRx::kSaveMsg).size() << ' '; };
    EXPECT_EQ(play("load A"), "A1");
    EXPECT_TRUE(commandStack().find(L"do")->run());
    EXPECT_EQ(log_.str(), "A9 A2 1 ");
    EXPECT_TRUE(loader_.list().empty());
    EXPECT_TRUE(commandStack().find(L"do")->isStale());
    EXPECT_TRUE(isInProcess(pathOf("puppetA"))) << "its code was on the call stack";
    unloadOnce(pathOf("puppetA")); // the loader's share, so that later tests start clean
}

TEST_F(PuppetTest, DirectFunctionsThatFail) {
    orders_["A3"] = "def1 direct";
    play("load A,open");
    stage_.onFunction = [](char) { return RTERROR; };
    EXPECT_EQ(perform("call"), "The function fun reported an error.");
    stage_.onFunction = [](char) -> int { throw 1; };
    EXPECT_EQ(perform("call"), "The function fun failed: unknown exception.");
    EXPECT_EQ(loader_.list().size(), 1u);
}

TEST_F(PuppetTest, ModulesAreFoundByNameInAnyCaseAndByPath) {
    const std::string path = pathOf("puppetA");
    const std::string folder = QX_TEST_MODULES;
    for (const std::string& name : {path, std::string{"puppetA"}, std::string{"PUPPETA.ARX"},
                                    folder + "/./puppetA.arx", folder + "/puppetA"}) {
        ASSERT_TRUE(loader_.load(name == "puppetA" ? path : folder + "/puppetA")) << name;
        EXPECT_TRUE(loader_.unload(name)) << name;
        EXPECT_TRUE(loader_.list().empty()) << name;
    }
    ASSERT_TRUE(loader_.load(path));
    EXPECT_FALSE(loader_.unload(folder + "/../puppetA.arx"));
    EXPECT_FALSE(loader_.unload("puppet"));
}

TEST_F(PuppetTest, WhatIsNoModuleIsNotLoaded) {
    const std::pair<const char*, const char*> cases[] = {
        // the module, and a part of the sentence
        {"missing", "Can't find the module "},
        {"bare", "is not a module: it does not export acrxEntryPoint."},
        {"puppetWithoutVersion", "is not a module: it does not export acrxGetApiVersion."},
        {"puppetOfOtherHost", "was built for another host (its API version is 4711, not 1)."},
        {"../CMakeFiles", "Can't find the module "},
    };
    std::string reported;
    loader_.setReporter([&](const std::string& sentence) { reported = sentence; });
    for (const auto& [name, part] : cases) {
        const std::wstring path = qx::os::toWide(pathOf(name));
        EXPECT_NE(loader_.load(pathOf(name)).error().find(part), std::string::npos) << name;
        EXPECT_FALSE(isInProcess(pathOf(name))) << name;
        EXPECT_FALSE(acrxLoadModule(path.c_str(), true));
        EXPECT_NE(std::exchange(reported, "").find(part), std::string::npos) << name;
        EXPECT_FALSE(acrxLoadModule(path.c_str(), false));
        EXPECT_EQ(reported, "") << name;
    }
    EXPECT_TRUE(loader_.list().empty());
    EXPECT_EQ(log_.str(), "") << "no message may reach what is refused";
}

TEST(Lisp, ValuesPrintAsLispPrintsThem) {
    EXPECT_EQ(acedGetFunCode(), RTERROR);
    EXPECT_EQ(acedRetT(), RTERROR) << "nobody asked";
    LispCall outer{3};
    acedRetReal(2);
    {
        LispCall inner{4};
        EXPECT_EQ(acedGetFunCode(), 4);
        const std::pair<double, const char*> reals[] = {
            {2, "2.0"}, {-0.5, "-0.5"}, {1.0 / 3, "0.333333"}, {1e20, "1e+20"}, {1234567, "1.23457e+06"}};
        for (const auto& [value, text] : reals) {
            EXPECT_EQ(acedRetReal(value), RTNORM);
            EXPECT_EQ(inner.text(), text);
        }
        acedRetStr(L"a\"b\\中");
        EXPECT_EQ(inner.text(), "\"a\\\"b\\\\中\"");
        EXPECT_EQ(acedRetStr(nullptr), RTERROR);
        acedRetInt(-7);
        EXPECT_EQ(inner.text(), "-7");
        acedRetT();
        EXPECT_EQ(inner.text(), "T");
    }
    EXPECT_EQ(acedGetFunCode(), 3);
    EXPECT_EQ(outer.text(), "2.0") << "an inner call keeps its value to itself";
}

} // namespace
