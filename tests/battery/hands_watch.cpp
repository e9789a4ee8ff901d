#include "battery/hands_watch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "platform/database/open_stores.h"
#include "platform/values/clock.h"
#include "scan_main/scan_main.h"
#include "support/standing_checks.h"

namespace ostrel {

namespace {

bool IsTextField(int field) {
  return field == kNameField || field == kTypeField || field == kQuanDescField ||
         field == kMemoField;
}

std::string Name(int employee) {
  static const std::map<int, std::string> kNames = {
      {140, "EVANS RHYS"}, {101, "ALVAREZ MARIA"}, {125, "CHEN LI"}, {130, "DURAND ANNE"}};
  const auto name = kNames.find(employee);
  return name == kNames.end() ? " " : name->second;
}

std::string Digits(const char* pattern, double number) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, number);
  return text;
}

/// What an employee can be looked for by.
bool IsNumber(const std::string& text) {
  std::istringstream words(text);
  std::string number, more;
  words >> number >> more;
  return more.empty() && number.find_first_not_of("0123456789") == std::string::npos;
}

/// A field of a line as the office reads it from the import file.
std::string Exported(const RawLine& line, int field) {
  if (line.IsNull(field)) return "#NULL#";
  if (IsTextField(field)) return '"' + line.Text(field) + '"';
  const bool single = field == kEmplField || field == kEnterpriseField ||
                      field == kOperationField || field == kEquipField;
  return Digits(single ? "%.7g" : "%.15g", line.Number(field));
}

/// "" for a line that is none of the office's business.
std::string RecordOf(const RawLine& line, bool timeClock) {
  const bool pieces = timeClock ? line.Text(kTypeField) == "P" : line.Number(kQuantityField) != 0;
  const bool hours =
      timeClock ? line.Text(kTypeField) == "I" && line.Number(kHoursField) != 0 : !pieces;
  if (!pieces && !hours) return {};
  const bool rated = !line.IsNull(kRateField) && line.Number(kRateField) != -9;
  const auto out = [&](int field) { return Exported(line, field) + ","; };
  return out(kEmplField) +
         (pieces ? out(kQuantityField) + out(kRateField) + out(kQuanDescField)
                 : out(kHoursField) + '"' + (rated ? Exported(line, kRateField) : "") +
                       "\",\"HRS\",") +
         out(kEnterpriseField) + out(kOperationField) + '"' + txtToday.Text.Get() + "\"," +
         out(kEquipField) + (pieces ? out(kHoursField) : "\"\",") + (pieces ? "\"P\"," : "\"H\",") +
         Exported(line, kMemoField);
}

}  // namespace

Watch::Watch(Operator& hands) : hands_(hands) {
  hands.Desktop.OnMessage = [this](const std::string& text) { CheckImportFile(text); };
  hands.Probe.OnDone.emplace_back([this](const StatementSite& site) {
    if (std::string_view(site.Routine) != "DisplayTotals" || site.Line != 4790) return;
    atTotals_ = store_ ? store_->Read() : std::nullopt;
    totalled_ = FilterNow();
    hasTotals_ = !mnuDisplayCurrentEmpl.Checked || IsNumber(txtInput[kEmplBox].Text);
  });
}

void Watch::Started() {
  store_ = std::make_unique<OutsideStore>(hands_.Laptop.App("Prin1234.mdb"));
  lines_ = *store_->Read();
  if (seen_.empty()) seen_ = lines_;
  const auto note = [this] {
    filter_ = FilterNow();
    // A filter whose making has failed is none.
    const std::string& query = Data1.RecordSource;
    if (hands_.Harmed && query.find("INT(ETIME)") == query.npos) filter_.Day = 0;
    if (hands_.Harmed && query.find("EMPL_NUMB = ") == query.npos) filter_.Employee = 0;
    byEmployee_ = mnuEmplOrder.Checked;
  };
  note();
  Data1.RecordSource.AfterChange = note;
  Data1.Reloaded = [this, bound = Data1.Reloaded] {
    bound();
    reloaded_ = true;
    const auto lines = Data1.Recordset ? store_->Read() : std::nullopt;  // or a failure has let go
    rowsKnown_ = lines.has_value();
    if (lines) rows_ = Selection(*lines);
  };
  hands_.Desktop.Pointer = MousePointer::Normal;
  rows_ = ViewNow().Rows;
}

Watch::View Watch::ViewNow() {
  View view;
  const Recordset& rows = Data1.Recordset;
  for (std::size_t row = 0; rows && row < rows.RowCount(); ++row) {
    view.Rows.push_back(rows.BookmarkAt(row));
  }
  if (rows && rows.Position() >= 0) view.Current = rows.GetBookmark();
  view.Selected = TDBGrid1.SelBookmarks;
  view.Column = TDBGrid1.Col;
  return view;
}

void Watch::BeforeStep() {
  before_ = lines_;
  viewBefore_ = ViewNow();
  reloaded_ = false;
  atTotals_.reset();
  importFault_.clear();
  dateHalfTyped_ = ScanMain.ActiveControl() == &txtToday;
  editRow_ = TDBGrid1.Editing ? viewBefore_.Current : 0;
  editField_ = TDBGrid1.Editing ? FieldInGrid(TDBGrid1.Col) : -1;
  editText_ = TDBGrid1.EditText;
}

std::string Watch::AfterStep(const Step& step, bool running) {
  step_ = step;
  std::optional<RawLines> lines = store_->Read();
  if (!lines) return "gathered: nobody else can read the store";
  lines_ = std::move(*lines);
  if (hands_.Meddled) {
    meddled_ = true;
    return {};
  }
  hands_.Named.Add(late_);
  std::vector<Check> checks = {&Watch::OnlyNamedLinesChange};
  if (running) {
    checks = {&Watch::NothingIsHeldBack,     &Watch::OnlyNamedLinesChange, &Watch::EditsAreSettled,
              &Watch::RowsAreThoseOfTheView, &Watch::TotalsAreSums,        &Watch::ViewStays,
              &Watch::NobodyReports};
  }
  std::string fault = importFault_;
  for (auto check = checks.begin(); fault.empty() && check != checks.end(); ++check) {
    fault = (this->**check)();
  }
  seen_ = lines_;
  if (reloaded_) meddled_ = false;
  // Lines that could not be written, as the operator has been told, are tried again by later steps.
  late_ = running && RowsStillLost() > 0 ? hands_.Named : Claim();
  return fault;
}

std::string Watch::NothingIsHeldBack() { return StandingFault(hands_.Laptop, *store_, lines_); }

std::string Watch::CheckNewLine(const RawLine& line) {
  const Claim& named = hands_.Named;
  const auto unset = [&](int field) { return hands_.Harmed && line.IsNull(field); };
  if (!named.NewEmployees.contains(line.Employee()) && !unset(kEmplField)) return "employee";
  if (!named.NewDays.contains(line.Day()) && !unset(kTimeField)) return "day";
  if (named.NewTypes.find(line.Text(kTypeField)) == std::string::npos && !unset(kTypeField))
    return "kind";
  if (hands_.Harmed) return {};
  if (line.Employee() != 0 && line.Text(kNameField) != Name(line.Employee())) return "name";
  const bool pieces = line.Number(kQuantityField) != 0 || line.Number(kGrossField) != 0;
  if (named.WithoutPieces && line.Text(kTypeField) != "P" && pieces) return "pieces";
  return {};
}

std::string Watch::CheckCell(std::int64_t row, int field) {
  const RawLine& was = before_.at(row);
  const RawLine& is = lines_.at(row);
  const Claim& named = hands_.Named;
  const bool worked = field == kHoursField || field == kGrossField || field == kHourGrossField;
  if (named.HourDays.contains(is.Day()) && worked && is.Text(kTypeField) != "O") return {};
  const auto cells = named.Cells.find(row);
  if (cells == named.Cells.end() || !cells->second.contains(field)) return "not named";
  const auto seen = seen_.find(row);
  if (seen == seen_.end() || seen->second != was) return "somebody else's";
  if (is.IsNull(field) && !was.IsNull(field)) return "emptied";
  const bool numbered = is.Number(kEmplField) > 0;  // else the name stays, with whatever number
  if ((field == kEmplField || field == kNameField) && numbered &&
      is.Text(kNameField) != Name(is.Employee()))
    return "name and number";
  return {};
}

std::string Watch::OnlyNamedLinesChange() {
  const Claim& named = hands_.Named;
  std::size_t made = 0;
  bool atThisMinute = false;
  const auto fault = [](const std::string& what, const RawLine& line) {
    return "not named: " + what + " in " + TextOf(line);
  };
  for (const auto& [row, line] : lines_) {
    const auto old = before_.find(row);
    if (old == before_.end()) {
      const std::string wrong = CheckNewLine(line);
      if (++made > named.NewLines) return fault("a line too many", line);
      if (!wrong.empty()) return fault("new line's " + wrong, line);
      const double minutes = Now().Days * 1440 + 1e-6,
                   typed = line.Number(kTimeField) * 1440 + 1e-3;
      atThisMinute |= std::floor(minutes) == std::floor(typed);
      continue;
    }
    if (old->second == line) continue;
    for (int field = 0; field < kLineFieldCount; ++field) {
      if (old->second[field] == line[field]) continue;
      const std::string wrong = CheckCell(row, field);
      if (wrong.empty()) continue;
      return fault(wrong + " (field " + std::to_string(field) + ")", line) + " which was " +
             TextOf(old->second);
    }
  }
  for (const auto& [row, line] : before_) {
    if (lines_.contains(row)) continue;
    const auto seen = seen_.find(row);
    if (!named.Goes.contains(row)) return fault("deleted", line);
    if (seen == seen_.end() || seen->second != line) return fault("deleted somebody else's", line);
  }
  const bool today = named.NewDays.contains(static_cast<int>(Now().Days));
  if (made > 0 && named.TypedByClock && today && !hands_.Harmed && !atThisMinute)
    return "clock: no line of this minute has been written";
  return {};
}

std::string Watch::EditsAreSettled() {
  if (!hands_.Commanded || hands_.Harmed || hands_.Rude) return {};
  if (dateHalfTyped_ && hands_.Day() != 0 && txtToday.Text.Get().size() != 8)
    return "half typed: the date box holds " + txtToday.Text.Get();
  const auto line = lines_.find(editRow_);
  if (editField_ < 0 || meddled_ || line == lines_.end() || editField_ == kTimeField) return {};
  char* end = nullptr;
  const double number = std::strtod(editText_.c_str(), &end);
  const bool isNumber = !editText_.empty() && *end == '\0' && !IsTextField(editField_);
  const bool isText = IsTextField(editField_) && !editText_.empty();
  if (TDBGrid1.Editing ||
      (isNumber && line->second.Number(editField_) != number &&
       line->second.Number(editField_) != static_cast<float>(number)) ||
      (isText && line->second.Text(editField_) != editText_)) {
    // A line that the command itself has deleted or worked out is another matter.
    if (!hands_.Named.HourDays.empty() && editField_ >= kGrossField) return {};
    return "half typed: '" + editText_ + "' stayed behind in " + TextOf(line->second);
  }
  return {};
}

Watch::Filter Watch::FilterNow() const {
  return {hands_.Day(), mnuDisplayCurrentEmpl.Checked ? LeadingNumber(txtInput[kEmplBox].Text) : 0};
}

bool Watch::Filter::Holds(const RawLine& line) const {
  if (Day != 0 && (line.IsNull(kTimeField) || line.Day() != Day)) return false;
  return Employee <= 0 || line.Number(kEmplField) == Employee;
}

std::vector<Bookmark> Watch::Selection(const RawLines& lines) const {
  std::vector<Bookmark> rows;
  for (const auto& [row, line] : lines) {
    if (filter_.Holds(line)) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end(), [&](Bookmark a, Bookmark b) {
    // Null stands before all else.
    const auto key = [&](Bookmark row, int field) {
      const RawLine& line = lines.at(row);
      return line.IsNull(field) ? -1e9 : line.Number(field);
    };
    if (!byEmployee_) return std::pair(key(a, kTimeField), a) > std::pair(key(b, kTimeField), b);
    return std::tuple(key(a, kEmplField), key(a, kTimeField), a) <
           std::tuple(key(b, kEmplField), key(b, kTimeField), b);
  });
  return rows;
}

std::string Watch::RowsAreThoseOfTheView() {
  const std::vector<Bookmark> shown = ViewNow().Rows;
  const bool known = reloaded_ ? rowsKnown_ : !hands_.Harmed && !meddled_;
  if (!known) rows_ = shown;  // as far as the command got
  if (shown == rows_) return {};
  return "rows: " + std::to_string(shown.size()) + " show of " + std::to_string(rows_.size());
}

std::string Watch::TotalsAreSums() {
  // A cell that is written behind them waits for the next ones.
  if (atTotals_ != lines_ || !hasTotals_ || hands_.Harmed) return {};
  double quantity = 0, hours = 0, gross = 0;
  std::size_t count = 0;
  for (const auto& [row, line] : lines_) {
    if (!totalled_.Holds(line)) continue;
    count += line.IsNull(kEmplField) ? 0 : 1;
    quantity += line.Number(kQuantityField);
    hours += line.Number(kHoursField);
    gross += line.Number(kGrossField);
  }
  const auto footer = [](const char* column) {
    std::string text = TDBGrid1.Columns(column).FooterText;
    std::erase(text, ',');
    return std::strtod(text.c_str(), nullptr);
  };
  const auto differs = [](double a, double b) {
    return std::abs(a - b) > 0.0051 + 1e-9 * std::abs(b);
  };
  if (differs(footer("QUANTITY"), quantity) || differs(footer("HOURS"), hours) ||
      differs(footer("GROSS"), gross))
    return "totals: " + TDBGrid1.Columns("QUANTITY").FooterText.Get() + " " +
           TDBGrid1.Columns("HOURS").FooterText.Get() + " " +
           TDBGrid1.Columns("GROSS").FooterText.Get() + Digits(" are not %g", quantity) +
           Digits(" %g", hours) + Digits(" %g", gross);
  const std::string label = std::to_string(count) + (count == 1 ? " line" : " lines");
  if (lblLineCt.Caption.Get() != label)
    return "totals: " + lblLineCt.Caption.Get() + " not " + label;
  return {};
}

std::string Watch::ViewStays() {
  if (hands_.Desktop.Pointer != MousePointer::Normal) return "pointer: it still says to wait";
  if (reloaded_ || hands_.Harmed || !hands_.Commanded) return {};
  return ViewNow() == viewBefore_ ? "" : "view: it is not where it was";
}

/// Without harm nobody calls phone support.
std::string Watch::NobodyReports() {
  if (hands_.Desktop.Reports.empty() || hands_.Rude) return {};
  const std::string& report = hands_.Desktop.Reports.front();
  if (hands_.Desktop.Reports.size() > 150) return "reports: they do not end: " + report;
  const auto says = [&](const char* text) { return report.find(text) != report.npos; };
  const bool clipboard = says("'mnuCut_") || says("'mnuCopy_") || says("'mnuPaste_");
  const std::string& query = Data1.RecordSource;
  const bool filter = query.find("EMPL_NUMB = ") != query.npos && says("(Err#30");
  // Hands type on where the window would not; pieces made in no time have no pay an hour.
  if (says("is too small for the text") || says("Division by zero")) return {};
  if (step_.Harm != HarmKind::None || meddled_ || clipboard || filter) return {};
  return "reports: " + report;
}

void Watch::CheckImportFile(const std::string& message) {
  const std::size_t said = message.find(" lines have successfully been written.");
  if (said == message.npos) return;
  std::istringstream file(ReadWholeFile(hands_.Laptop.Disk("Pck-1234.asc")));
  std::vector<std::string> found;
  for (std::string line; std::getline(file, line);) found.push_back(line);
  const auto records = std::count_if(
      found.begin(), found.end(), [](const std::string& line) { return !line.starts_with('*'); });
  if (records != std::strtol(message.c_str(), nullptr, 10))
    importFault_ = "import: " + message + " but " + std::to_string(records);
  const std::optional<RawLines> lines = store_->Read();
  if (hands_.Harmed || hands_.Rude || !lines || meddled_) return;
  static const char* const kWeekdays[] = {"Saturday",  "Sunday",   "Monday", "Tuesday",
                                          "Wednesday", "Thursday", "Friday"};
  std::vector<std::string> wanted = {"*1234, Sample Ranch",
                                     "*" + txtToday.Text.Get() + ", " + kWeekdays[filter_.Day % 7],
                                     "*" + txtComments.Text.Get()};
  std::vector<Bookmark> rows = ViewNow().Rows;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    const auto line = lines->find(*row);
    const std::string record =
        line == lines->end() ? "" : RecordOf(line->second, mnuUseTimeClock.Checked);
    if (!record.empty()) wanted.push_back(record);
  }
  for (std::string& line : wanted) line += "\r";
  if (filter_.Day == hands_.Day() && found == wanted) return;
  const auto [at, other] = std::mismatch(found.begin(), found.end(), wanted.begin(), wanted.end());
  importFault_ = "import: the file has " + (at == found.end() ? "no more" : *at) + " instead of " +
                 (other == wanted.end() ? "no more" : *other);
}

}  // namespace ostrel
