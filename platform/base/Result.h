#pragma once

#include <QString>

#include <system_error>
#include <utility>
#include <variant>

namespace platform {

/// Why something failed.
struct Error {
  QString reason;  // for the log, in English
  int number = 0;  // of the system (errno), where it told

  [[nodiscard]] static Error fromErrno(int number) {
    return {QString::fromStdString(std::generic_category().message(number)), number};
  }
  bool operator==(const Error&) const = default;
};

/// What came of something that may fail and has a reason to tell: a value, or an error. What can be absent
/// without a reason is a plain optional.
template <typename Value = void>
class [[nodiscard]] Result {
 public:
  Result(Value value) : outcome(std::in_place_index<0>, std::move(value)) {}  // NOLINT: `return value;`
  Result(Error error) : outcome(std::in_place_index<1>, std::move(error)) {}  // NOLINT: `return error;`

  [[nodiscard]] explicit operator bool() const { return outcome.index() == 0; }
  /// Only where there is a value.
  [[nodiscard]] Value& operator*() { return std::get<0>(outcome); }
  [[nodiscard]] const Value& operator*() const { return std::get<0>(outcome); }
  [[nodiscard]] Value* operator->() { return &std::get<0>(outcome); }
  [[nodiscard]] const Value* operator->() const { return &std::get<0>(outcome); }
  /// Only where there is none.
  [[nodiscard]] const Error& error() const { return std::get<1>(outcome); }

 private:
  std::variant<Value, Error> outcome;
};

/// The same without a value: `return {};` is success.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : outcome(std::move(error)) {}  // NOLINT: `return error;`

  [[nodiscard]] explicit operator bool() const { return outcome.index() == 0; }
  /// Only where it failed.
  [[nodiscard]] const Error& error() const { return std::get<1>(outcome); }

 private:
  std::variant<std::monostate, Error> outcome;
};

}  // namespace platform
