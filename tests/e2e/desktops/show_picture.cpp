// Shows a picture in a window of its size, a pixel for each point: show_picture FILE. Without a title bar,
// whose color tells who has the keyboard, the window always looks the same.

#include <QApplication>
#include <QLabel>
#include <QPixmap>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QLabel label;
  label.setWindowFlag(Qt::FramelessWindowHint);
  label.setPixmap(QPixmap(QApplication::arguments().at(1)));
  label.setFixedSize(label.pixmap().size());
  label.show();
  return QApplication::exec();
}
