#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// Keeps somebody listening for as long as it lives; every source of news gives one. A field of the listener,
/// it ends with its owner, so that a block may use `this`.
///
/// It may be ended from inside its own call, and may outlive its source.
class [[nodiscard]] Subscription {
 public:
  /// What a source knows of one who listens. The source holds it weakly, and while it calls.
  struct Listener {
    std::atomic<bool> hasEnded = false;
  };

  Subscription() = default;
  explicit Subscription(std::shared_ptr<Listener> listener) : listener(std::move(listener)) {}
  Subscription(Subscription&&) noexcept = default;
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      end();
      listener = std::move(other.listener);
    }
    return *this;
  }
  ~Subscription() { end(); }

  /// After this nothing more is heard, not even of what is under way.
  void end() {
    if (const auto ended = std::exchange(listener, nullptr))
      ended->hasEnded = true;
  }

 private:
  std::shared_ptr<Listener> listener;
};

/// Those who listen to one source on the main thread, in the order in which they came.
template <typename... News>
class Listeners {
 public:
  using Block = std::function<void(News...)>;

  Subscription add(Block block) {
    std::erase_if(listeners, [](const auto& listener) { return listener.expired(); });
    auto added = std::make_shared<Listener>(std::move(block));
    listeners.push_back(added);
    return Subscription(std::move(added));
  }

  /// Who comes during the call hears the next news, and who goes hears no more.
  void tell(News... news) const {
    const auto current = listeners;
    for (const auto& weak : current)
      if (const auto listener = weak.lock(); listener && !listener->hasEnded)
        listener->block(news...);
  }

 private:
  struct Listener : Subscription::Listener {
    explicit Listener(Block block) : block(std::move(block)) {}
    const Block block;
  };
  std::vector<std::weak_ptr<Listener>> listeners;
};

/// For blocks that others keep and call when they like, such as completions. A field of whoever gives them
/// away: what it has guarded does nothing once it is gone. Main thread only.
class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  template <typename Block>
  [[nodiscard]] auto guarded(Block block) const {
    return [mark = std::weak_ptr(living), block = std::move(block)](auto&&... arguments) {
      if (!mark.expired())
        block(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  const std::shared_ptr<const bool> living = std::make_shared<const bool>(true);
};

}  // namespace platform
