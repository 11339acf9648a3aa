// Puts a picture and its address on the pasteboard, or a text, and runs on: pasteboard_giver FILE,
// pasteboard_giver --text TEXT.

#include "platform/base/Log.h"
#include "platform/desktop/Pasteboard.h"
#include "tests/support/Files.h"

#include <QGuiApplication>

using namespace platform;

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QString file = QGuiApplication::arguments().at(1);
  std::vector<PasteboardObject> objects;
  if (file == QStringLiteral("--text"))
    objects = {QGuiApplication::arguments().at(2)};
  else
    objects = {PasteboardImage{testing_support::contentsOf(file)}, QUrl::fromLocalFile(file)};
  Pasteboard::clearContents();
  const bool isGiven = Pasteboard::writeObjects(objects);
  printLine(isGiven ? QStringLiteral("given") : QStringLiteral("not given"));
  return QGuiApplication::exec();
}
