#include "app/capture/CaptureService.h"

#include "app/capture/AppPaths.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/Environment.h"
#include "platform/base/FilePath.h"
#include "platform/base/Locations.h"
#include "platform/base/Log.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Task.h"

#include <QFileInfo>
#include <QLocale>

namespace sorrel {

using platform::MainQueue;

CaptureService& CaptureService::shared() {
  return *platform::Environment::shared<CaptureService>(
      [] { return std::shared_ptr<CaptureService>(new CaptureService); });
}

void CaptureService::interactiveCaptureToFile(Completion completion) {
  const QUrl url = uniqueURL();
  const QByteArray path = platform::FilePath::of(url);
  underWay.insert(path);
  const auto finish = [this, path, completion = std::move(completion)](const std::optional<QUrl>& result) {
    underWay.erase(path);
    completion(result);
  };
  runScreencapture({QStringLiteral("-i"), url.toLocalFile()}, url, finish);
}

void CaptureService::interactiveCaptureToClipboard() {
  runScreencapture({QStringLiteral("-i"), QStringLiteral("-c")}, std::nullopt, [](const auto&) {});
}

QUrl CaptureService::uniqueURL() const {
  namespace FilePath = platform::FilePath;
  const QString base =
      QStringLiteral("Sorrel ") +
      QLocale::c().toString(MainQueue::main().now().toLocalTime(), u"yyyy-MM-dd 'at' HH.mm.ss");
  const QByteArray first = FilePath::of(AppPaths::bottleDirectory()) + base.toLatin1() + ".png";
  return FilePath::url(FilePath::firstFree(
      first, [this](const QByteArray& path) { return FilePath::exists(path) || underWay.contains(path); }));
}

void CaptureService::runScreencapture(const QStringList& arguments, const std::optional<QUrl>& fileURL,
                                      Completion completion) {
  selections = selections + 1;
  const auto finish = [this, completion = std::move(completion)](const std::optional<QUrl>& result) {
    MainQueue::main().async([this, completion, result] {
      selections = selections - 1;
      completion(result);
    });
  };
  const auto onTermination = [fileURL, finish] {
    const bool hasFile = fileURL && QFileInfo::exists(fileURL->toLocalFile());
    finish(hasFile ? fileURL : std::nullopt);
  };
  const QString tool = platform::Locations::systemTool(QStringLiteral("/usr/sbin/screencapture"));
  const platform::Task task{
      .executable = tool, .arguments = arguments, .language = LocalizationManager::shared().localization()};
  if (const auto launched = platform::launch(task, onTermination); !launched) {
    platform::log(QStringLiteral("Sorrel screencapture launch failed: ") + launched.error().reason);
    finish(std::nullopt);
  }
}

}  // namespace sorrel
