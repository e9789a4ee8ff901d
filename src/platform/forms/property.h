#pragma once

// A property of a control: a value that tells its control when it changes, so that whoever draws
// the form can follow. Reads like a plain variable.

#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ostrel {

class Control;

namespace detail {
void TellChange(Control& owner);
}

template <class T>
class Property {
 public:
  explicit Property(Control& owner, T initial = T{}) : owner_(owner), value_(std::move(initial)) {}
  Property(const Property&) = delete;

  const T& Get() const noexcept { return value_; }
  operator const T&() const noexcept { return value_; }
  operator std::string_view() const noexcept requires std::is_same_v<T, std::string> {
    return value_;
  }

  /// Does nothing where the value does not change: no repaint, no event.
  Property& operator=(T value) {
    if (value == value_) return *this;
    value_ = std::move(value);
    detail::TellChange(owner_);
    if (AfterChange) AfterChange();
    return *this;
  }
  Property& operator=(const Property& other) { return *this = other.value_; }

  /// Sets the value without any event: for the design state, and for a view that reports what the
  /// operator has already seen happen.
  void Put(T value) { value_ = std::move(value); }

  friend bool operator==(const Property& a, const T& b) { return a.value_ == b; }

  /// What a control does of itself when the value changes, such as raising Click.
  std::function<void()> AfterChange;

 private:
  Control& owner_;
  T value_;
};

}  // namespace ostrel
