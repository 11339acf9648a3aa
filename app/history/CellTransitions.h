#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>

class QVariantAnimation;

namespace sorrel {

/// One look of the thumbnails that comes and goes smoothly, each thumbnail for itself, by its path.
class CellTransitions : public QObject {
 public:
  /// `onChange` is told the path whenever a value has changed.
  CellTransitions(std::chrono::milliseconds duration, std::function<void(const QString&)> onChange,
                  QObject* parent);

  /// From 0 to 1.
  [[nodiscard]] qreal value(const QString& path) const { return values.value(path, 0); }
  void setOn(const QString& path, bool isOn);

 private:
  const std::chrono::milliseconds duration;
  const std::function<void(const QString&)> onChange;
  QHash<QString, qreal> values;  // those above 0
  QHash<QString, QVariantAnimation*> running;
};

}  // namespace sorrel
