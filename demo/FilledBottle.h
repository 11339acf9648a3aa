#pragma once

#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace demo {

/// Fills a bottle with pictures of all kinds, taken at times from a moment to months ago.
class FilledBottle {
 public:
  /// `path` is the bottle's, which is made if need be.
  explicit FilledBottle(QString path);

  /// Leaves the `count` newest pictures in the bottle and no other file.
  void setCount(int count);

 private:
  const QString bottle;
  QTemporaryDir drawings;
  std::vector<QString> drawn;
};

}  // namespace demo
