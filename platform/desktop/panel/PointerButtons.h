#pragma once

#include <QAbstractNativeEventFilter>

#include <functional>

namespace platform {

/// Hears every press and release of a mouse button on the desktop, without taking any from those who are
/// clicked. The wheel is none. It hears nothing where the window system doesn't tell.
class PointerButtons : private QAbstractNativeEventFilter {
 public:
  enum class Change { Pressed, Released };

  /// `onChange` may destroy this object.
  explicit PointerButtons(std::function<void(Change)> onChange);
  ~PointerButtons() override;
  PointerButtons(const PointerButtons&) = delete;
  PointerButtons& operator=(const PointerButtons&) = delete;

 private:
  void select(quint32 events) const;
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  const std::function<void(Change)> onChange;
  int extension = -1;   // the number by which XInput's events are known
  quint16 pointer = 0;  // the device
};

}  // namespace platform
