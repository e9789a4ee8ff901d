#pragma once

// The grid of lines: columns over the recordset of a data control, footers, selected rows, one
// current cell. It holds what the routines ask of it; drawing, scrolling and the cell's editor are
// platform/qt's.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/control.h"
#include "platform/forms/data_control.h"

namespace ostrel {

enum class FooterFill { LightGrey, ButtonFace };
/// Whether the operator can type in a column's cells.
enum class Typing { Typed, Locked };

struct ColumnDesign {
  const char* Caption;
  const char* DataField;
  const char* NumberFormat;  ///< a pattern of platform/values/format.h, or ""
  int Width;                 ///< twips
  Alignment Cell, Heading, Footer;
  FooterFill Fill;
  Typing Cells;
};

class Grid;

class Column {
 public:
  Column(Control& grid, const ColumnDesign& design);

  std::string Caption, DataField;
  bool Locked;  ///< the operator cannot type in it
  FooterFill Fill;
  Alignment CellAlign, HeadingAlign, FooterAlign;
  Property<std::string> NumberFormat;
  Property<int> Width;
  Property<bool> Visible;
  Property<std::string> FooterText;
  /// One number that is shown as a word, such as -9 as "Std Rate".
  double TranslatedNumber = 0;
  std::string TranslatedWord;

  /// A value as the column shows it. What has no such form (a moment beyond the calendar, a number
  /// without an end) comes out as plain text, and *odd becomes true.
  std::string Display(const Value& value, bool* odd = nullptr) const;
};

/// How the grid prints itself; lengths in twips.
struct PrintSettings {
  std::string PageHeader;
  bool RepeatColumnHeaders = false;
  int LeftMargin = 0, RightMargin = 0, TopMargin = 0, BottomMargin = 0;
};

class Grid : public KeyControl {
 public:
  void Design(std::string name, std::string text, Place place) override;
  /// Columns in their order; all visible until a layout hides some.
  void DesignColumns(const std::vector<ColumnDesign>& columns);

  /// By caption or data field, upper or lower case alike; the caption goes first.
  ///   throws  Failure 9 when there is none of that name
  Column& Columns(std::string_view name);
  Column& Columns(int number);
  int ColumnNumber(std::string_view name) const;  ///< throws as Columns
  int ColumnCount() const { return static_cast<int>(columns_.size()); }

  /// Left edge of a column inside the grid, twips: the record boxes come first.
  int ColumnLeft(int number) const;
  static constexpr int kRecordBoxWidth = 270;  ///< twips

  /// Rereads the rows on show and repaints; neither the query nor the scroll position changes.
  void Refresh();

  /// The current column, or -1; the current row is that of the data control's recordset.
  Property<int> Col{*this, -1};
  /// The text in the cell editor while a cell is edited: what Text() of the current column gives.
  bool Editing = false;
  std::string EditText;
  Property<int> SelStart{*this}, SelLength{*this};  ///< in the editor, characters

  /// Number of the row in the topmost line; whoever draws the grid scrolls with it.
  Property<int> TopRow{*this};
  /// Current cell, selected rows and topmost row, for as long as the query is the same: rows that are
  /// read anew are found again, and one that has gone gives way to its neighbour.
  std::function<void()> KeepView() override;

  /// Looks at a cell that showed an odd value (Column::Display). Does nothing where another row has
  /// come to that place.
  ///   throws  Failure 6, naming line and value, if it still holds one
  void RefuseOdd(std::size_t row, Bookmark mark, int column) const;

  /// What column `number` of the current row shows, the edited text in the cell being edited.
  std::string CellText(int number) const;

  /// Makes a cell current, once the edit under way has been written.
  void GoTo(std::size_t row, int column);
  /// Selects a row, or takes it out of the selection.
  void ToggleSelected(std::size_t row);

  // The cell's editor: one cell, the current one, holding EditText until it is written or given up.

  /// Whether the operator can type in the current cell: not in a locked column, and not in a row that
  /// is selected, since the selection is about the row as a whole.
  bool CanEdit() const;
  /// Characters that the cell being edited takes: as many as its field, where that is a text.
  int Holds() const { return holds_; }
  /// Opens the editor with `text` in it; REQUIRES CanEdit().
  void BeginEdit(std::string text);
  /// The operator has typed: text and caret as they stand on the screen now. No event.
  void Typed(std::string text, int selStart, int selLength);
  /// Closes the editor. A changed text raises BeforeColUpdate and is then written to the store at
  /// once. A failure is reported; with Ignore the cell shows its old value again.
  void CommitEdit();
  void CancelEdit();
  void FinishTyping() override { CommitEdit(); }

  // Selected text of the editor; while no cell is edited, that of the current cell as a whole.
  // Setting it opens the editor where the operator could. Failure 438 where there is no current cell.
  std::string SelText() const override;
  void SetSelText(const std::string& text) override;

  std::vector<Bookmark> SelBookmarks;  ///< rows selected by their boxes, in the order of selection
  PrintSettings PrintInfo;
  DataControl* DataSource = nullptr;
  /// Shows the rows of `source`; whenever it reloads, edit and selection of the old rows are gone.
  void Bind(DataControl& source);

  /// A changed cell is about to be written; its new text is readable through CellText. Setting
  /// `cancel` stops the grid's own write.
  std::function<void(int colIndex, const Value& oldValue, std::int16_t& cancel)> BeforeColUpdate;

  // What whoever draws the grid does on Refresh, and when other rows have come.
  std::function<void()> Redraw, RowsReplaced;

 private:
  void WriteCell();
  void GiveUpEdit();
  Value CellValue(const std::string& text, const Value& old) const;
  bool HasRow() const;
  bool HasCell() const { return HasRow() && Col >= 0 && Col < ColumnCount(); }
  /// What KeepView brings back.
  struct View {
    std::string Query;
    std::ptrdiff_t Row = -1;  // of the current cell, as is Column
    Bookmark RowMark = 0;
    int Column = -1;
    int Top = 0;
    std::vector<Bookmark> Selected;
  };
  void Show(const View& view);

  std::vector<std::unique_ptr<Column>> columns_;
  Bookmark editRow_ = 0;
  std::string textBefore_;  // what the cell showed when the editor opened
  int holds_ = kMostTyped;
  bool committing_ = false;
};

}  // namespace ostrel
