#pragma once

#include "platform/input/wayland/KeyBinder.h"
#include "platform/input/wayland/SwayIpc.h"

namespace platform {

/// Hot keys that are bound in sway by its own socket, once the user has agreed to that (hotKeysMayBeBound).
/// sway forgets them when it reads its configuration again, and is told anew; at the end of this object they
/// are taken back.
///
/// sway would put a binding silently in the place of the user's own, so keys that its configuration has are
/// left alone.
class SwayKeyBinder : public KeyBinder {
 public:
  /// `socketPath` as sway tells it to its children (SWAYSOCK).
  SwayKeyBinder(const QByteArray& socketPath, Listener listener);
  ~SwayKeyBinder() override;

  void bind(const std::vector<HotKey>& hotKeys) override;
  HotKeyState state() const override;
  std::vector<SymbolicHotKey> takenByOthers() const override { return configured; }

 private:
  void heard(const SwayIpc::Message& message);
  void readConfiguration(const QByteArray& answer);
  void keyHeard(const QByteArray& event);
  void update();
  void unbindAll();
  [[nodiscard]] bool isTaken(const HotKey& hotKey) const;
  void command(const QString& text) { sway->send(SwayIpc::Type::RunCommand, text.toUtf8()); }

  const Listener listener;
  std::unique_ptr<SwayIpc> sway;
  std::vector<HotKey> wanted;
  QStringList bound;  // combinations that sway has from us
  QString configurationPath;
  std::vector<SymbolicHotKey> configured;
  bool isConfigurationKnown = false;
  WorkItem unavailable;
  const Subscription consent;
};

}  // namespace platform
