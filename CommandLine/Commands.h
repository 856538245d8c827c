#pragma once

#include "Command.h"

class QCommandLineParser;

// The functions behind the table of commands, grouped by the file that defines them.

namespace quib::cli {

// NoteCommands.cpp
ExitStatus runNew(Session &session, const QCommandLineParser &parser);
ExitStatus runShow(Session &session, const QCommandLineParser &parser);
ExitStatus runEdit(Session &session, const QCommandLineParser &parser);
ExitStatus runDuplicate(Session &session, const QCommandLineParser &parser);
ExitStatus runMerge(Session &session, const QCommandLineParser &parser);
ExitStatus runAttach(Session &session, const QCommandLineParser &parser);

// StateCommands.cpp
ExitStatus runTrash(Session &session, const QCommandLineParser &parser);
ExitStatus runRestore(Session &session, const QCommandLineParser &parser);
ExitStatus runArchive(Session &session, const QCommandLineParser &parser);
ExitStatus runUnarchive(Session &session, const QCommandLineParser &parser);
ExitStatus runPin(Session &session, const QCommandLineParser &parser);
ExitStatus runUnpin(Session &session, const QCommandLineParser &parser);
ExitStatus runDelete(Session &session, const QCommandLineParser &parser);

// ListCommands.cpp
ExitStatus runList(Session &session, const QCommandLineParser &parser);
ExitStatus runSearch(Session &session, const QCommandLineParser &parser);

// TagCommands.cpp
ExitStatus runTags(Session &session, const QCommandLineParser &parser);
ExitStatus runTagRename(Session &session, const QCommandLineParser &parser);
ExitStatus runTagDelete(Session &session, const QCommandLineParser &parser);

// AutomationCommands.cpp
ExitStatus runOpen(Session &session, const QCommandLineParser &parser);
ExitStatus runToken(Session &session, const QCommandLineParser &parser);

// PreferencesCommands.cpp
ExitStatus runPreferences(Session &session, const QCommandLineParser &parser);
ExitStatus runPreferencesGet(Session &session, const QCommandLineParser &parser);
ExitStatus runPreferencesSet(Session &session, const QCommandLineParser &parser);
ExitStatus runPreferencesReset(Session &session, const QCommandLineParser &parser);

// CheckCommand.cpp
ExitStatus runCheck(Session &session, const QCommandLineParser &parser);

// InspectCommands.cpp
ExitStatus runInspectParse(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectStyle(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectEdit(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectRender(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectTheme(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectLanguage(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectPredicate(Session &session, const QCommandLineParser &parser);
ExitStatus runInspectHighlightPattern(Session &session, const QCommandLineParser &parser);

// HelpCommands.cpp
ExitStatus runCompletion(Session &session, const QCommandLineParser &parser);
ExitStatus runManual(Session &session, const QCommandLineParser &parser);

} // namespace quib::cli
