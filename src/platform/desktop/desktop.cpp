#include "platform/desktop/desktop.h"

#include <cassert>

#include "platform/database/database.h"

namespace ostrel {

namespace {
Desktop* desktopOfThisRun = nullptr;
}

Desktop& TheDesktop() {
  assert(desktopOfThisRun != nullptr);
  return *desktopOfThisRun;
}

void SetDesktop(Desktop* desktop) { desktopOfThisRun = desktop; }

BoxAnswer MsgBox(const MessageBoxRequest& request) {
  // The box may stand for hours while the battery runs down.
  SettleAllShared();
  return TheDesktop().ShowMessageBox(request);
}

BoxAnswer MsgBox(const std::string& text, BoxButtons buttons, BoxIcon icon,
                 const std::string& title) {
  return MsgBox({.Text = text, .Buttons = buttons, .Icon = icon, .Title = title});
}

std::string InputBox(const std::string& prompt, const std::string& title,
                     const std::string& offered) {
  SettleAllShared();
  return TheDesktop().ShowInputBox(prompt, title, offered);
}

void Beep() { TheDesktop().Beep(); }

void SetMousePointer(MousePointer pointer) { TheDesktop().SetPointer(pointer); }

void DoEvents() { TheDesktop().EventPass(); }

}  // namespace ostrel
