#include "platform/desktop/wayland/MenuLayer.h"

#include <QGuiApplication>
#include <QScreen>

namespace platform {

std::unique_ptr<MenuLayer> MenuLayer::at(const QPoint& place) {
  if (!OutputLayer::isOffered())
    return nullptr;
  QScreen* const screen = QGuiApplication::screenAt(place);
  std::unique_ptr<MenuLayer> made(new MenuLayer(screen ? *screen : *QGuiApplication::primaryScreen()));
  made->show();
  return made;
}

MenuLayer::MenuLayer(QScreen& screen)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | OutputLayer::windowFlags()) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_QuitOnClose, false);
  layer.emplace(*this, screen, OutputLayer::Keyboard::Here, OutputLayer::Handlers{[] {}, [this] { hide(); }});
}

MenuLayer::~MenuLayer() = default;

void MenuLayer::setVisible(bool isVisible) {
  if (!isVisible)
    layer.reset();  // before the toolkit ends the window's surface
  QWidget::setVisible(isVisible);
}

}  // namespace platform
