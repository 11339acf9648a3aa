// Writes settings until it is killed: settings_writer FILE. Says each number once it is in the file.

#include "platform/base/Log.h"
#include "platform/base/UserDefaults.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  platform::UserDefaults defaults(application.arguments().at(1));
  for (qint64 turn = defaults.integer(QStringLiteral("turn")) + 1;; ++turn) {
    // The file's length changes from turn to turn, so that a torn one would show.
    defaults.set(QStringLiteral("text"),
                 QString(static_cast<qsizetype>(turn * 977 % 20'000), u'x') + QStringLiteral("end"));
    defaults.set(QStringLiteral("turn"), turn);
    platform::printLine(QString::number(turn));
  }
}
