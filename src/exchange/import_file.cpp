#include "exchange/import_file.h"

#include <cstdint>
#include <string>

#include "display/displayed_lines.h"
#include "exchange/exchange_disk.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
#include "hours/employee_hours.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/files/text_output.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

constexpr FailureTail statement{ScannerModule, "mnuWriteImportFile_Click"};

std::string ImportPath() { return RemoteDrive + "Pck-" + ClientNumb + ".asc"; }

/// One record of the file: fields parted by commas, texts in double quotes as they stand, numbers in
/// plain form, an unset field as #NULL#. The office reads the kind of a field from its quotes.
class Record {
 public:
  Record& Add(const Value& value) {
    if (value.IsNull()) return AddBare("#NULL#");
    return value.IsText() ? AddQuoted(value.Characters()) : AddBare(value.ToText());
  }
  Record& AddQuoted(const std::string& text) {
    Part();
    text_.append(1, '"').append(text).append(1, '"');
    return *this;
  }
  const std::string& Text() const { return text_; }

 private:
  Record& AddBare(const std::string& text) {
    Part();
    text_ += text;
    return *this;
  }
  void Part() {
    if (!text_.empty()) text_ += ',';
  }
  std::string text_;
};

Value FieldOf(const char* field) { return Data1.Recordset[field].Get(); }

double NumberOf(const char* field) { return FieldOf(field).NumberOrZero(); }

/// The rate of an hours record: empty where the office knows it as the employee's standard rate.
std::string RateText() {
  const Value rate = FieldOf("RATE");
  return rate.IsNull() || rate.NumberOrZero() == kStdRate ? std::string() : rate.ToText();
}

std::string HoursRecord() {
  return Record()
      .Add(FieldOf("EMPL_NUMB"))
      .Add(FieldOf("HOURS"))
      .AddQuoted(RateText())
      .AddQuoted("HRS")
      .Add(FieldOf("ENTERPRISE"))
      .Add(FieldOf("OPERATION"))
      .AddQuoted(txtToday.Text)
      .Add(FieldOf("EQUIP_NUMB"))
      .AddQuoted("")
      .AddQuoted("H")
      .Add(FieldOf("MEMO"))
      .Text();
}

std::string PieceworkRecord() {
  return Record()
      .Add(FieldOf("EMPL_NUMB"))
      .Add(FieldOf("QUANTITY"))
      .Add(FieldOf("RATE"))
      .Add(FieldOf("QUAN_DESC"))
      .Add(FieldOf("ENTERPRISE"))
      .Add(FieldOf("OPERATION"))
      .AddQuoted(txtToday.Text)
      .Add(FieldOf("EQUIP_NUMB"))
      .Add(FieldOf("HOURS"))
      .AddQuoted("P")
      .Add(FieldOf("MEMO"))
      .Text();
}

/// The record of the current line, or the empty text where the line is none of the office's business.
std::string RecordOfEvent() {
  const std::string type = FieldOf("EVENT_TYPE").Characters();
  if (type == "I" && NumberOf("HOURS") != 0) return HoursRecord();
  return type == "P" ? PieceworkRecord() : std::string();
}

std::string RecordOfPlainLine() {
  return NumberOf("QUANTITY") == 0 ? HoursRecord() : PieceworkRecord();
}

enum class Step { ToLast, Up };

/// Whether the walk stands on a line after the step.
bool StepUp(std::int32_t line, Step step) {
  bool onLine = false;
  statement(line, [&] {
    Recordset& lines = Data1.Recordset;
    if (lines.RowCount() == 0) return;
    if (step == Step::ToLast) {
      lines.MoveLast();
    } else {
      lines.MovePrevious();
    }
    onLine = !lines.Bof();
  });
  return onLine;
}

/// From the last line on show up to the first: with the newest on top the file runs from the oldest.
std::int32_t WriteLines(ReplacementFile& file, std::string (*recordOfLine)()) {
  std::int32_t LineCount = 0;
  const Look look(PrinDb);  // nobody changes a line between two records
  for (bool onLine = StepUp(5070, Step::ToLast); onLine; onLine = StepUp(5100, Step::Up)) {
    std::string record;
    statement(5080, [&] { record = recordOfLine(); });
    if (record.empty()) continue;
    statement(5090, [&] {
      file.WriteLine(record);
      ++LineCount;
    });
  }
  return LineCount;
}

void SayNothingWritten(std::int32_t line) {
  Beep();
  statement(line, [] {
    MsgBox("No lines have been written.\rAborting job step.", BoxButtons::Ok, BoxIcon::Information,
           mnuWriteImportFile.Caption);
  });
}

/// A disk that is not in its drive is nothing to report: the operator puts it in, or gives up.
///   returns  whether there is a file to write to; why not has been said
bool OpenImportFile(ReplacementFile& file) {
  const std::string caption = mnuWriteImportFile.Caption;
  for (;;) {
    bool notReady = false, open = false;
    statement(5020, [&] {
      try {
        RequireExchangeDisk();
        file.Open(ExistingPath(ImportPath()));
        open = true;
      } catch (const Failure& failure) {
        if (failure.Number != failure_number::kDiskNotReady) throw;
        notReady = true;
      }
    });
    if (open) return true;
    if (!notReady) {
      SayNothingWritten(5022);
      return false;
    }
    Beep();
    BoxAnswer answer = BoxAnswer::Cancel;
    statement(5024, [&] {
      answer = MsgBox("Disk is not ready in '" + RemoteDrive + "'.\rClick 'Ok' when ready.",
                      BoxButtons::OkCancel, BoxIcon::None, caption);
    });
    if (answer == BoxAnswer::Ok) continue;
    statement(5028, [&] { MsgBox(caption + " canceled.", BoxButtons::Ok, BoxIcon::Information); });
    return false;
  }
}

/// The disk may have been taken out since the file was opened.
void PutInPlace(ReplacementFile& file) {
  RequireExchangeDisk();
  file.Close();
}

void WriteHeadings(ReplacementFile& file) {
  statement(5030, [&] { file.WriteLine("*" + lblClient.Caption.Get()); });
  statement(5040,
            [&] { file.WriteLine("*" + txtToday.Text.Get() + ", " + lblToday.Caption.Get()); });
  statement(5050, [&] { file.WriteLine("*" + txtComments.Text.Get()); });
}

/// Whether there is a day with lines to write.
bool HasDayToWrite() {
  double lines = 0;
  statement(4990, [&] { lines = NumericPrefix(lblLineCt.Caption); });
  if (lines < 1) {
    Beep();
    statement(5000, [] {
      MsgBox("No lines to export.\rAborting job step.", BoxButtons::Ok, BoxIcon::Information);
    });
    return false;
  }
  if (!HasWorkDay()) {
    SayNoDay(statement, 5010);
    return false;
  }
  // Rows of another day must not go out under the heading of this one.
  if (!ShowsTheDay()) statement(5014, [] { SetRecordSource(); });
  return ShowsTheDay();
}

}  // namespace

void mnuWriteImportFile_Click() {
  if (!HasDayToWrite()) return;
  SetMousePointer(MousePointer::Wait);
  ReplacementFile file;
  if (!OpenImportFile(file)) return SetMousePointer(MousePointer::Normal);
  WriteHeadings(file);
  const bool timeClock = mnuUseTimeClock.Checked;
  if (timeClock) statement(5060, [] { CalcEmplHours(); });
  const std::int32_t LineCount = WriteLines(file, timeClock ? RecordOfEvent : RecordOfPlainLine);
  const bool written = IsDone(statement, 5110, [&] { PutInPlace(file); });
  SetMousePointer(MousePointer::Normal);
  if (!written) return SayNothingWritten(5114);
  statement(5120, [&] {
    MsgBox(std::to_string(LineCount) + " lines have successfully been written.", BoxButtons::Ok,
           BoxIcon::Information, mnuWriteImportFile.Caption);
  });
}

}  // namespace ostrel
