#include "platform/qt/qt_program.h"

#include "platform/forms/form.h"
#include "platform/qt/no_display.h"

namespace ostrel {

namespace {

std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv) {
  QApplication::setStyle(
      "Fusion");  // the same on every system; before the application, which reads it
  const NoDisplayReport noDisplay;  // the constructor is what fails without a display
  return std::make_unique<QApplication>(argc, argv);
}

}  // namespace

QtProgram::QtProgram(int& argc, char** argv) : application_(MakeApplication(argc, argv)) {
  SetDesktop(&desktop_);
}

FormView& QtProgram::Open(Form& form) {
  FormView& window = window_.emplace(form, edge_);
  QApplication::setFont(window.TextFont());  // boxes and menus read as the form does
  edge_.Run([&] {
    form.Raise(form.Load);
    form.Show();
  });
  return window;
}

int QtProgram::Run() { return edge_.Ended() ? 0 : QApplication::exec(); }

}  // namespace ostrel
