// The loop of messages that a modal dialog runs.
#pragma once

#include "qxexport.h"

#include <exception>
#include <functional>
#include <windows.h>

namespace qx::afx {

/// Called with the dialog's window each time there is no message left; false when there is nothing to do, and
/// the loop waits. For whoever works a dialog in a person's place.
using IdleStep = std::function<bool(HWND dialog)>;
QX_HOST_API void setIdleStep(IdleStep step);

/// Told of each modal dialog that has ended while its controls are still there: its template, and the last
/// command that one of them gave.
using DialogEnd = std::function<void(HWND dialog, UINT templateId, UINT command)>;
QX_HOST_API void setDialogEnd(DialogEnd end);
void tellDialogEnd(HWND dialog, UINT templateId, UINT command);

/// Asked whether a dialog is to be seen; without it all are.
QX_HOST_API void setDialogsShown(std::function<bool()> shown);
bool areDialogsShown();

/// The window that dialogs stand before which were made without a parent; null for none.
QX_HOST_API void setMainWindow(HWND window);
HWND mainWindow();

/// Runs until `isRunning` answers false, or the program is to end.
void runModalLoop(HWND dialog, const std::function<bool()>& isRunning);

/// An exception can't pass through the system's own code between a window and the loop: it is kept here
/// meanwhile.
void keepException();
/// Goes on with what was kept.
void rethrowException();

/// How many windows have an object attached. 0 when no dialog is open.
QX_HOST_API std::size_t attachedWindows();

} // namespace qx::afx
