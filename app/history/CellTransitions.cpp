#include "app/history/CellTransitions.h"

#include "platform/desktop/Easing.h"

#include <QVariantAnimation>

namespace sorrel {

CellTransitions::CellTransitions(std::chrono::milliseconds howLong,
                                 std::function<void(const QString&)> handler, QObject* parent)
    : QObject(parent), duration(howLong), onChange(std::move(handler)) {
}

void CellTransitions::setOn(const QString& path, bool isOn) {
  delete running.take(path);
  auto* const animation = new QVariantAnimation(this);
  running.insert(path, animation);
  animation->setStartValue(value(path));
  animation->setEndValue(isOn ? 1.0 : 0.0);
  animation->setDuration(static_cast<int>(duration.count()));
  animation->setEasingCurve(platform::Easing::out());
  connect(animation, &QVariantAnimation::valueChanged, this, [this, path](const QVariant& now) {
    if (now.toDouble() > 0)
      values.insert(path, now.toDouble());
    else
      values.remove(path);
    onChange(path);
  });
  connect(animation, &QVariantAnimation::finished, this, [this, path] { running.take(path)->deleteLater(); });
  animation->start();
}

}  // namespace sorrel
