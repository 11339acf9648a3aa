// Puts a picture and its address on the pasteboard, and hands over when it is told to end:
// pasteboard_giver FILE.

#include "platform/base/Log.h"
#include "platform/base/TerminationSignals.h"
#include "platform/desktop/Pasteboard.h"

#include <QFile>
#include <QGuiApplication>

using namespace platform;

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  handleTerminationSignals(&QGuiApplication::quit);
  QFile file(QGuiApplication::arguments().at(1));
  if (!file.open(QIODevice::ReadOnly))
    return 1;
  Pasteboard::clearContents();
  Pasteboard::writeObjects(
      {PasteboardImage{[&] { return file.readAll(); }}, QUrl::fromLocalFile(file.fileName())});
  printLine(QStringLiteral("given"));
  const int status = QGuiApplication::exec();
  Pasteboard::handOver();
  return status;
}
