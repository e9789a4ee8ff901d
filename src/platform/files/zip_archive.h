#pragma once

// A zip that others made, opened to read. Packers are believed as far as they can be: comments,
// extra fields, sizes behind the data, zip64 and odd dates are all fine; what is read of a member
// must have the length and the checksum that the zip's own directory gives it. For zip_extraction
// alone.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct zip;
struct zip_source;

namespace ostrel {

struct ZipMember {
  std::uint64_t Index = 0;
  std::string Name;          ///< UTF-8, as the zip has it; may be any text at all
  std::string Bytes;         ///< of the name in the zip
  std::uint64_t Size = 0;    ///< bytes when unpacked, as the zip claims
  std::uint64_t Packed = 0;  ///< bytes in the zip, as it claims
  bool IsPlainFile = true;   ///< no folder, link, device or volume label
};

class ZipArchive {
 public:
  /// The bytes must live as long as the object.
  ///   throws  Failure 57, in words for a person, when they are no zip
  static ZipArchive OfBytes(std::string_view bytes);

  std::vector<ZipMember> Members() const;

  /// Unpacks one member; never takes up more memory than its claimed size, give or take a block.
  ///   throws  Failure 57 when it is damaged, packed in a way that is not known, encrypted, or
  ///           longer or shorter than claimed
  std::string Read(const ZipMember& member) const;

 private:
  struct Closer {
    void operator()(zip* archive) const;
  };
  explicit ZipArchive(zip_source* source);

  std::unique_ptr<zip, Closer> archive_;
};

}  // namespace ostrel
