#pragma once

#include "platform/base/MainQueue.h"
#include "platform/input/wayland/KeyBinder.h"

#include <QHash>

#include <map>

namespace platform {

/// Hot keys on desktops that let no program watch keys: the desktop is asked for them, in the first of
/// several ways that it knows. Registering always succeeds; whether the desktop gives the keys shows in
/// state().
///
/// A hot key goes by its name there. So a way may deliver it by other keys than those that were asked for.
class BoundHotKeyService : public HotKeyService {
 public:
  using Way = std::function<std::unique_ptr<KeyBinder>(KeyBinder::Listener)>;

  explicit BoundHotKeyService(std::vector<Way> ways);
  ~BoundHotKeyService() override;

  Result<HotKeyReference> registerHotKey(const HotKey& hotKey) override;
  void unregisterHotKey(HotKeyReference reference) override;
  Result<> installEventHandler(EventHandler handler) override;
  void listen(Keys keys) override;
  std::vector<SymbolicHotKey> takenByOthers() const override;
  HotKeyState state() const override;
  Subscription observeState(const std::function<void()>& block) override { return observers.add(block); }

  /// Something that a way needs may have come.
  void tryAgain();

 private:
  void bindLater();
  void bind();
  void nextWay();
  void heard(KeyAction action, const QString& name);
  KeyOutcome send(KeyAction action, const HotKey& hotKey) const;

  const std::vector<Way> ways;
  size_t way = 0;  // the one in use, or the number of ways
  std::unique_ptr<KeyBinder> binder;
  EventHandler eventHandler;
  Keys listening = Keys::None;
  quint64 lastReference = 0;
  std::map<HotKeyReference, HotKey> registered;
  std::vector<HotKey> bound;    // what the binder was given
  QHash<QString, qint64> held;  // since when, or since the last repeat, on the queue's clock
  WorkItem binding;
  Listeners<> observers;
};

}  // namespace platform
