#include "platform/values/value.h"

#include "platform/values/moment_text.h"
#include "platform/values/numbers.h"
#include "platform/values/value_failures.h"

namespace ostrel {
namespace {

struct AsText {
  std::string operator()(std::monostate) const { throw value_failure::InvalidNull(); }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(float value) const { return GeneralText(value); }
  std::string operator()(double value) const { return GeneralText(value); }
  std::string operator()(Moment value) const { return GeneralDate(OnTheClock(value)); }
  std::string operator()(const std::string& value) const { return value; }
};

struct AsNumber {
  double operator()(std::monostate) const noexcept { return 0; }
  double operator()(bool value) const noexcept { return value ? 1 : 0; }
  double operator()(std::int32_t value) const noexcept { return value; }
  double operator()(float value) const noexcept { return value; }
  double operator()(double value) const noexcept { return value; }
  double operator()(Moment value) const noexcept { return value.Days; }
  double operator()(const std::string&) const noexcept { return 0; }
};

}  // namespace

std::string Value::ToText() const { return std::visit(AsText{}, content_); }

double Value::ToDouble() const {
  if (IsNull()) throw value_failure::InvalidNull();
  return IsText() ? WholeNumberText(Characters()) : NumberOrZero();
}

std::int32_t Value::ToLong() const { return ostrel::ToLong(ToDouble()); }

double Value::NumberOrZero() const noexcept { return std::visit(AsNumber{}, content_); }

const std::string& Value::Characters() const& noexcept {
  static const std::string none;
  const auto* text = std::get_if<std::string>(&content_);
  return text != nullptr ? *text : none;
}

}  // namespace ostrel
