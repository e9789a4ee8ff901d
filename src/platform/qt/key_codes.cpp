#include "platform/qt/key_codes.h"

#include <array>
#include <utility>

#include "platform/forms/control.h"

namespace ostrel {

namespace {

constexpr int kBackspace = 8, kBlank = 32, kRubout = 127;
constexpr int kFirstFunctionKey = 112;

// The numbers that routines compare with. The toolkit's own are others and change with its
// versions.
constexpr std::array<std::pair<Qt::Key, int>, 21> kCodes = {{
    {Qt::Key_Backspace, kBackspace},
    {Qt::Key_Tab, key::kTab},
    {Qt::Key_Backtab, key::kTab},
    {Qt::Key_Return, key::kEnter},
    {Qt::Key_Enter, key::kEnter},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, key::kEscape},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, key::kLeft},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, key::kRight},
    {Qt::Key_Down, 40},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
}};

Qt::KeyboardModifiers CommandModifiers(const QKeyEvent& event) {
  return event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
  const int pressed = event.key();
  if (pressed >= Qt::Key_F1 && pressed <= Qt::Key_F24) {
    return kFirstFunctionKey + pressed - Qt::Key_F1;
  }
  for (const auto& [qt, code] : kCodes) {
    if (qt == pressed) return code;
  }
  // Letters and digits have the same number in both worlds; other characters come by KeyPress
  // alone.
  const bool named = (pressed >= Qt::Key_A && pressed <= Qt::Key_Z) ||
                     (pressed >= Qt::Key_0 && pressed <= Qt::Key_9) || pressed == Qt::Key_Space;
  return named ? pressed : 0;
}

int ShiftOf(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  return (held.testFlag(Qt::ShiftModifier) ? 1 : 0) | (held.testFlag(Qt::ControlModifier) ? 2 : 0) |
         (held.testFlag(Qt::AltModifier) ? 4 : 0);
}

int CharacterOf(const QKeyEvent& event) {
  if (IsCommandKey(event)) return 0;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return key::kEnter;
    case Qt::Key_Escape:
      return key::kEscape;
    case Qt::Key_Backspace:
      return kBackspace;
    default:
      break;
  }
  if (event.text().isEmpty()) return 0;
  const uint first = event.text().toUcs4().constFirst();
  return first >= kBlank && first != kRubout ? static_cast<int>(first) : 0;
}

bool IsCommandKey(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = CommandModifiers(event);
  if (!held) return false;
  // Ctrl and Alt together are how some keyboards type a character, such as @: with a text to it
  // that is typing and no command.
  return held != (Qt::ControlModifier | Qt::AltModifier) || event.text().isEmpty();
}

}  // namespace ostrel
