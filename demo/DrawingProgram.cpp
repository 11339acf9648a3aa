#include "demo/DrawingProgram.h"

#include "tests/support/ScratchHome.h"

#include <QGuiApplication>

#include <cstdio>
#include <exception>

namespace demo {

int runDrawingProgram(int argc, char** argv, void (*draw)(const QString&)) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 64;
  }
  // The scenery is drawn with the desktop's own fonts.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("FONTCONFIG_FILE", E2E_DATA_DIR "/fonts.conf");
  const testing_support::ScratchHome home;
  const QGuiApplication application(argc, argv);
  try {
    draw(QString::fromLocal8Bit(argv[1]));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", argv[0], failure.what());
    return 1;
  }
  return 0;
}

}  // namespace demo
