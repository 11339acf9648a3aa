#pragma once

#include "platform/base/Subscription.h"

#include <functional>
#include <utility>

namespace platform {

/// Those who want to hear of changes of some fields.
class Observers {
 public:
  /// A field is known by its address.
  using Field = const void*;

  /// Hears of each change.
  [[nodiscard]] Subscription add(std::function<void()> observer) {
    return listeners.add([observer = std::move(observer)](Field) { observer(); });
  }
  /// Hears of each change and which field it is; null where the source doesn't tell.
  [[nodiscard]] Subscription add(std::function<void(Field)> observer) {
    return listeners.add(std::move(observer));
  }
  /// Hears of the changes of one field.
  [[nodiscard]] Subscription add(Field field, std::function<void()> observer) {
    return listeners.add([field, observer = std::move(observer)](Field changing) {
      if (changing == field)
        observer();
    });
  }

  void tell(Field field = nullptr) const { listeners.tell(field); }

 private:
  Listeners<Field> listeners;
};

/// A field that everybody may read and change. Each assignment and each change() tells the observers once,
/// before the new value is in place, also where it equals the old one.
template <typename Value>
class Published {
 public:
  explicit Published(Observers& observers) : value(), observers(observers) {}
  /// `didChange`, if given, is called when the new value is in place.
  Published(Observers& observers, Value initial, std::function<void()> didChange = {})
      : value(std::move(initial)), observers(observers), didChange(std::move(didChange)) {}
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  [[nodiscard]] const Value& get() const { return value; }
  [[nodiscard]] operator const Value&() const { return value; }  // NOLINT: reads like a plain field
  [[nodiscard]] const Value* operator->() const { return &value; }

  Published& operator=(Value next) {
    change([&](Value& current) { current = std::move(next); });
    return *this;
  }

  /// As Observers::add() for this field alone.
  [[nodiscard]] Subscription observe(std::function<void()> observer) const {
    return observers.add(this, std::move(observer));
  }

  /// Changes the value in place: `edit` gets a reference to it.
  template <typename Edit>
  void change(Edit edit) {
    observers.tell(this);
    edit(value);
    if (didChange)
      didChange();
  }

 private:
  Value value;
  Observers& observers;
  const std::function<void()> didChange;
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
  using Published<Value>::observe;
  using Published<Value>::operator const Value&;
  using Published<Value>::operator->;
};

}  // namespace platform
