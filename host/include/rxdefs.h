// Messages that the host sends to a module's entry point, and what the module answers.
#pragma once

namespace AcRx {

enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15,
    kSuspendMsg = 16,
    kInitTabGroupMsg = 17,
    kEndTabGroupMsg = 18
};

/// kRetError makes the host unload the module, except after kUnloadAppMsg and kOleUnloadAppMsg.
enum AppRetCode { kRetOK = 0, kRetError = 3 };

/// The order in which a dictionary is walked.
enum DictIterType { kDictSorted = 0 };

} // namespace AcRx

/// What a module's acrxGetApiVersion answers when it was built for this host; the host loads no other.
constexpr int qxHostApiVersion = 1;
