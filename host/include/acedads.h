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
/// The number of the function that is being called; RTERROR outside kInvkSubrMsg.
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

// Selection sets.

/// Selects by the mode in `str`; "_I" takes the objects that were selected before the command.
QX_HOST_API int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const struct resbuf* filter,
                          ads_name ss);
