#include "app/editor/view/EditorWindowController.h"

#include "app/capture/Notifications.h"
#include "app/editor/model/EditorModel.h"
#include "app/editor/view/EditorView.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/FilePath.h"
#include "platform/base/Log.h"
#include "platform/base/MainQueue.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Image.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/WindowFront.h"
#include "platform/system/FreeMemory.h"

#include <QShortcut>

namespace sorrel {
namespace {

constexpr QSize minimumContentSize(316, 256);

/// About the middle of what the desktop's bars leave of the screen that the user works on.
QRect frameFor(const QSizeF& displaySize) {
  const std::vector<platform::Screen> screens = platform::screens();
  const std::optional<QRectF> visible =
      screens.empty() ? std::nullopt : std::optional(screens.front().visibleFrame);
  const QSizeF wanted =
      editorContentSize(displaySize, visible ? std::optional(visible->size()) : std::nullopt);
  QRect frame({}, wanted.toSize().expandedTo(minimumContentSize));
  frame.moveCenter(visible.value_or(QRectF()).center().toPoint());
  return frame;
}

std::unique_ptr<EditorView> windowFor(std::unique_ptr<EditorModel> model, std::function<void()> onClose) {
  auto window = std::make_unique<EditorView>(std::move(model), std::move(onClose));
  window->setWindowTitle(localized(QStringLiteral("editor.windowTitle")));
  window->setWindowRole(QStringLiteral("editor"));
  if (const auto image = platform::Image::named(QStringLiteral("sorrel")))
    window->setWindowIcon(image->icon);
  QObject::connect(new QShortcut(Qt::CTRL | Qt::Key_Comma, window.get()), &QShortcut::activated, [] {
    platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(Notifications::openSettings));
  });
  window->setMinimumSize(minimumContentSize);
  // The window has the keyboard itself, so that it is in none of its controls.
  window->setFocus();
  return window;
}

}  // namespace

QSizeF editorContentSize(const QSizeF& displaySize, const std::optional<QSizeF>& visibleFrame) {
  constexpr QSizeF besidePicture(56 + 48, 56 + 48);
  constexpr QSizeF limitWithoutScreen(1296, 810);
  const QSizeF limit = visibleFrame ? *visibleFrame * 0.9 : limitWithoutScreen;
  return (displaySize + besidePicture).boundedTo(limit);
}

EditorWindowController::EditorWindowController() = default;

EditorWindowController::~EditorWindowController() {
  delete shown.release();  // no event loop is left that would do it later
}

void EditorWindowController::DeleteLater::operator()(QWidget* window) const {
  // At that moment the toolkit itself still holds the window's pixels.
  QObject::connect(window, &QObject::destroyed,
                   [] { platform::MainQueue::main().async(&platform::giveBackFreeMemory); });
  window->deleteLater();
}

bool EditorWindowController::open(const QUrl& url) {
  std::unique_ptr<EditorModel> opening = EditorModel::beginOpening(url);
  EditorModel* const model = opening.get();
  // Made while the picture is being decoded.
  std::unique_ptr<EditorView> window = opening ? windowFor(std::move(opening), [this] { close(); }) : nullptr;
  if (!window || !model->awaitPicture()) {
    namespace FilePath = platform::FilePath;
    platform::log(QStringLiteral("Sorrel editor: couldn't load ") +
                  FilePath::text(FilePath::name(FilePath::of(url))));
    return false;
  }
  close();
  window->setGeometry(frameFor(model->displaySize));
  shown.reset(window.release());
  platform::setDarkFrame(*shown);
  platform::bringToFront(*shown);
  return true;
}

void EditorWindowController::close() {
  if (shown)
    shown->hide();
  shown.reset();
}

}  // namespace sorrel
