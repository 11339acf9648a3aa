#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <typeindex>
#include <utility>
#include <vector>

namespace platform {

/// The services of one run of the program, one of each kind: the settings, the texts, the log, the hot keys
/// and so on. Each is made at its first use, unless it was provided before.
///
/// The program makes one environment at its start and provides what depends on its desktop. A test makes
/// another, in which everything is new, and provides what it plays itself. Whoever needs a service asks that
/// service's accessor (UserDefaults::standard()), not the environment. May be used from any thread.
class Environment {
 public:
  /// The current environment from now on, until it goes; then the one before is again. Without any, one
  /// serves that never goes.
  Environment();
  /// The services go in reverse order of their making, while those made before them are still there.
  ~Environment();
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  /// The current environment's service of this kind. `make` gives a shared pointer to it, which may be null.
  template <typename Service, typename Make>
  [[nodiscard]] static std::shared_ptr<Service> shared(Make make) {
    return std::static_pointer_cast<Service>(
        find(typeid(Service), [&] { return erased(std::shared_ptr<Service>(make())); }));
  }
  /// Puts a service in place in the current environment and gives the one that was there. Null takes it away:
  /// the next use makes it anew.
  template <typename Service>
  static std::shared_ptr<Service> provide(std::shared_ptr<Service> service) {
    return std::static_pointer_cast<Service>(exchange(typeid(Service), erased(std::move(service))));
  }

 private:
  using Any = std::shared_ptr<void>;
  template <typename Service>
  static Any erased(std::shared_ptr<Service> service) {
    return std::const_pointer_cast<std::remove_const_t<Service>>(std::move(service));
  }
  static Any find(std::type_index kind, const std::function<Any()>& make);
  static Any exchange(std::type_index kind, Any service);

  struct Entry {
    std::type_index kind;
    Any service;
  };
  static Environment& current();
  [[nodiscard]] Entry* entry(std::type_index kind);

  std::vector<Entry> entries;  // in the order of their making
  Environment* const previous;
};

}  // namespace platform
