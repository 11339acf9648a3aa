// Puts a picture and its address on the pasteboard, and runs on: pasteboard_giver FILE.

#include "platform/base/Log.h"
#include "platform/desktop/Pasteboard.h"
#include "tests/support/Files.h"

#include <QGuiApplication>

using namespace platform;

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QString file = QGuiApplication::arguments().at(1);
  Pasteboard::clearContents();
  const bool isGiven = Pasteboard::writeObjects(
      {PasteboardImage{testing_support::contentsOf(file)}, QUrl::fromLocalFile(file)});
  printLine(isGiven ? QStringLiteral("given") : QStringLiteral("not given"));
  return QGuiApplication::exec();
}
