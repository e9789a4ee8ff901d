#include "frame/failure_reporting.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <new>
#include <stdexcept>

#include "frame/app_state.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/files/text_output.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "platform/values/text.h"

namespace ostrel {

namespace detail {
StatementProbe* TheProbe = nullptr;
}

namespace {

constexpr std::int32_t kTooComplex = 16;  // skipped without a word
constexpr float kLockPatience = 10.0F;    // seconds
constexpr float kSecondsOfADay = 86400.0F;
constexpr int kDeepestOwnReport = 2;

// Failures that another user of the same data causes and that pass by themselves.
constexpr std::array<std::int32_t, 8> kLockClass = {
    failure_number::kPermissionDenied, 725,
    failure_number::kExclusive,        failure_number::kNoEditUnderWay,
    failure_number::kDiskOrNetwork,    failure_number::kSaveLocked,
    failure_number::kUpdateLocked,     failure_number::kLockedByUser};

/// Site and time of the first failure of the lock class at the site that failed last.
struct Conflict {
  std::int32_t Line = 0;
  std::string Routine;
  std::string Module;
  float Time = 0;  // seconds since midnight
};
Conflict LastConflict;

int OwnReports = 0;  // reports of the reporter's own failures that are under way

bool IsLockClass(std::int32_t number) {
  return std::find(kLockClass.begin(), kLockClass.end(), number) != kLockClass.end();
}

/// Whether the site's ten seconds have run out; a new site gets its ten seconds first. A clock that
/// reads earlier than the first failure has passed midnight meanwhile.
bool PatienceIsOver(std::int32_t line, const std::string& routine, const std::string& module) {
  const auto now = static_cast<float>(SecondsSinceMidnight());
  const bool sameSite =
      LastConflict.Line == line && LastConflict.Routine == routine && LastConflict.Module == module;
  if (!sameSite) {
    LastConflict = {line, routine, module, now};
    return false;
  }
  const float unwrapped = now < LastConflict.Time ? now + kSecondsOfADay : now;
  return unwrapped >= LastConflict.Time + kLockPatience;
}

std::string Hint(std::int32_t number) {
  if (number == failure_number::kPathAccess) {
    return "\rIf you are trying to create a new company on a network drive, you must have "
           "'SUPERVISOR' rights.";
  }
  if (number == failure_number::kExternalTableFormat || number == failure_number::kExternalDriver) {
    return "\rDo Tools!Rebuild Indexes to correct the problem.";
  }
  return {};
}

/// Which build of which program reports: its file's date tells phone support the version.
std::string VersionNote() {
  const std::string folder = ExecutableFolder() + kPathSeparator;
  const std::string base = ExecutableBaseName();
  std::string file = folder + base + kExecutableExtension;
  std::string shown = file;
  if (UpperCase(base).starts_with("HALV")) {
    shown = "Halvane Accounting";
    file = folder + shown + kExecutableExtension;
  }
  const Moment dated = Exist(file) ? LastModified(file) : Moment{};
  return "   (" + shown + " Tq4 version dated: " + Format(dated, "ddddd") + ")";
}

/// Errors.Log, or the standard error stream where the log cannot be written: a report must reach
/// the operator even on a disk that is full or gone.
class LogRecord {
 public:
  LogRecord() {
    try {
      file_.Open(LogPath());
    } catch (const Failure&) {
      lost_ = true;
    }
  }

  void Write(const std::string& text) {
    try {
      if (!lost_) file_.Write(text);
    } catch (const Failure&) {
      lost_ = true;
    }
    if (lost_) std::cerr << text;
  }

 private:
  AppendFile file_;
  bool lost_ = false;
};

std::string RecordText(const std::string& message) {
  const std::size_t cut = message.find('\r');
  std::string record = message.substr(0, cut) + "\r\n";
  if (cut != std::string::npos) record += "   " + message.substr(cut + 1) + "\r\n";
  return record + "   Client# " + ClientNumb + "  in " + DataPath + "  on " +
         Format(Now(), "General Date");
}

const char* AnswerNote(std::int16_t answer) {
  if (answer > 0) return " *Opr Aborted Job\r\n";
  return answer < 0 ? " *Opr Retried Error\r\n" : " *Opr Ignored Error\r\n";
}

std::int16_t AnswerOf(BoxAnswer button) {
  if (button == BoxAnswer::Abort) return 2;
  return button == BoxAnswer::Retry ? std::int16_t{-1} : std::int16_t{0};
}

/// What is gathered is made durable before a box stands for as long as the operator takes. Rows that
/// cannot be written now stay gathered; the command's own commit reports them.
void SettleBeforeBox() {
  try {
    SettleAllShared();
  } catch (const Failure&) {
    return;
  }
}

}  // namespace

void DisplayErrMessage(std::int32_t& ErrNum, std::string& ErrMsg, std::int32_t& ErrLine,
                       const std::string& RoutineLabel, const std::string& ModuleLabel,
                       std::int16_t& Answer) {
  // The reporter's own tail: the new failure takes the place of the one being reported.
  const auto statement = [&](std::int32_t line, const auto& body) {
    for (;;) {
      try {
        detail::RunProbed({HalvaneModule, "DisplayErrMessage", line}, body);
        return;
      } catch (const std::exception& fault) {
        const Failure own = AsFailure(fault);
        ErrNum = own.Number;
        ErrMsg = own.Text;
        ErrLine = line;
        if (OwnReports >= kDeepestOwnReport) return;
        ++OwnReports;
        DisplayErrMessage(ErrNum, ErrMsg, ErrLine, "DisplayErrMessage", HalvaneModule, Answer);
        --OwnReports;
        if (Answer == 0) return;
      }
    }
  };

  if (ErrNum == kTooComplex) {
    Answer = 0;
    return;
  }
  std::string title = "PROGRAM or DATA ERROR: PHONE SUPPORT - NOW!!";
  if (UserCount > 1 && IsLockClass(ErrNum)) {
    if (!PatienceIsOver(ErrLine, RoutineLabel, ModuleLabel)) {
      Answer = -1;
      statement(470, [] { DoEvents(); });
      return;
    }
    ErrMsg = "Data locked (being used exclusively) by another user. " + ErrMsg;
    if (RoutineLabel == "MultUserJob") {
      ErrMsg += "\rYou may have a damaged Multiuser Tracking File that needs resetting.";
    }
    title = "Multiuser operation conflict.";
  }

  const std::string message = ErrMsg + " (Err#" + std::to_string(ErrNum) + ") in Line# " +
                              std::to_string(ErrLine) + " in routine '" + RoutineLabel +
                              "' in module '" + ModuleLabel + "'" + Hint(ErrNum);
  std::string note;
  statement(480, [&] { note = VersionNote(); });
  LogRecord log;
  statement(490, [] { Beep(); });
  BoxAnswer button = BoxAnswer::Ignore;
  statement(500, [&] {
    button = TheDesktop().ShowMessageBox(
        {message + note, BoxButtons::AbortRetryIgnore, BoxIcon::Exclamation, title, {}});
  });
  Answer = AnswerOf(button);
  statement(510, [&] { log.Write(RecordText(message)); });
  log.Write(AnswerNote(Answer));
  if (button == BoxAnswer::Abort) throw ProgramEnded{};
}

bool FailureTail::WantsRetry(std::int32_t line, const std::exception& fault) const {
  const Failure failure = AsFailure(fault);
  std::int32_t ErrNum = failure.Number;
  std::string ErrMsg = failure.Text;
  std::int32_t ErrLine = line;
  std::int16_t Answer = 0;
  SettleBeforeBox();
  DisplayErrMessage(ErrNum, ErrMsg, ErrLine, routine_, module_, Answer);
  return Answer != 0;
}

bool ReportAtEdge(const std::exception& fault) {
  const Failure failure = AsFailure(fault);
  std::int32_t ErrNum = failure.Number;
  std::string ErrMsg = failure.Text;
  std::int32_t ErrLine = 0;
  std::int16_t Answer = 0;
  SettleBeforeBox();
  DisplayErrMessage(ErrNum, ErrMsg, ErrLine, "ScanMain", ScannerModule, Answer);
  return Answer != 0;
}

void ResetFailureReporting() {
  LastConflict = {};
  OwnReports = 0;
}

Failure AsFailure(const std::exception& fault) {
  if (const auto* failure = dynamic_cast<const Failure*>(&fault)) return *failure;
  if (dynamic_cast<const std::bad_alloc*>(&fault) != nullptr) {
    return {failure_number::kOutOfMemory, "Out of memory."};
  }
  if (dynamic_cast<const std::out_of_range*>(&fault) != nullptr) {
    return {failure_number::kSubscript, "Subscript out of range."};
  }
  return {failure_number::kInternal, std::string("Internal error: ") + fault.what()};
}

void SetStatementProbe(StatementProbe* probe) { detail::TheProbe = probe; }

}  // namespace ostrel
