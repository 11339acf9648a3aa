#pragma once

#include "app/look/Form.h"

namespace sorrel {

/// Chooses one of the installed font families, or the system's font. Each family's row is drawn in itself,
/// and its font is loaded when that row is first seen.
class FontPicker : public FormPicker {
 public:
  explicit FontPicker(QWidget* parent);

  /// What the row of the system's font says.
  void setSystemFontTitle(const QString& title);
  /// Empty for the system's font. One that isn't installed is shown, though it has no row.
  void setFamily(const QString& family);
  [[nodiscard]] QString family() const;
};

/// A text as a watermark in some font would show it: in one line, smaller where it doesn't fit.
class FontPreview : public QWidget {
 public:
  explicit FontPreview(QWidget* parent);

  /// An empty family stands for the system's font in bold.
  void show(const QString& text, const QString& family);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text;
  QString family;
};

}  // namespace sorrel
