#pragma once

// The file under a PDF in the making, written to the disk as the pages are drawn.

#include <QIODevice>
#include <optional>
#include <string>

#include "platform/files/numbered_file.h"
#include "platform/values/failure.h"

namespace ostrel {

/// The toolkit passes over a full disk in silence, so the first failure is kept here until somebody
/// asks.
class PdfFile : public QIODevice {
 public:
  explicit PdfFile(NewFile file);
  ~PdfFile() override;  ///< removes the file unless Keep was called

  /// throws  the failure of an earlier write
  void Check() const;
  /// Everything to the disk.
  ///   throws  the failure of this or an earlier write
  void Flush();
  void Keep() { kept_ = true; }
  const std::string& Path() const { return file_.Path; }

  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char* data, qint64 size) override;

 private:
  bool WriteGathered();

  NewFile file_;
  std::string gathered_;  // the toolkit writes a few bytes at a time
  std::optional<Failure> failure_;
  bool kept_ = false;
};

}  // namespace ostrel
