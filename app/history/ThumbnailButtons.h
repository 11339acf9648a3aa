#pragma once

#include <functional>

class QRect;
class QWidget;

namespace sorrel {

class SymbolButton;

/// The two buttons that float on the thumbnail under the pointer.
class ThumbnailButtons {
 public:
  ThumbnailButtons(QWidget* viewport, const std::function<void()>& onDelete,
                   const std::function<void()>& onCopy);

  /// On the thumbnail whose picture lies in that square of the viewport.
  void showOn(const QRect& square);
  void hide();
  void retranslate();

 private:
  SymbolButton* const remove;
  SymbolButton* const copy;
};

}  // namespace sorrel
