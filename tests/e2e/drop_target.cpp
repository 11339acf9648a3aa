// A window that takes files dropped on it: drop_target X Y. Says "over" when they are held over it, and then
// the address of each one dropped.

#include "platform/base/Log.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

class Target : public QWidget {
 public:
  Target() {
    setWindowTitle(QStringLiteral("Drop here"));
    resize(200, 200);
    setAcceptDrops(true);
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override {
    if (!event->mimeData()->hasUrls())
      return;
    event->acceptProposedAction();
    platform::printLine(QStringLiteral("over"));
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
  target.show();
  return QApplication::exec();
}
