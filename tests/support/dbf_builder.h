#pragma once

// Makes dBase files byte by byte, good ones and malformed ones, with nothing of the reader's own.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

class DbfBuilder {
 public:
  std::uint8_t Version = 0x03;

  /// `length` up to 255; `flags` as Visual FoxPro has them (1 hidden, 2 may be Null).
  DbfBuilder& Field(std::string_view name, char type, int length, int decimals = 0, int flags = 0) {
    std::string descriptor(32, '\0');
    descriptor.replace(0, name.size(), name);
    descriptor[11] = type;
    descriptor[16] = static_cast<char>(length);
    descriptor[17] = static_cast<char>(decimals);
    descriptor[18] = static_cast<char>(flags);
    descriptors_ += descriptor;
    lengths_.push_back(static_cast<std::size_t>(length));
    types_ += type;
    return *this;
  }

  /// One text a field: numbers are put to the right of their fields, all else to the left.
  DbfBuilder& Row(const std::vector<std::string>& cells, char flag = ' ') {
    records_ += flag;
    for (std::size_t at = 0; at < cells.size(); ++at) {
      const std::string blanks(lengths_[at] - std::min(lengths_[at], cells[at].size()), ' ');
      const bool right = types_[at] == 'N' || types_[at] == 'F';
      records_ += right ? blanks + cells[at] : cells[at] + blanks;
    }
    ++rows_;
    return *this;
  }

  std::string Bytes() const {
    std::size_t recordLength = 1;
    for (const std::size_t length : lengths_) recordLength += length;
    std::string file(32, '\0');
    file[0] = static_cast<char>(Version);
    file.replace(1, 3, "\x68\x06\x0E");
    file[29] = '\x03';
    Put(file, 4, 4, rows_);
    Put(file, 8, 2, HeaderLength());
    Put(file, 10, 2, recordLength);
    return file + descriptors_ + '\r' + records_ + '\x1A';
  }

  std::size_t HeaderLength() const { return 33 + descriptors_.size(); }

  /// A number in a file's bytes, the lowest first.
  static void Put(std::string& file, std::size_t at, std::size_t count, std::uint64_t number) {
    for (std::size_t byte = 0; byte < count; ++byte, number >>= 8) {
      file[at + byte] = static_cast<char>(number & 0xFF);
    }
  }

 private:
  std::string descriptors_;
  std::string records_;
  std::string types_;
  std::vector<std::size_t> lengths_;
  std::uint64_t rows_ = 0;
};

}  // namespace ostrel
