#include "tests/support/PrivateBus.h"

#include "tests/support/Waiting.h"

using namespace Qt::StringLiterals;

namespace testing_support {

PrivateBus::PrivateBus(const QProcessEnvironment& environment)
    : daemon({u"dbus-daemon"_s, u"--nofork"_s, u"--print-address"_s, u"--config-file"_s,
              QStringLiteral(SORREL_BUS_CONFIGURATION)},
             environment) {
  until("the bus tells its address", [this] { return daemon.output().endsWith('\n'); });
  name = QString::fromLatin1(daemon.output().trimmed());
}

void OwnSessionBus::SetUp() {
  bus = std::make_unique<PrivateBus>();
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toLatin1());
}

}  // namespace testing_support
