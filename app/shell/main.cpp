#include "app/shell/CommandLine.h"
#include "app/shell/SorrelApp.h"
#include "platform/base/FatalMessages.h"
#include "platform/base/Log.h"
#include "platform/desktop/ActivationToken.h"
#include "platform/system/FreeMemory.h"
#include "platform/wayland/SoftwareWindows.h"

namespace {

using platform::SingleInstance;
using sorrel::CommandLine;

constexpr int wrongUse = 64;  // EX_USAGE of sysexits.h

/// Without a display, and without the toolkit's part that would look for one.
int tell(int argc, char** argv, const CommandLine& commandLine) {
  const QCoreApplication application(argc, argv);
  const platform::Environment environment;
  switch (commandLine.kind) {
    case CommandLine::Kind::Version:
      platform::printLine(QStringLiteral("Sorrel " SORREL_VERSION));
      return 0;
    case CommandLine::Kind::Help:
      platform::printLine(sorrel::helpText().trimmed());
      return 0;
    default:
      platform::log(QStringLiteral("sorrel: %1; see sorrel --help").arg(commandLine.fault));
      return wrongUse;
  }
}

}  // namespace

int main(int argc, char** argv) {
  platform::shareOneHeap();
  QStringList arguments;
  for (int i = 1; i < argc; ++i)
    arguments << QString::fromLocal8Bit(argv[i]);
  const CommandLine commandLine = sorrel::parseCommandLine(arguments);
  if (commandLine.kind != CommandLine::Kind::Start && commandLine.kind != CommandLine::Kind::Act)
    return tell(argc, argv, commandLine);

  const std::optional<sorrel::Action> action = commandLine.action;
  const platform::LaunchRequest request{action ? QByteArray(sorrel::nameOf(*action)) : QByteArray(),
                                        platform::ActivationToken::fromEnvironment()};
  SingleInstance instance(request);
  if (instance.standing() == SingleInstance::Standing::Unanswered) {
    platform::log(QStringLiteral("sorrel: the Sorrel that is running doesn't answer"));
    return 1;
  }
  if (instance.standing() == SingleInstance::Standing::Delivered || action == sorrel::Action::Quit)
    return 0;

  std::optional<platform::SoftwareWindows> windows(std::in_place);
  std::optional<platform::FatalMessages> start(std::in_place,
                                               QStringLiteral("Sorrel can't be shown on a display: "));
  sorrel::SorrelApp application(argc, argv, instance);
  start.reset();
  windows.reset();
  return application.run(request);
}
