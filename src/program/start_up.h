#pragma once

// Start-up and shut-down: Form_Load does all the setting up in one pass, OpenAll opens the office's
// tables and the store for the whole run, and the only thing done on the way out is to save the
// settings.

namespace ostrel {

/// Sets up everything and shows the form.
///   throws  ProgramEnded where the program cannot or shall not go on
void Form_Load();

/// Finds out which client this laptop serves, opens its tables and its store.
///   throws  ProgramEnded when a table's file is missing
void OpenAll();

/// The form is about to go: saves the settings.
void Form_QueryUnload();

/// Closes the form, as its close box does.
void mnuExit_Click();

}  // namespace ostrel
