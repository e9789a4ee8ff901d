#pragma once

// The Desktop: everything of the machine that is in front of the operator. Two of them exist, the
// real one (platform/qt) and the scripted one of the tests; a routine cannot tell which it has.

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ostrel {

class PrintJob;
struct PrintJobRequest;

enum class BoxIcon { None, Stop, Question, Exclamation, Information };
enum class BoxButtons { Ok, OkCancel, AbortRetryIgnore, YesNoCancel, YesNo };

/// The button that closed a box; the numbers are the system's own.
enum class BoxAnswer { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

/// Pointer shapes by the system's numbers.
enum class MousePointer { Normal = 0, Wait = 11 };

/// Title of a box that has none of its own.
inline constexpr std::string_view kDefaultTitle = "Ostrel Payroll";

struct MessageBoxRequest {
  std::string Text;  ///< lines parted by carriage returns
  BoxButtons Buttons = BoxButtons::Ok;
  BoxIcon Icon = BoxIcon::None;
  std::string Title = std::string(kDefaultTitle);
  std::string Detail =
      {};  ///< shown below the text, smaller; for what the system's text leaves out
};

struct OpenFileRequest {
  std::string Title;
  std::string Folder;  ///< where to start, if it exists
  std::string FilterName;
  std::string FilterPattern;  ///< such as Clnt*.zip, matched without regard to case
};

class Desktop {
 public:
  virtual ~Desktop() = default;

  /// Modal. The first button is the default; Esc and the close box answer Cancel where that is a
  /// button, Ok where it is the only one, and nothing otherwise.
  virtual BoxAnswer ShowMessageBox(const MessageBoxRequest& request) = 0;

  /// Modal. The empty text on Cancel.
  virtual std::string ShowInputBox(const std::string& prompt, const std::string& title,
                                   const std::string& offered) = 0;

  /// Modal. Full path of an existing file, or the empty text on Cancel.
  virtual std::string ShowOpenFile(const OpenFileRequest& request) = 0;

  /// Hands a document to the desktop's own viewer and does not wait for it.
  ///   returns  whether there is a viewer for it
  virtual bool ShowDocument(const std::string& path) = 0;

  virtual void Beep() = 0;
  virtual void SetPointer(MousePointer pointer) = 0;

  /// Repaints and timers; no keys or clicks, so that no command starts inside another.
  virtual void EventPass() = 0;

  /// Runs `action` once the running event is over.
  virtual void Post(std::function<void()> action) = 0;

  virtual bool CtrlKey() = 0;  ///< down at this moment
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;

  /// A job for the default printer, or a PDF where none is installed (print_job.h).
  ///   throws  the file's failure when the PDF cannot be made
  virtual std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) = 0;
};

/// The desktop of this run. Setting it is for main and for tests; asking before that is a fault of
/// the program (assert).
Desktop& TheDesktop();
void SetDesktop(Desktop* desktop);

// Short forms for the routines. Each makes durable what a running command has gathered before it
// shows its box (SettleAllShared), and throws that failure instead of showing it.

BoxAnswer MsgBox(const MessageBoxRequest& request);
BoxAnswer MsgBox(const std::string& text, BoxButtons buttons = BoxButtons::Ok,
                 BoxIcon icon = BoxIcon::None,
                 const std::string& title = std::string(kDefaultTitle));
std::string InputBox(const std::string& prompt, const std::string& title,
                     const std::string& offered);
void Beep();
void SetMousePointer(MousePointer pointer);
void DoEvents();

}  // namespace ostrel
