#pragma once

// A failure is something the operator is told about: the disk is full, a text is no date, a line is
// locked. It is not a programming error; those are asserts. Everything below the feature rooms that
// cannot do what it was asked throws one, and the error tails of the routines (frame/
// failure_reporting.h) turn it into the report with Abort, Retry and Ignore.

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace ostrel {

/// Number and words of one failure, as the report shows them.
class Failure : public std::exception {
 public:
  Failure(std::int32_t number, std::string text) : Number(number), Text(std::move(text)) {}
  const char* what() const noexcept override { return Text.c_str(); }

  std::int32_t Number;  ///< stable, see failure_number below
  std::string Text;     ///< one sentence, UTF-8, says which file or field
};

/// The program ends now, without unloading the form. Not an exception of the standard family, so
/// that nothing which reports failures can swallow it.
struct ProgramEnded {};

/// The numbers that reports, hints and the lock class go by. They are known to office staff and to
/// phone support, so a fault keeps its number whatever library met it.
namespace failure_number {
inline constexpr std::int32_t kInvalidCall = 5;  // a call that makes no sense here
inline constexpr std::int32_t kOverflow = 6;     // a number too large for its place
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscript = 9;  // beyond the end of an array
inline constexpr std::int32_t kDivisionByZero = 11;
inline constexpr std::int32_t kTypeMismatch = 13;  // a text that is no number, time or date
inline constexpr std::int32_t kInternal = 51;      // a fault of the program's own
inline constexpr std::int32_t kBadFileName = 52;   // a folder or file name that cannot be
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kFileAlreadyOpen = 55;
inline constexpr std::int32_t kDeviceIo = 57;  // the disk answers with an error
inline constexpr std::int32_t kFileExists = 58;
inline constexpr std::int32_t kDiskFull = 61;  // no room for a file
inline constexpr std::int32_t kPermissionDenied = 70;
inline constexpr std::int32_t kDiskNotReady = 71;  // the removable disk is not there
inline constexpr std::int32_t kPathAccess = 75;    // a folder or file that may not be written
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kObjectNotSet = 91;     // a database or recordset never opened
inline constexpr std::int32_t kInvalidNull = 94;      // an empty field where a value is needed
inline constexpr std::int32_t kNoSuchProperty = 438;  // the control has no such property
inline constexpr std::int32_t kPrinter = 482;
inline constexpr std::int32_t kExclusive = 3008;       // the table is another program's alone
inline constexpr std::int32_t kNotUpdatable = 3027;    // the store or table is read-only
inline constexpr std::int32_t kNoIndexSet = 3019;      // a search in a table without its index
inline constexpr std::int32_t kNoEditUnderWay = 3020;  // Update or assignment without AddNew, Edit
inline constexpr std::int32_t kNoCurrentRecord = 3021;
inline constexpr std::int32_t kDatabaseNotFound = 3024;
inline constexpr std::int32_t kStoreDiskFull = 3026;  // no room for the store to grow
inline constexpr std::int32_t kDiskOrNetwork = 3043;  // the store's disk answers with an error
inline constexpr std::int32_t kDamagedStore = 3049;
inline constexpr std::int32_t kTooFewParameters = 3061;  // a query names a field that is not there
inline constexpr std::int32_t kQuerySyntax = 3075;
inline constexpr std::int32_t kNoSuchTable = 3078;
inline constexpr std::int32_t kFieldTooSmall = 3163;  // a text longer than its field
inline constexpr std::int32_t kDeletedRecord = 3167;
inline constexpr std::int32_t kSaveLocked = 3186;
inline constexpr std::int32_t kRecordChanged = 3197;  // by another program, since it was shown
inline constexpr std::int32_t kUpdateLocked = 3218;
inline constexpr std::int32_t kNotOffered =
    3251;  // a call that this kind of recordset has no use for
inline constexpr std::int32_t kLockedByUser = 3260;
inline constexpr std::int32_t kItemNotFound = 3265;         // no such field, index or table
inline constexpr std::int32_t kExternalTableFormat = 3274;  // a dBase table that is not one
inline constexpr std::int32_t kExternalDriver = 3275;
inline constexpr std::int32_t kForeignStore =
    3343;  // a file under the store's name that is not one
inline constexpr std::int32_t kFieldConversion = 3421;  // a value that the field's type refuses
}  // namespace failure_number

}  // namespace ostrel
