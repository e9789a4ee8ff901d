#pragma once

// Start-up and shut-down: Form_Load does all the setting up in one pass, OpenAll opens the office's
// tables and the store for the whole run, and on the way out the settings
// are saved and the store is closed.

namespace ostrel {

/// Sets up everything and shows the form.
///   throws  ProgramEnded where the program cannot or shall not go on
void Form_Load();

/// Finds out which client this laptop serves, opens its tables and its store.
///   throws  ProgramEnded when a table's file is missing
void OpenAll();

/// The form is about to go: saves the settings, and lines that could not be written when the operator
/// was told so.
void Form_QueryUnload();

/// Closes what OpenAll has opened, when the form is gone: what still has to be written is tried for the
/// last time, before anything that it needs goes.
void CloseAll();

/// Closes the form, as its close box does.
void mnuExit_Click();

}  // namespace ostrel
