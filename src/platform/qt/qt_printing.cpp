#include "platform/qt/qt_printing.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <string>
#include <utility>

#include "platform/qt/fitted_text.h"
#include "platform/qt/pdf_target.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/scaling.h"

namespace ostrel {

namespace {

constexpr double kTwipsPerInch = 1440, kTwipsPerPoint = 20;
constexpr double kRuleWidth = 8;           // twips
constexpr double kNarrowest = 0.6;         // of its width; narrower text is hard to read
constexpr qsizetype kLongestDrawn = 1000;  // characters; more than any sheet is wide
const QColor kRuleColor(190, 190, 190), kHeadingFace(236, 236, 236);

/// Kerning would put figures out of line with those above and below them.
QFont PaperFont() {
  QFont font = FormFont(Scaling::kTwipsPerPixel);
  font.setKerning(false);
  return font;
}

/// One line, control characters as blanks.
QString SingleLine(std::string_view text) {
  QString line = ToQt(text.substr(0, 4 * kLongestDrawn)).left(kLongestDrawn);
  for (QChar& character : line) {
    if (character.category() == QChar::Other_Control) character = ' ';
  }
  return line;
}

class QtPrintJob : public PrintJob {
 public:
  explicit QtPrintJob(std::unique_ptr<PrintTarget> target)
      : target_(std::move(target)), font_(PaperFont()), metrics_(font_, &target_->Device()) {}
  ~QtPrintJob() override {
    // Left by a failure in the midst of a sheet. Half a list that looks whole must not reach the
    // tray.
    if (painter_.isActive()) target_->GiveUp();
  }

  SheetSize PageSize() const override;
  void NewPage() override;
  void DrawText(const PrintedText& text) override;
  void DrawRule(const Place& where) override;
  void FillBox(const Place& where) override;
  void Finish() override;
  std::string EndDoc() override { return target_->Deliver(); }

 private:
  void BeginDrawing();
  void DrawSqueezed(QPointF start, double squeeze, const QString& line);

  std::unique_ptr<PrintTarget> target_;
  const QFont font_;
  const QFontMetricsF metrics_;
  QPainter painter_;  // goes before the device it draws on
};

SheetSize QtPrintJob::PageSize() const {
  const QRectF sheet = target_->Device().pageLayout().fullRect(QPageLayout::Point);
  return {qRound(sheet.width() * kTwipsPerPoint), qRound(sheet.height() * kTwipsPerPoint)};
}

void QtPrintJob::BeginDrawing() {
  const bool begun = painter_.begin(&target_->Device());
  // The target knows the reason, such as a full disk; the painter only knows that it could not.
  target_->Check();
  if (!begun) throw Failure(failure_number::kPrinter, "Printer error: it cannot be drawn on.");
  // From here on all places are twips, whatever the dots of the device.
  const double scale = target_->Device().logicalDpiX() / kTwipsPerInch;
  painter_.scale(scale, scale);
  painter_.setFont(font_);
  painter_.setPen(Qt::black);
}

void QtPrintJob::NewPage() {
  if (!painter_.isActive()) {
    BeginDrawing();
    return;
  }
  const bool turned = target_->Device().newPage();
  target_->Check();
  if (!turned) throw Failure(failure_number::kPrinter, "Printer error: it takes no further page.");
}

void QtPrintJob::DrawText(const PrintedText& text) {
  QString line = SingleLine(text.Text);
  double wide = metrics_.horizontalAdvance(line);
  const double room = text.Where.Width;
  if (room <= 0 || wide <= 0) return;
  // Words are cut with an ellipsis before they become too narrow to read. Figures are never cut,
  // only squeezed.
  if (!text.Whole && wide > room / kNarrowest) {
    line = metrics_.elidedText(line, Qt::ElideRight, room / kNarrowest);
    wide = metrics_.horizontalAdvance(line);
  }
  const double squeeze = std::min(1.0, room / wide);
  const double spare = room - wide * squeeze;
  const double baseline =
      text.Where.Top + (text.Where.Height + metrics_.ascent() - metrics_.descent()) / 2;
  double left = text.Where.Left;
  if (text.Align == Alignment::Right) left += spare;
  if (text.Align == Alignment::Center) left += spare / 2;
  DrawSqueezed({left, baseline}, squeeze, line);
}

void QtPrintJob::DrawSqueezed(QPointF start, double squeeze, const QString& line) {
  if (squeeze == 1) {
    painter_.drawText(start, line);
    return;
  }
  painter_.save();
  painter_.translate(start);
  painter_.scale(squeeze, 1);
  painter_.drawText(QPointF(0, 0), line);
  painter_.restore();
}

void QtPrintJob::DrawRule(const Place& where) {
  constexpr double kHalf = kRuleWidth / 2;
  painter_.fillRect(QRectF(where.Left, where.Top, where.Width, where.Height)
                        .adjusted(-kHalf, -kHalf, kHalf, kHalf),
                    kRuleColor);
}

void QtPrintJob::FillBox(const Place& where) {
  painter_.fillRect(QRectF(where.Left, where.Top, where.Width, where.Height), kHeadingFace);
}

void QtPrintJob::Finish() {
  painter_.end();
  target_->Finish();
}

}  // namespace

std::unique_ptr<PrintJob> StartQtPrintJob(const PrintJobRequest& request) {
  std::unique_ptr<PrintTarget> target = MakePrinterTarget(request);
  if (target == nullptr) target = PdfTarget::Make(request);
  return std::make_unique<QtPrintJob>(std::move(target));
}

}  // namespace ostrel
