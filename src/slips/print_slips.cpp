#include "slips/print_slips.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "platform/desktop/desktop.h"

namespace ostrel {

namespace {

// Twips.
constexpr int kMargin = 400;  // within a slip, on all sides; no printer reaches the very edge
constexpr int kRowHeight = 215;
constexpr int kGap = 40;  // between columns

constexpr int kSignatureRows = 5;  // a blank, the agreement, two to sign in, what is signed where
constexpr int kFewestRows = 26;    // of a slip that is to stand in a quarter

/// Columns of a slip as shares of its width, in hundredths.
enum Column { kTime, kWhat, kQuantity, kRate, kHours, kGross, kColumnCount };
constexpr std::array<int, kColumnCount + 1> kColumnEdges = {0, 17, 41, 57, 70, 83, 100};

using Cells = std::array<std::string, kColumnCount>;

/// The places for slips on a sheet, and how many rows each holds.
struct SlipGrid {
  explicit SlipGrid(SheetSize sheet) {
    PerSide = RowsIn(sheet.Height / 2) >= kFewestRows ? 2 : 1;
    Width = sheet.Width / PerSide;
    Height = sheet.Height / PerSide;
    Rows = RowsIn(Height);
  }
  static int RowsIn(int height) { return (height - 2 * kMargin) / kRowHeight; }
  int PerSheet() const { return PerSide * PerSide; }

  int PerSide = 2;
  int Width = 0, Height = 0;
  int Rows = 0;
};

class SlipsOnPaper {
 public:
  SlipsOnPaper(PrintJob& job, SlipLanguage language)
      : job_(job), language_(language), grid_(job.PageSize()) {}
  void Draw(const std::vector<Slip>& slips);

 private:
  std::string Word(SlipWord word) const { return WordFor(word, language_); }
  void DrawSlip(const Slip& slip);
  void BeginPart(const Slip& slip);
  void DrawCutLines();
  void DrawHeader(const Slip& slip);
  void DrawRow(const SlipRow& row);
  void DrawCells(const Cells& cells, bool heading);
  void DrawSignature();
  void Write(int left, int width, const std::string& text, Alignment align);
  int RowsLeft() const { return grid_.Rows - row_; }
  int Top() const { return top_ + row_ * kRowHeight; }

  PrintJob& job_;
  const SlipLanguage language_;
  const SlipGrid grid_;
  int place_ = 0;            // of the next part on its sheet
  int part_ = 0;             // of the slip, from 1
  int left_ = 0, top_ = 0;   // of the part's first row
  int width_ = 0, row_ = 0;  // the next row of the part
};

void SlipsOnPaper::Draw(const std::vector<Slip>& slips) {
  for (const Slip& slip : slips) DrawSlip(slip);
  job_.Finish();
}

/// Rows flow from part to part; each part but the last keeps its last row to say that it goes on.
void SlipsOnPaper::DrawSlip(const Slip& slip) {
  std::vector<const SlipRow*> rows;
  for (const SlipRow& row : slip.Lines) rows.push_back(&row);
  const SlipRow blank;
  rows.push_back(&blank);
  for (const SlipRow& row : slip.Summary) rows.push_back(&row);
  const int closing = static_cast<int>(slip.Totals.size()) + kSignatureRows;

  part_ = 0;
  BeginPart(slip);
  const auto goOn = [&] {
    Write(left_, width_, Word(SlipWord::ContinuedBelow), Alignment::Right);
    BeginPart(slip);
  };
  for (const SlipRow* row : rows) {
    if (RowsLeft() <= 1) goOn();
    DrawRow(*row);
  }
  if (RowsLeft() < closing) goOn();
  job_.DrawRule({left_, Top(), width_, 0});
  for (const SlipRow& row : slip.Totals) DrawRow(row);
  DrawSignature();
}

void SlipsOnPaper::BeginPart(const Slip& slip) {
  if (place_ == 0) {
    job_.NewPage();
    DrawCutLines();
  }
  left_ = place_ % grid_.PerSide * grid_.Width + kMargin;
  top_ = place_ / grid_.PerSide * grid_.Height + kMargin;
  width_ = grid_.Width - 2 * kMargin;
  row_ = 0;
  ++part_;
  place_ = (place_ + 1) % grid_.PerSheet();
  DrawHeader(slip);
}

void SlipsOnPaper::DrawCutLines() {
  if (grid_.PerSide == 1) return;
  job_.DrawRule({grid_.Width, 0, 0, 2 * grid_.Height});
  job_.DrawRule({0, grid_.Height, 2 * grid_.Width, 0});
}

/// Number and name are texts of their own: in one, a name written from right to left would carry the
/// number to its other side.
void SlipsOnPaper::DrawHeader(const Slip& slip) {
  const int third = width_ / 3, number = width_ / 6;
  Write(left_, width_ - third, slip.Client, Alignment::Left);
  if (part_ > 1) {
    Write(left_ + width_ - third, third,
          Word(SlipWord::Continued) + " (" + std::to_string(part_) + ")", Alignment::Right);
  }
  ++row_;
  Write(left_, width_ - third, slip.Day, Alignment::Left);
  Write(left_ + width_ - third, third, slip.Crew, Alignment::Right);
  ++row_;
  Write(left_, number - kGap, slip.Employee, Alignment::Left);
  Write(left_ + number, width_ - number, slip.Name, Alignment::Left);
  ++row_;
  job_.FillBox({left_, Top(), width_, kRowHeight});
  DrawCells({Word(SlipWord::Time), Word(SlipWord::What), Word(SlipWord::Quantity),
             Word(SlipWord::Rate), Word(SlipWord::Hours), Word(SlipWord::Gross)},
            true);
}

void SlipsOnPaper::DrawRow(const SlipRow& row) {
  DrawCells({row.Time, row.What, row.Quantity, row.Rate, row.Hours, row.Gross}, false);
}

/// What has no neighbours takes their room.
void SlipsOnPaper::DrawCells(const Cells& cells, bool heading) {
  const auto edge = [&](int column) {
    return left_ + width_ * kColumnEdges.at(static_cast<std::size_t>(column)) / 100;
  };
  for (int column = 0; column < kColumnCount; ++column) {
    const std::string& text = cells.at(static_cast<std::size_t>(column));
    int from = column, to = column + 1;
    if (column == kWhat && !heading) {
      if (cells[kTime].empty()) from = kTime;
      if (cells[kQuantity].empty() && cells[kRate].empty()) to = kHours;
    }
    const Alignment align = column <= kWhat ? Alignment::Left : Alignment::Right;
    Write(edge(from), edge(to) - edge(from) - (column == kGross ? 0 : kGap), text, align);
  }
  ++row_;
}

void SlipsOnPaper::DrawSignature() {
  const int half = width_ / 2, date = width_ / 4;
  row_ += 1;
  Write(left_, width_, Word(SlipWord::Agreement), Alignment::Left);
  row_ += 3;
  job_.DrawRule({left_, Top(), half, 0});
  job_.DrawRule({left_ + width_ - date, Top(), date, 0});
  Write(left_, half, Word(SlipWord::Signature), Alignment::Left);
  Write(left_ + width_ - date, date, Word(SlipWord::Date), Alignment::Left);
}

/// Never cut: a number or a name that lacks its end would be signed for another one.
void SlipsOnPaper::Write(int left, int width, const std::string& text, Alignment align) {
  if (text.empty()) return;
  job_.DrawText(
      {.Where = {left, Top(), width, kRowHeight}, .Text = text, .Align = align, .Whole = true});
}

}  // namespace

std::unique_ptr<PrintJob> PrintSlips(const std::vector<Slip>& slips, SlipLanguage language,
                                     const PrintJobRequest& request) {
  std::unique_ptr<PrintJob> job = TheDesktop().StartPrintJob(request);
  SlipsOnPaper(*job, language).Draw(slips);
  return job;
}

}  // namespace ostrel
