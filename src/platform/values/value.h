#pragma once

// The value of a field or of a lookup: what the store, the tables and the form hand each other. A
// value knows its kind, because a single-precision number, a double and a date come out of the
// same number differently on paper.

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

#include "platform/values/moment.h"

namespace ostrel {

class Value {
 public:
  Value() noexcept = default;  ///< Null
  Value(bool value) noexcept : content_(value) {}
  Value(std::int32_t value) noexcept : content_(value) {}
  Value(float value) noexcept : content_(value) {}
  Value(double value) noexcept : content_(value) {}
  Value(Moment value) noexcept : content_(value) {}
  Value(std::string value) noexcept : content_(std::move(value)) {}
  Value(const char* value) : content_(std::string(value)) {}

  enum class Kind { Null, Boolean, Long, Single, Double, Date, Text };
  Kind KindOf() const noexcept { return static_cast<Kind>(content_.index()); }
  bool IsNull() const noexcept { return KindOf() == Kind::Null; }
  bool IsText() const noexcept { return KindOf() == Kind::Text; }

  /// The value as plain text: numbers in the general form (numbers.h), seven digits for Single and
  /// fifteen for Double; dates as "General Date"; True or False.
  ///   throws  Failure 94 on Null
  std::string ToText() const;

  /// The value as a number. A text must be a number as a whole: "8.5" or "-9" but not "8.5x".
  ///   throws  Failure 94 on Null, Failure 13 on a text that is no number
  double ToDouble() const;

  /// ToDouble rounded to a whole number, a tie going to the even neighbour.
  ///   throws  as ToDouble; Failure 6 outside 32 bits
  std::int32_t ToLong() const;

  /// The number of a Boolean, Long, Single, Double or Date as it stands; 0 for Null and Text.
  double NumberOrZero() const noexcept;

  /// The characters of a Text, empty for any other kind; for callers that have asked IsText().
  const std::string& Characters() const& noexcept;
  std::string Characters() && { return static_cast<const Value&>(*this).Characters(); }

  friend bool operator==(const Value&, const Value&) = default;

 private:
  using Content =
      std::variant<std::monostate, bool, std::int32_t, float, double, Moment, std::string>;
  template <Kind kind, class Type>
  static constexpr bool kHolds =
      std::is_same_v<std::variant_alternative_t<static_cast<std::size_t>(kind), Content>, Type>;

  // KindOf counts on the kinds standing in the order of the alternatives.
  static_assert(kHolds<Kind::Null, std::monostate> && kHolds<Kind::Boolean, bool> &&
                kHolds<Kind::Long, std::int32_t> && kHolds<Kind::Single, float> &&
                kHolds<Kind::Double, double> && kHolds<Kind::Date, Moment> &&
                kHolds<Kind::Text, std::string>);

  Content content_;
};

}  // namespace ostrel
