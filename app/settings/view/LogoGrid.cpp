#include "app/settings/view/LogoGrid.h"

#include "app/look/LookColors.h"
#include "app/look/SymbolButton.h"
#include "app/look/TextStyle.h"
#include "platform/base/FilePath.h"
#include "platform/desktop/Symbols.h"

#include <QApplication>
#include <QPainter>
#include <QTextDocument>

#include <algorithm>

namespace sorrel {
namespace {

constexpr int leastCellWidth = 72, cellGap = 10, verticalPadding = 4;
constexpr int tileSide = 64, pictureInset = 4, symbolSide = 24;
constexpr qreal tileRadius = 8;
constexpr platform::Color tileColor{0x0f000000, 0x0fffffff};
constexpr int buttonSize = 18, buttonOut = 5;  // beyond the tile's corner
constexpr TextStyle nameText{10, QFont::Normal, LookColors::secondaryLabel};
constexpr int nameGap = 4, nameHeight = 14;
constexpr int cellHeight = buttonOut + tileSide + nameGap + nameHeight;

}  // namespace

class LogoCell : public QWidget {
 public:
  LogoCell(const QUrl& logo, const std::function<void(const QUrl&)>& onRemove, QWidget* parent)
      : QWidget(parent),
        url(logo),
        name(platform::FilePath::text(platform::FilePath::baseName(platform::FilePath::of(logo)))),
        remove(new SymbolButton(
            {QStringLiteral("xmark.circle.fill"), buttonSize, platform::Color{0x80000000, 0x80000000},
             platform::Color{0xffffffff, 0xffffffff}},
            buttonSize, this)),
        request(ThumbnailLoader::shared().thumbnail(logo, static_cast<int>(tileSide * devicePixelRatioF()),
                                                    [this](const QImage& image) {
                                                      picture = image;
                                                      isLoaded = true;
                                                      update();
                                                    })) {
    setToolTip(Qt::mightBeRichText(name) ? name.toHtmlEscaped() : name);
    connect(remove, &QAbstractButton::clicked, this, [this, onRemove] { onRemove(url); });
  }

  [[nodiscard]] const QUrl& logo() const { return url; }
  void setRemoveHelp(const QString& help) {
    remove->setHelp(help);
    remove->setAccessibleDescription(name);
  }
  void focusButton() { remove->setFocus(); }

 private:
  [[nodiscard]] QRect tile() const { return {(width() - tileSide) / 2, buttonOut, tileSide, tileSide}; }

  void resizeEvent(QResizeEvent*) override {
    remove->move(tile().right() + 1 + buttonOut - buttonSize, tile().top() - buttonOut);
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tileColor.resolved());
    painter.drawRoundedRect(tile(), tileRadius, tileRadius);
    const QRectF inner = QRectF(tile()).adjusted(pictureInset, pictureInset, -pictureInset, -pictureInset);
    if (!picture.isNull()) {
      QRectF place({}, QSizeF(picture.size()).scaled(inner.size(), Qt::KeepAspectRatio));
      place.moveCenter(inner.center());
      painter.drawImage(place, picture);
    } else if (isLoaded) {
      QRectF place(0, 0, symbolSide, symbolSide);
      place.moveCenter(inner.center());
      platform::drawSymbol(painter, place, QStringLiteral("photo"), {nameText.color.resolved()});
    }
    painter.setFont(fontOf(nameText));
    painter.setPen(nameText.color.resolved());
    const QRect line(tile().left(), tile().bottom() + 1 + nameGap, tileSide, nameHeight);
    painter.drawText(line, Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(name, Qt::ElideMiddle, tileSide));
  }

  const QUrl url;
  const QString name;
  SymbolButton* const remove;
  QImage picture;
  bool isLoaded = false;
  const ThumbnailLoader::Request request;
};

LogoGrid::LogoGrid(std::function<void(const QUrl&)> remove, QWidget* parent)
    : QWidget(parent), onRemove(std::move(remove)) {
}

void LogoGrid::setLogos(const QList<QUrl>& logos) {
  const auto focused = std::ranges::find_if(
      cells, [](LogoCell* cell) { return cell->isAncestorOf(QApplication::focusWidget()); });
  const auto focusedIndex = focused - cells.begin();
  const bool hadFocus = focused != cells.end();
  for (LogoCell* const cell : cells)
    cell->deleteLater();  // one of them may be the one that is told about
  cells.clear();
  for (const QUrl& logo : logos) {
    cells.push_back(new LogoCell(logo, onRemove, this));
    cells.back()->setRemoveHelp(removeHelp);
    cells.back()->show();
  }
  place();
  if (hadFocus && !cells.empty())
    cells[std::min<size_t>(static_cast<size_t>(focusedIndex), cells.size() - 1)]->focusButton();
}

void LogoGrid::setRemoveHelp(const QString& text) {
  removeHelp = text;
  for (LogoCell* const cell : cells)
    cell->setRemoveHelp(text);
}

void LogoGrid::resizeEvent(QResizeEvent*) {
  place();
}

void LogoGrid::place() {
  const int columns = std::max(1, (width() + cellGap) / (leastCellWidth + cellGap));
  const int cellWidth = (width() - (columns - 1) * cellGap) / columns;
  int rows = 0;
  for (int i = 0; i < static_cast<int>(cells.size()); ++i) {
    rows = i / columns + 1;
    cells[static_cast<size_t>(i)]->setGeometry(i % columns * (cellWidth + cellGap),
                                               verticalPadding + (rows - 1) * (cellHeight + cellGap),
                                               cellWidth, cellHeight);
  }
  setFixedHeight(2 * verticalPadding + rows * cellHeight + std::max(0, rows - 1) * cellGap);
}

}  // namespace sorrel
