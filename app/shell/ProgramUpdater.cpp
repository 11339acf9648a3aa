#include "app/shell/ProgramUpdater.h"

#include "app/shell/UpdateAlert.h"
#include "platform/base/Locations.h"
#include "platform/base/Log.h"
#include "platform/updater/FeedUpdater.h"

namespace sorrel {

std::unique_ptr<platform::Updater> makeProgramUpdater() {
  const QString file = platform::Locations::ownFile(QStringLiteral("information.json"));
  const auto source = platform::UpdateSource::read(file);
  if (!source) {
    platform::log(QStringLiteral("Sorrel has no updater: %1: %2").arg(file, source.error().reason));
    return nullptr;
  }
  const auto running = platform::Version::parse(QStringLiteral(SORREL_VERSION));
  if (!*source || !running)
    return nullptr;
  const auto alert = std::make_shared<UpdateAlert>(*running);
  return std::make_unique<platform::FeedUpdater>(
      **source, *running, [alert](const platform::UpdateReport& report) { alert->present(report); });
}

}  // namespace sorrel
