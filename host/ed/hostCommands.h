// The host's own commands, registered on the command stack like those of modules: OPEN, SAVE, SAVEAS, QUIT,
// U, UNDO, REDO, ERASE, GROUP, LIST, SETVAR, ARX. They act on the current session.
#pragma once

#include "ed/Session.h"

#include <string>
#include <vector>

namespace qx::ed {

/// May be called again; then it changes nothing.
QX_HOST_API void registerHostCommands();

// What the commands are made of, one function each.
void openCommand();
void saveCommand();
void saveAsCommand();
void quitCommand();
void undoCommand();
void undoManyCommand();
void redoCommand();
void eraseCommand();
void groupCommand();
void listCommand();
void selectCommand();
void identifyPointCommand();
void setVariableCommand();
void modulesCommand();

/// Prints a sentence in the session's dialogue.
void say(Session& session, const std::string& sentence);
/// A question with a yes and a no, Enter meaning no.
bool confirms(Session& session, const std::string& question);

/// What the person selects, or has selected before the command; nothing when that is cancelled.
std::vector<AcDbObjectId> askObjects();

/// False, with a sentence, when no drawing is open.
bool hasDrawing(Session& session);

} // namespace qx::ed
