#include "app/history/CellTransitions.h"

namespace sorrel {

CellTransitions::CellTransitions(std::chrono::milliseconds howLong,
                                 std::function<void(const QByteArray&)> handler)
    : duration(howLong), onChange(std::move(handler)) {
}

double CellTransitions::value(const QByteArray& path) const {
  const auto found = motions.find(path);
  return found == motions.end() ? 0 : found->second->value();
}

void CellTransitions::setOn(const QByteArray& path, bool isOn) {
  std::unique_ptr<platform::Motion>& motion = motions[path];
  if (!motion) {
    const auto step = [this, path](double value) {
      if (value == 0)
        motions.erase(path);
      onChange(path);
    };
    motion = std::make_unique<platform::Motion>(duration, platform::Easing::Out, step);
  }
  motion->moveTo(isOn ? 1 : 0);
}

}  // namespace sorrel
