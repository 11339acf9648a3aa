#pragma once

#include <QWidget>

namespace sorrel {

/// What is new in a version, on a sheet of its own: as high as the text, or scrolling where that is long.
class ReleaseNotes : public QWidget {
 public:
  ReleaseNotes(const QString& notes, int width);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace sorrel
