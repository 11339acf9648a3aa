#pragma once

#include <QAbstractNativeEventFilter>

#include <functional>

namespace platform {

/// Tells when the desktop begins or ends to composite its windows; isComposited() has changed by then.
class CompositingWatch : private QAbstractNativeEventFilter {
 public:
  explicit CompositingWatch(std::function<void()> onChange);
  ~CompositingWatch() override;
  CompositingWatch(const CompositingWatch&) = delete;
  CompositingWatch& operator=(const CompositingWatch&) = delete;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  const std::function<void()> onChange;
  quint32 window = 0;   // that hears of it; our own, so that nobody else's wishes are touched
  quint32 manager = 0;  // the selection that a compositing manager owns
  int firstEvent = 0;   // of the extension that tells
};

}  // namespace platform
