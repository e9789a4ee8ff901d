#pragma once

// A key of the toolkit as the form's events know it.

#include <QKeyEvent>

namespace ostrel {

/// Code of the key going down, the system's own number; 0 for a key that has none.
int KeyCodeOf(const QKeyEvent& event);

/// Bit 0 Shift, bit 1 Ctrl, bit 2 Alt.
int ShiftOf(const QKeyEvent& event);

/// The character that the key makes (Enter 13, Esc 27, Backspace 8, else its Unicode number), or 0.
int CharacterOf(const QKeyEvent& event);

/// Ctrl or Alt is held and the key makes no character by it: a key for menus and access keys. AltGr,
/// which comes as both together, makes characters.
bool IsCommandKey(const QKeyEvent& event);

}  // namespace ostrel
