#pragma once

// A program with a form of ours on a real screen: what must be set up before the form is loaded, in
// the one order in which it works, and how its window comes up. main, the benchmarks of the window
// and the sample day all start this way. It knows no form by name.

#include <QApplication>

#include <memory>
#include <optional>

#include "platform/qt/event_edge.h"
#include "platform/qt/form_view.h"
#include "platform/qt/qt_desktop.h"

namespace ostrel {

class QtProgram {
 public:
  /// Makes the toolkit's application and the desktop of this run (SetDesktop). Without a display the
  /// process ends here with a word on the standard error stream and exit code 1. `argc` must outlive
  /// the object, as the toolkit asks for it.
  QtProgram(int& argc, char** argv);
  ~QtProgram() { SetDesktop(nullptr); }
  QtProgram(const QtProgram&) = delete;
  QtProgram& operator=(const QtProgram&) = delete;

  /// The window of a form in its design state; then raises the form's Load, a failure of which does
  /// not keep the form away, and shows it.
  FormView& Open(Form& form);

  EventEdge& Edge() { return edge_; }

  /// Runs the event loop until the form has gone; at once when Load has ended the program.
  ///   returns  the exit code of the process
  int Run();

 private:
  std::unique_ptr<QApplication> application_;  // before all that is drawn, after it in going
  EventEdge edge_;
  QtDesktop desktop_{edge_};
  std::optional<FormView> window_;
};

}  // namespace ostrel
