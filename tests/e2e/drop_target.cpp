// A window that takes files dropped on it: drop_target X Y [PICTURE]. Says "over" when they are held over it
// and the desktop knows that it would take them, and then the address of each one dropped. Shows the picture,
// if there is one, a pixel for each point.

#include "platform/base/Log.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

namespace {

class Target : public QLabel {
 public:
  Target() {
    setWindowTitle(QStringLiteral("Drop here"));
    resize(200, 200);
    setAcceptDrops(true);
  }
  /// Without a title bar, whose color tells who has the keyboard, the window always looks the same.
  void showPicture(const QString& path) {
    setWindowFlag(Qt::FramelessWindowHint);
    setPixmap(QPixmap(path));
    setFixedSize(pixmap().size());
  }

 private:
  static void sayOver() {
    QGuiApplication::sync();
    platform::printLine(QStringLiteral("over"));
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override {
    if (!event->mimeData()->hasUrls())
      return;
    event->acceptProposedAction();
    // The desktop hears of that when this returns: who lets go before it does drops nothing.
    QMetaObject::invokeMethod(this, &Target::sayOver, Qt::QueuedConnection);
  }
  void dropEvent(QDropEvent* event) override {
    event->acceptProposedAction();
    for (const QUrl& url : event->mimeData()->urls())
      platform::printLine(QString::fromLatin1(url.toEncoded()));
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  Target target;
  target.move(arguments.at(1).toInt(), arguments.at(2).toInt());
  if (arguments.size() > 3)
    target.showPicture(arguments.at(3));
  target.show();
  return QApplication::exec();
}
