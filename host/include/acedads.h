// The editor's C functions: LISP functions that modules define, and what commands ask the person for.
// Each answers RTNORM or another of the RT... results unless its comment says otherwise.
#pragma once

#include "adscodes.h"
#include "adsdef.h"
#include "qxexport.h"

// Functions for LISP. A definition belongs to the module that makes it and to the open drawing; the newest
// definition of a name hides older ones. Names compare without regard to the case of ASCII letters.

/// Defines a function. When it is called, the module gets kInvkSubrMsg, and acedGetFunCode gives `funcno`. A
/// module that defines its own name again replaces it.
QX_HOST_API int acedDefun(const ACHAR* sname, int funcno);
/// Takes the calling module's definition back; RTERROR when it has none with this name and number.
QX_HOST_API int acedUndef(const ACHAR* sname, int funcno);
/// From now on the functions that the module defined with `fcode` are called directly, without kInvkSubrMsg;
/// a null `fhdl` ends that. RTERROR when the module has defined none.
QX_HOST_API int acedRegFunc(int (*fhdl)(), int fcode);
/// The number of the function that is being called; RTERROR outside a call.
QX_HOST_API int acedGetFunCode();

// The value of the function that is being called. The last one given counts; without any the value is nil.
// Outside a call they answer RTERROR.

/// No value: nothing is printed.
QX_HOST_API int acedRetVoid();
QX_HOST_API int acedRetT();
QX_HOST_API int acedRetNil();
QX_HOST_API int acedRetInt(int value);
QX_HOST_API int acedRetReal(ads_real value);
/// A null string is refused with RTERROR.
QX_HOST_API int acedRetStr(const ACHAR* value);

// Selection sets. A session has 128 of them at most; the call that would make one more answers RTERROR and
// sets ERRNO to
// 3. A set that a command has not freed is freed when the command ends. Outputs are changed on RTNORM only.

/// Selects objects of the open drawing that are on visible layers; `filter` must be null. By `str`:
/// null: what was selected before the command, when its flags allow that and there is something; otherwise
/// asks. "I", "_I": what was selected before the command; RTERROR when there is nothing or the flags don't
/// allow it.
/// ":$": asks; `pt1` is an array of two strings, the prompts for adding and for removing.
/// "A": all objects of model space. "X": the same, with those on invisible layers.
/// RTCAN when the person cancels; RTERROR when Enter comes with nothing selected, and then there is no set;
/// RTREJ for any other mode.
QX_HOST_API int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const struct resbuf* filter,
                          ads_name ss);
/// RTERROR for a name of no set; so do all the following.
QX_HOST_API int acedSSLength(const ads_name sname, Adesk::Int32* len);
/// The member's name, counting from 0; RTERROR outside the set.
QX_HOST_API int acedSSName(const ads_name ss, int i, ads_name entres);
/// (null, null): a new empty set. (entity, null): a new set of one. (entity, set): adds it, unless it is in
/// there already, which is no error. RTERROR, with no set made, for an entity that is erased or part of
/// another.
QX_HOST_API int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result);
/// RTERROR when the entity is not in the set.
QX_HOST_API int acedSSDel(const ads_name ename, const ads_name ss);
/// RTNORM when the entity is in the set, RTERROR when not.
QX_HOST_API int acedSSMemb(const ads_name ename, const ads_name ss);
QX_HOST_API int acedSSFree(const ads_name sname);
/// Makes the set's objects the selected ones; two nulls select nothing. RTERROR, without an effect, in a
/// command without ACRX_CMD_REDRAW. The second set is not used.
QX_HOST_API int acedSSSetFirst(const ads_name pset, const ads_name unused);

// Questions with one answer. RTCAN when the person cancels; RTNONE for Enter, unless it is said
// otherwise; RTKWORD for a keyword, which acedGetInput then gives. Outputs are changed on RTNORM only.

/// Sets rules for the next question only. `val`: 1 Enter is no answer, 2 no zero, 4 no negative number; other
/// bits are not used here. `kwl`: keywords with blanks between them, their abbreviations in capitals; may be
/// null.
QX_HOST_API int acedInitGet(int val, const ACHAR* kwl);
/// One object by a pick: the main entity, without its groups, and where the pick was in user coordinates,
/// which need not be on the object. A null `str` gives the host's own prompt. A pick that hits nothing is not
/// asked again: RTERROR, and ERRNO is 7; Enter gives RTERROR too, and ERRNO is 52. Of the rules only keywords
/// count.
QX_HOST_API int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres);
/// A point in user coordinates. From `pt`, when it is not null, a relative point counts.
QX_HOST_API int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result);
QX_HOST_API int acedGetReal(const ACHAR* prompt, ads_real* result);
/// The keyword of the rules as the list spells it; `result` holds 133 characters. RTNONE for Enter.
QX_HOST_API int acedGetKword(const ACHAR* prompt, ACHAR* result);
/// The keyword that was given last, cut to 132 characters.
QX_HOST_API int acedGetInput(ACHAR* result);

// System variables. RTERROR for a name that there is not.

/// RTSHORT or RTSTR; a string is the caller's, to be freed with acutDelString.
QX_HOST_API int acedGetVar(const ACHAR* name, struct resbuf* result);
/// Takes RTSHORT, RTLONG. RTERROR for a value beyond the variable's limits and for a variable that can't be
/// set.
QX_HOST_API int acedSetVar(const ACHAR* name, const struct resbuf* value);
