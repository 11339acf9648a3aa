#pragma once

#include <QTabBar>

namespace sorrel {

/// The tabs as a row of symbols over titles, in the place of a toolbar.
class SettingsTabBar : public QTabBar {
 public:
  explicit SettingsTabBar(QWidget* parent);

  /// A tab without a title as yet.
  void add(const QString& symbol);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  [[nodiscard]] QSize tabSizeHint(int index) const override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void paintTab(QPainter& painter, int index) const;
};

}  // namespace sorrel
