#include "app/shell/SorrelApp.h"
#include "platform/base/FatalMessages.h"

int main(int argc, char** argv) {
  std::optional<platform::FatalMessages> start(std::in_place,
                                               QStringLiteral("Sorrel can't be shown on a display: "));
  sorrel::SorrelApp application(argc, argv);
  start.reset();
  return application.run();
}
