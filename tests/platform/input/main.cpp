#include "tests/platform/input/X11Fixture.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/XvfbServer.h"

#include <QApplication>

namespace testing_support {

const std::string& privateDisplay() {
  static const XvfbServer server(640, 480);
  return server.display();
}

}  // namespace testing_support

int main(int argc, char** argv) {
  const testing_support::ScratchHome home;
  qputenv("DISPLAY", QByteArray::fromStdString(testing_support::privateDisplay()));
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");  // the user's own bus has no part in this
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
