#include "platform/database/dbf_write.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "platform/database/dbf_header.h"
#include "platform/database/dbf_values.h"
#include "platform/files/files.h"
#include "platform/files/replace_file.h"
#include "platform/values/failure.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr double kLargestCurrency = 900'000'000'000'000;  // below what its 64 bits hold

[[noreturn]] void RefuseNumber(const DbfField& field, double number) {
  throw Failure(failure_number::kOverflow, "Overflow: " + GeneralText(number) +
                                               " does not fit in the field " + field.Name + ".");
}

/// Right-justified, with the decimals of the field.
std::string DecimalText(const DbfField& field, double number) {
  char digits[255];  // no field is longer
  const auto [end, error] = std::to_chars(digits, std::end(digits), number == 0 ? 0.0 : number,
                                          std::chars_format::fixed, field.Decimals);
  const auto length = static_cast<std::size_t>(end - digits);
  if (error != std::errc() || length > field.Length) RefuseNumber(field, number);
  return std::string(field.Length - length, ' ').append(digits, length);
}

std::string LittleEndianBytes(std::uint64_t number, std::size_t count) {
  std::string bytes(count, '\0');
  for (char& byte : bytes) {
    byte = static_cast<char>(number & 0xFF);
    number >>= 8;
  }
  return bytes;
}

std::uint64_t CurrencyUnits(const DbfField& field, double number) {
  if (std::abs(number) > kLargestCurrency) RefuseNumber(field, number);
  return static_cast<std::uint64_t>(std::llround(number * 10000));
}

std::string TypedBytes(const DbfField& field, double number) {
  switch (field.Type) {
    case 'N':
    case 'F':
      return DecimalText(field, number);
    case 'I':
      return LittleEndianBytes(static_cast<std::uint64_t>(ToLong(number)), field.Length);
    case 'Y':
      return LittleEndianBytes(CurrencyUnits(field, number), field.Length);
    case 'B':
      return LittleEndianBytes(std::bit_cast<std::uint64_t>(number), field.Length);
    default:
      return {};
  }
}

/// What comes next to 0 in a field that is too narrow for one with its decimals, or holds no numbers.
std::string ZeroBytes(const DbfField& field) {
  const bool inText = field.Length == 10;  // the place of a memo, which is four bytes elsewhere
  std::string bytes(field.Length, '\0');
  switch (field.Type) {
    case 'N':
    case 'F':
      bytes.assign(field.Length, ' ');
      if (!bytes.empty()) bytes.back() = '0';
      return bytes;
    case 'C':
      bytes.assign(field.Length, ' ');
      if (!bytes.empty()) bytes.front() = '0';
      return bytes;
    case 'D':
    case 'L':
      return std::string(field.Length, ' ');
    case 'B':
    case 'M':
    case 'G':
    case 'P':
      return inText ? std::string(field.Length, ' ') : bytes;
    default:
      return bytes;
  }
}

/// The number as the field's type writes it; as many bytes as the field has.
std::string FieldBytes(const DbfField& field, double number) {
  try {
    std::string bytes = TypedBytes(field, number);
    if (DbfNumericField(field.Type, bytes)) return bytes;
  } catch (const Failure&) {
    if (number != 0) throw;
  }
  if (number == 0) return ZeroBytes(field);
  throw Failure(failure_number::kFieldConversion,
                "Data type conversion error: the field " + field.Name + " holds no numbers.");
}

const DbfField& FieldNamed(const DbfHeader& header, const std::string& name,
                           const std::string& table) {
  const auto found =
      std::find_if(header.Fields.begin(), header.Fields.end(),
                   [&](const DbfField& field) { return SameText(field.Name, name); });
  if (found == header.Fields.end()) {
    throw Failure(failure_number::kTooFewParameters,
                  "Too few parameters: " + table + " has no field " + name + ".");
  }
  return *found;
}

/// Into every record; the last one may be cut short. Behind them may lie what a table that was larger
/// has left, so it goes on to the end of the file.
void PutInEveryRecord(const DbfHeader& header, const DbfField& field, const std::string& bytes,
                      std::string& file) {
  for (std::size_t at = header.HeaderLength + field.Offset; at < file.size();
       at += header.RecordLength) {
    const std::size_t room = std::min(bytes.size(), file.size() - at);
    file.replace(at, room, bytes, 0, room);
  }
}

}  // namespace

std::string WithNumbers(std::string file, const std::string& name,
                        const std::vector<Assignment>& assignments) {
  const DbfHeader header = CheckDbfHeader(file, name);
  for (const Assignment& assignment : assignments) {
    const DbfField& field = FieldNamed(header, assignment.Field, name);
    PutInEveryRecord(header, field, FieldBytes(field, assignment.Number), file);
  }
  return file;
}

std::string WithZeros(std::string file, const std::string& name,
                      const std::vector<std::string>& fields) {
  const DbfHeader header = CheckDbfHeader(file, name);
  for (const DbfField& field : header.Fields) {
    const bool named = std::any_of(fields.begin(), fields.end(), [&](const std::string& each) {
      return SameText(each, field.Name);
    });
    if (named) PutInEveryRecord(header, field, FieldBytes(field, 0), file);
  }
  return file;
}

void WriteNumbers(const std::string& path, const std::vector<Assignment>& assignments) {
  const std::string file = WithNumbers(ReadTableFile(path), path, assignments);
  ReplaceFile(ExistingPath(path), file, Readers::UserAlone);
}

}  // namespace ostrel
