#include "demo/FilledBottle.h"

#include "demo/BottleScenery.h"
#include "tests/support/Files.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr int drawingCount = 39;  // more only repeat them

/// Seconds; each somewhere within what is told of it, so that a slow machine tells the same.
qint64 ageOf(int number) {
  constexpr qint64 minute = 60, hour = 60 * minute, day = 24 * hour;
  constexpr qint64 newest[] = {
      10,           3 * minute + 20, 12 * minute + 20, 47 * minute + 20, hour + 5 * minute,
      5 * hour + 9, day + hour,      2 * day + hour,   4 * day + hour};
  constexpr int count = std::size(newest);
  return number < count ? newest[number] : 5 * day + hour + (number - count) * 20 * hour;
}

}  // namespace

FilledBottle::FilledBottle(QString path) : bottle(std::move(path)) {
  QDir().mkpath(bottle);
}

void FilledBottle::setCount(int count) {
  const QDir folder(bottle);
  for (const QString& name : folder.entryList(QDir::Files))
    QFile::remove(folder.filePath(name));
  for (int number = 0; number < count; ++number) {
    const auto drawing = static_cast<std::size_t>(number % drawingCount);
    if (drawing == drawn.size()) {
      drawn.push_back(drawings.filePath(QString::number(number)));
      if (!scenery::screenshot(number).save(drawn.back(), "PNG"))
        throw std::runtime_error("can't draw a picture");
    }
    const QString path = folder.filePath(u"%1.png"_s.arg(number, 3, 10, QLatin1Char('0')));
    if (!QFile::copy(drawn[drawing], path))
      throw std::runtime_error("can't fill the bottle");
    testing_support::setModified(path, QDateTime::currentDateTime().addSecs(-ageOf(number)));
  }
}

}  // namespace demo
