#pragma once

// What the bytes of a dBase field mean. The rules are strict, since a wrong number in a payroll is
// worse than none: what is not wholly a number, date or logical of its type is Null.

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/database/dbf_code_page.h"
#include "platform/values/value.h"

namespace ostrel {

/// A number as types N and F write it: a sign, digits with at most one point, an exponent; blanks
/// around it.
///   returns  nothing for a field that is blank, filled with stars (a number that did not fit), or
///            anything but such a number as a whole ("0x10", "1,50")
std::optional<double> DbfNumber(std::string_view raw);

/// Numbers of every numeric type: N, F, and Visual FoxPro's binary I, Y (four decimals) and B.
///   returns  nothing as DbfNumber, and for any other type
std::optional<double> DbfNumericField(char type, std::string_view raw);

bool IsDbfNumericType(char type);

/// The value of a field of any type: Double, Date, Boolean or Text, else Null. `raw` is empty for a
/// field that the file's end cut off, which makes a text empty and anything else Null. Memos and
/// other types whose contents lie in a second file are not read and Null.
Value DbfValue(char type, std::string_view raw, const CodePage& page);

/// Four or eight bytes, the lowest first.
std::int32_t LittleEndian32(std::string_view raw);
std::int64_t LittleEndian64(std::string_view raw);

}  // namespace ostrel
