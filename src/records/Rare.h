// A part of a record that most records do not have.
#pragma once

#include <memory>

namespace walrim {

/// A value that takes memory only where it differs from T{}. Copies and compares as the value does.
template <typename T>
class Rare {
 public:
  Rare() = default;
  Rare(const Rare& other) : value_(other.value_ ? std::make_unique<T>(*other.value_) : nullptr) {}
  Rare(Rare&&) noexcept = default;
  Rare& operator=(const Rare& other) {
    value_ = other.value_ ? std::make_unique<T>(*other.value_) : nullptr;
    return *this;
  }
  Rare& operator=(Rare&&) noexcept = default;
  Rare& operator=(const T& value) {
    value_ = value == T{} ? nullptr : std::make_unique<T>(value);
    return *this;
  }
  ~Rare() = default;

  const T& operator*() const {
    static const T usual{};
    return value_ ? *value_ : usual;
  }
  const T* operator->() const { return &**this; }

  /// Gives one member a value; nothing is allocated for the one that it has already.
  template <typename Member, typename Value>
  void Set(Member T::*member, const Value& value) {
    if ((**this).*member == value) return;
    if (!value_) value_ = std::make_unique<T>();
    (*value_).*member = value;
  }

  friend bool operator==(const Rare& a, const Rare& b) { return *a == *b; }

 private:
  std::unique_ptr<T> value_;
};

}  // namespace walrim
