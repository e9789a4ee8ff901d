#include <memory>
#include <string>

#include "platform/qt/print_target.h"

#ifdef _WIN32

#include <QPrinter>
#include <QPrinterInfo>

#include "platform/qt/qt_text.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

class SystemPrinterTarget : public PrintTarget {
 public:
  SystemPrinterTarget(const QPrinterInfo& printer, const std::string& title)
      : printer_(printer, QPrinter::HighResolution) {
    printer_.setDocName(ToQt(title));
    printer_.setFullPage(true);
  }

  QPagedPaintDevice& Device() override { return printer_; }
  void Check() override {
    const QPrinter::PrinterState state = printer_.printerState();
    if (state != QPrinter::Error && state != QPrinter::Aborted) return;
    throw Failure(failure_number::kPrinter,
                  "Printer error: '" + FromQt(printer_.printerName()) + "' has given up the job.");
  }
  void Finish() override { Check(); }
  std::string Deliver() override { return {}; }
  void GiveUp() override { printer_.abort(); }

 private:
  QPrinter printer_;
};

}  // namespace

std::unique_ptr<PrintTarget> MakePrinterTarget(const PrintJobRequest& request) {
  const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
  if (printer.isNull()) return nullptr;
  return std::make_unique<SystemPrinterTarget>(printer, request.Name);
}

}  // namespace ostrel

#else

#include <cups/cups.h>

#include <filesystem>
#include <optional>
#include <random>
#include <utility>

#include "platform/qt/pdf_target.h"
#include "platform/qt/printer_trouble.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

struct FreeDestination {
  void operator()(cups_dest_t* destination) const { cupsFreeDests(1, destination); }
};
using Destination = std::unique_ptr<cups_dest_t, FreeDestination>;

std::string_view AnswerOf(const cups_dest_t& printer, const char* question) {
  const char* answer = cupsGetOption(question, printer.num_options, printer.options);
  return answer == nullptr ? std::string_view() : answer;
}

/// A printer that somebody else on the network offers is not installed here, and payroll has no
/// business on it.
Destination FirstInstalled() {
  constexpr int kNoWaiting = 0;
  constexpr cups_ptype_t kOthers = CUPS_PRINTER_DISCOVERED;
  cups_dest_t* first = nullptr;
  const cups_dest_cb_t take = [](void* found, unsigned, cups_dest_t* printer) {
    cupsCopyDest(printer, 0, static_cast<cups_dest_t**>(found));
    return 0;  // no more
  };
  cupsEnumDests(CUPS_DEST_FLAGS_NONE, kNoWaiting, nullptr, 0, kOthers, take, &first);
  return Destination(first);
}

/// The default printer; where none is marked as that, the first one.
Destination DefaultPrinter() {
  Destination marked(cupsGetNamedDest(CUPS_HTTP_DEFAULT, nullptr, nullptr));
  return marked ? std::move(marked) : FirstInstalled();
}

/// What lies in the printer's tray, Letter where it cannot tell.
QPageSize SheetOf(cups_dest_t& printer) {
  constexpr double kHundredthsPerMillimeter = 100;
  cups_dinfo_t* info = cupsCopyDestInfo(CUPS_HTTP_DEFAULT, &printer);
  cups_size_t size{};
  const bool known =
      info != nullptr && cupsGetDestMediaDefault(CUPS_HTTP_DEFAULT, &printer, info, 0, &size) != 0;
  cupsFreeDestInfo(info);
  if (!known || size.width <= 0 || size.length <= 0) return QPageSize(QPageSize::Letter);
  return QPageSize(
      QSizeF(size.width / kHundredthsPerMillimeter, size.length / kHundredthsPerMillimeter),
      QPageSize::Millimeter);
}

/// A file that only this user can read, in the system's folder for such.
NewFile CreateSpoolFile() {
  std::random_device random;
  for (;;) {
    const std::string name = "ostrel-payroll-" + std::to_string(random()) + ".pdf";
    std::string path = Utf8FromPath(std::filesystem::temp_directory_path() / name);
    std::optional<OsFile> file = OsFile::CreateNew(path, Readers::UserAlone);
    if (file) return {std::move(*file), std::move(path)};
  }
}

Failure PrinterFailure(const std::string& printer, const std::string& trouble) {
  return {failure_number::kPrinter, "Printer error: '" + printer + "' " + trouble + "."};
}

/// The PDF goes to the queue as a whole; the queue's own answer counts, since it is the last that
/// this program learns of the job.
class QueueTarget : public PdfTarget {
 public:
  QueueTarget(Destination printer, const std::string& title)
      : PdfTarget(CreateSpoolFile(), title, SheetOf(*printer)),
        printer_(std::move(printer)),
        title_(title) {}

  std::string Deliver() override {
    // Asked anew: between the first sheet and the last the printer may have run out of paper, or
    // have been taken away.
    Destination now(cupsGetNamedDest(CUPS_HTTP_DEFAULT, printer_->name, printer_->instance));
    if (now == nullptr) throw PrinterFailure(printer_->name, "is gone");
    const std::string trouble = TroubleOf({.Reasons = AnswerOf(*now, "printer-state-reasons"),
                                           .Accepting = AnswerOf(*now, "printer-is-accepting-jobs"),
                                           .State = AnswerOf(*now, "printer-state")});
    if (!trouble.empty()) throw PrinterFailure(now->name, trouble);
    const int job = cupsPrintFile2(CUPS_HTTP_DEFAULT, now->name, Path().c_str(), title_.c_str(),
                                   now->num_options, now->options);
    // The queue's own words are shown as they are: the administrator looks for these.
    if (job == 0) {
      throw PrinterFailure(now->name, std::string("refuses the job: ") + cupsLastErrorString());
    }
    return {};
  }

 private:
  Destination printer_;
  std::string title_;
};

/// A queue that asks for a password would do so on the terminal, which nobody sees.
const char* AskForNoPassword(const char*, http_t*, const char*, const char*, void*) {
  return nullptr;
}

}  // namespace

std::unique_ptr<PrintTarget> MakePrinterTarget(const PrintJobRequest& request) {
  cupsSetPasswordCB2(AskForNoPassword, nullptr);
  Destination printer = DefaultPrinter();
  if (printer == nullptr) return nullptr;
  return std::make_unique<QueueTarget>(std::move(printer), request.Name);
}

}  // namespace ostrel

#endif
