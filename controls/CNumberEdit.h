// An edit box for a short decimal number. It looks at keys only: pasted text is taken as it is, and whoever
// reads the box converts what stands there.
#pragma once

#include "controls/NumberKeys.h"

#include <afxwin.h>

class CNumberEdit : public CEdit {
public:
    void SetMaxLength(UINT characters) { keys_.setMaximumLength(characters); }
    /// The number that the text begins with, after blanks; 0 without one.
    double Number() const;

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    DECLARE_MESSAGE_MAP()

private:
    using Verdict = qx::controls::NumberKeys::Verdict;

    Verdict verdictOn(const MSG& message);

    qx::controls::NumberKeys keys_;
};
