#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// Those who want to hear of a change.
class Observers {
 public:
  /// Keeps its observer listening as long as it lives.
  using Token = std::shared_ptr<void>;

  [[nodiscard]] Token add(std::function<void()> observer) {
    std::erase_if(observers, [](const auto& weak) { return weak.expired(); });
    auto token = std::make_shared<std::function<void()>>(std::move(observer));
    observers.push_back(token);
    return token;
  }

  void tell() const {
    const auto current = observers;  // an observer may add others
    for (const auto& weak : current)
      if (const auto observer = weak.lock())
        (*observer)();
  }

 private:
  std::vector<std::weak_ptr<std::function<void()>>> observers;
};

/// A field that everybody may read and change. Each assignment and each change() tells the observers once,
/// before the new value is in place, also where it equals the old one.
template <typename Value>
class Published {
 public:
  explicit Published(const Observers& listening) : value(), observers(listening) {}
  /// `didChange`, if given, is called when the new value is in place.
  Published(const Observers& listening, Value initial, std::function<void()> didChange = {})
      : value(std::move(initial)), observers(listening), hasChanged(std::move(didChange)) {}
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  [[nodiscard]] const Value& get() const { return value; }
  [[nodiscard]] operator const Value&() const { return value; }  // NOLINT: reads like a plain field
  [[nodiscard]] const Value* operator->() const { return &value; }

  Published& operator=(Value next) {
    change([&](Value& current) { current = std::move(next); });
    return *this;
  }

  /// Changes the value in place: `edit` gets a reference to it.
  template <typename Edit>
  void change(Edit edit) {
    observers.tell();
    edit(value);
    if (hasChanged)
      hasChanged();
  }

 private:
  Value value;
  const Observers& observers;
  const std::function<void()> hasChanged;
};

/// The same, but only `Owner` may change it.
template <typename Owner, typename Value>
class PublishedBy : private Published<Value> {
  friend Owner;
  using Published<Value>::change;
  using Published<Value>::operator=;

 public:
  using Published<Value>::Published;
  using Published<Value>::get;
  using Published<Value>::operator const Value&;
  using Published<Value>::operator->;
};

}  // namespace platform
