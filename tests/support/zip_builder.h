#pragma once

// Makes zips byte by byte with stored members, to lie in ways that no packer does.

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel {

struct ZipMemberBytes {
  std::string Name;
  std::string Content;
  std::uint32_t UnixMode = 0100644;
  std::int64_t ClaimedSize = -1;  ///< of the unpacked content; -1 the true one
  std::uint32_t CrcFault = 0;     ///< bits of the checksum to turn over
  std::uint16_t Method = 0;
  std::uint16_t Flags = 0;
};

class ZipBuilder {
 public:
  ZipBuilder& Add(const ZipMemberBytes& member) {
    const std::string fields = FieldsOf(member);
    const std::size_t offset = members_.size();
    members_ += "PK\3\4" + Number(20, 2) + fields + member.Name + member.Content;
    directory_ += "PK\1\2" + Number(20 | 3 << 8, 2) + Number(20, 2) + fields + Number(0, 6) +
                  Number(std::uint64_t{member.UnixMode} << 16, 4) + Number(offset, 4) + member.Name;
    ++count_;
    return *this;
  }

  std::string Bytes() const {
    return members_ + directory_ + "PK\5\6" + Number(0, 4) + Number(count_, 2) + Number(count_, 2) +
           Number(directory_.size(), 4) + Number(members_.size(), 4) + Number(0, 2);
  }

 private:
  static std::string Number(std::uint64_t number, std::size_t count) {
    std::string bytes;
    for (; count > 0; --count, number >>= 8) bytes += static_cast<char>(number & 0xFF);
    return bytes;
  }

  static std::uint32_t Crc(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char c : bytes) {
      crc ^= static_cast<unsigned char>(c);
      for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1) * 0xEDB88320;
    }
    return ~crc;
  }

  // From the flags to the length of the extra field, as both headers have them.
  static std::string FieldsOf(const ZipMemberBytes& member) {
    const auto size = static_cast<std::int64_t>(member.Content.size());
    const std::int64_t claimed = member.ClaimedSize < 0 ? size : member.ClaimedSize;
    return Number(member.Flags, 2) + Number(member.Method, 2) + Number(0x30CE'43C0, 4) +
           Number(Crc(member.Content) ^ member.CrcFault, 4) +
           Number(static_cast<std::uint64_t>(size), 4) +
           Number(static_cast<std::uint64_t>(claimed), 4) + Number(member.Name.size(), 2) +
           Number(0, 2);
  }

  std::string members_;
  std::string directory_;
  std::uint64_t count_ = 0;
};

}  // namespace ostrel
