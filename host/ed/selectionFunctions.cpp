#include "accmd.h"
#include "acedads.h"
#include "ed/SelectionPrompt.h"
#include "ed/adsNames.h"
#include "os/encoding.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

using namespace qx;
using ed::RecordSet;
using ed::Session;

constexpr int tooManySets = 3; // ERRNO

// The session that has a drawing; without one there is nothing to select.
Session* activeSession() {
    Session* session = Session::current();
    return session && session->drawing() ? session : nullptr;
}

int handOut(Session& session, RecordSet set, ads_name name) {
    if (session.sets().create(name, std::move(set))) return RTNORM;
    session.variables().force("ERRNO", tooManySets);
    return RTERROR;
}

int handOutSelection(Session& session, RecordSet set, ads_name name) {
    session.noteSelection(set);
    return handOut(session, std::move(set), name);
}

bool has(const Session& session, int flag) {
    return session.isCommandActive() && (session.commandFlags & flag);
}

// What was selected before the command, if the command may know. One that does not redraw it takes it away.
RecordSet takePickFirst(Session& session) {
    if (!has(session, ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW)) return RecordSet{};
    auto members = session.pickFirst.members();
    std::erase_if(members, [&](db::Record* each) { return !session.drawing()->isSelectable(each); });
    if (!has(session, ACRX_CMD_REDRAW)) session.pickFirst.clear();
    return RecordSet{*session.drawing(), std::move(members)};
}

int getImplied(Session& session, ads_name name) {
    RecordSet set = takePickFirst(session);
    return set.isEmpty() ? RTERROR : handOutSelection(session, std::move(set), name);
}

int ask(Session& session, ed::SelectionPrompt prompt, ads_name name) {
    session.takeRules();
    switch (prompt.run()) {
    case ed::SelectionPrompt::End::cancelled:
        return RTCAN;
    case ed::SelectionPrompt::End::nothing:
        return RTERROR;
    case ed::SelectionPrompt::End::selected:
        break;
    }
    return handOutSelection(session, prompt.set(), name);
}

int getByDialogue(Session& session, ads_name name) {
    RecordSet set = takePickFirst(session);
    if (!set.isEmpty()) return handOutSelection(session, std::move(set), name);
    return ask(session, ed::SelectionPrompt{session}, name);
}

int getWithPrompts(Session& session, const void* pt1, ads_name name) {
    const auto* prompts = static_cast<const ACHAR* const*>(pt1);
    if (!prompts || !prompts[0] || !prompts[1]) return RTREJ;
    return ask(session, ed::SelectionPrompt{session, os::toUtf8(prompts[0]), os::toUtf8(prompts[1])}, name);
}

template <class Take> int getAll(Session& session, const Take& take, ads_name name) {
    std::vector<db::Record*> records;
    session.drawing()->forEachInModelSpace([&](db::Record* each) {
        if (take(each)) records.push_back(each);
    });
    if (records.empty()) return RTERROR;
    return handOutSelection(session, RecordSet{*session.drawing(), std::move(records)}, name);
}

std::string modeOf(const ACHAR* str) {
    std::string mode = ed::upperCase(os::toUtf8(str));
    std::erase(mode, '_');
    return mode;
}

// An entity of its own: neither erased nor a vertex or attribute of another.
db::Record* mainEntity(const ads_name name) {
    db::Record* record = name ? ed::namedRecord(name) : nullptr;
    if (!record || record->has(db::Record::erased)) return nullptr;
    const bool isPart = record->kind == db::Kind::vertex || record->kind == db::Kind::attribute ||
                        record->kind == db::Kind::sequenceEnd;
    return isPart ? nullptr : record;
}

RecordSet* setOf(const ads_name name) {
    Session* session = Session::current();
    return session && name ? session->sets().find(name) : nullptr;
}

} // namespace

int acedSSGet(const ACHAR* str, const void* pt1, const void*, const resbuf* filter, ads_name ss) {
    Session* session = activeSession();
    if (!session) return RTERROR;
    if (filter) return RTREJ;
    if (!str || !*str) return pt1 ? RTREJ : getByDialogue(*session, ss);
    const std::string mode = modeOf(str);
    if (mode == "I") return getImplied(*session, ss);
    if (mode == ":$") return getWithPrompts(*session, pt1, ss);
    const db::Drawing& drawing = *session->drawing();
    if (mode == "A")
        return getAll(
            *session, [&](db::Record* each) { return drawing.isSelectable(each); }, ss);
    if (mode == "X")
        return getAll(
            *session, [](db::Record* each) { return !each->has(db::Record::erased); }, ss);
    return RTREJ;
}

int acedSSLength(const ads_name sname, Adesk::Int32* len) {
    const RecordSet* set = setOf(sname);
    if (!set || !len) return RTERROR;
    *len = static_cast<Adesk::Int32>(set->size());
    return RTNORM;
}

int acedSSName(const ads_name ss, int i, ads_name entres) {
    const RecordSet* set = setOf(ss);
    if (!set || i < 0 || static_cast<std::size_t>(i) >= set->size()) return RTERROR;
    ed::nameEntity(entres, set->members()[static_cast<std::size_t>(i)]);
    return RTNORM;
}

int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result) {
    Session* session = activeSession();
    db::Record* record = mainEntity(ename);
    if (!session || (ename && !record)) return RTERROR;
    if (!sname) {
        RecordSet set{session->drawing()};
        if (record) set.add({&record, 1});
        return handOut(*session, std::move(set), result);
    }
    RecordSet* set = setOf(sname);
    if (!set || !record) return RTERROR;
    set->add({&record, 1});
    std::copy_n(sname, 2, result);
    return RTNORM;
}

int acedSSDel(const ads_name ename, const ads_name ss) {
    RecordSet* set = setOf(ss);
    db::Record* record = ename ? ed::namedRecord(ename) : nullptr;
    return set && record && set->remove({&record, 1}) == 1 ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name ename, const ads_name ss) {
    RecordSet* set = setOf(ss);
    const db::Record* record = ename ? ed::namedRecord(ename) : nullptr;
    return set && record && set->contains(record) ? RTNORM : RTERROR;
}

int acedSSFree(const ads_name sname) {
    Session* session = Session::current();
    return session && sname && session->sets().free(sname) ? RTNORM : RTERROR;
}

int acedSSSetFirst(const ads_name pset, const ads_name) {
    Session* session = activeSession();
    if (!session || !has(*session, ACRX_CMD_REDRAW)) return RTERROR;
    if (!pset) {
        session->pickFirst.clear();
        return RTNORM;
    }
    const RecordSet* set = setOf(pset);
    if (!set) return RTERROR;
    session->pickFirst = *set;
    return RTNORM;
}
