#pragma once

#include "app/shell/AppColors.h"
#include "platform/desktop/Appearance.h"

#include <QAbstractButton>

namespace sorrel {

/// A small button that shows a symbol and nothing else. A click doesn't take the keyboard from where it is;
/// Tab reaches it where `setFocusPolicy` lets it.
class SymbolButton : public QAbstractButton {
 public:
  struct Look {
    QString symbol;
    int side = 12;  // of the symbol
    platform::Color ink;
    /// What lies on the symbol's filled shape, if it has one.
    platform::Color mark{0, 0};
    /// A circle behind the symbol, as large as the button.
    platform::Color disc{0, 0};
    /// A line around it.
    platform::Color rim{0, 0};
    /// What shows that the keyboard is here; it has to stand out from what the button lies on.
    platform::Color ring = AppColors::accent;

    bool operator==(const Look&) const = default;
  };

  SymbolButton(const Look& look, int size, QWidget* parent);

  void setLook(const Look& look);
  /// The tooltip, which is the accessible name too.
  void setHelp(const QString& text);

  [[nodiscard]] QSize sizeHint() const override { return size(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// A button that is wider than high has round ends.
  [[nodiscard]] double cornerRadius(bool isRound) const;

  Look look;
};

}  // namespace sorrel
