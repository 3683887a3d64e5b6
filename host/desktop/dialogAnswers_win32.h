// Dialogs in the script beside the drawing: what a person left in one is noted as an answer; while a script
// is repeated, the next answer works the dialog in the person's place.
#pragma once

#include "desktop/Desk.h"

namespace qx::desktop {

class DialogAnswers {
public:
    DialogAnswers(ed::Session& session, const Desk& desk);
    ~DialogAnswers();
    DialogAnswers(const DialogAnswers&) = delete;
    DialogAnswers& operator=(const DialogAnswers&) = delete;
};

} // namespace qx::desktop
