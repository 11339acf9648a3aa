// The application goes, and then the process, while threads of the shared loader read pictures and another
// loader's thread never comes back. What counts is that this ends, with no complaint from a sanitizer.

#include "app/history/ThumbnailLoader.h"
#include "tests/support/ScratchHome.h"

#include <QCoreApplication>

#include <latch>
#include <vector>

using sorrel::ThumbnailLoader;

int main(int argc, char** argv) {
  const testing_support::ScratchHome home;
  std::vector<ThumbnailLoader::Request> requests;
  static std::latch hangs(2);
  {
    const QCoreApplication application(argc, argv);
    const auto hang = [](const QByteArray&, int) -> std::optional<QImage> {
      hangs.arrive_and_wait();
      std::latch(1).wait();
      return {};
    };
    ThumbnailLoader hanging(hang, 1);
    requests.push_back(hanging.thumbnail(QUrl(QStringLiteral("file:///nowhere")), 320, [](const QImage&) {}));
    hangs.arrive_and_wait();

    QImage picture(1200, 900, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    const QString path = home.path(QStringLiteral("picture.png"));
    if (!picture.save(path))
      return 1;
    for (int maxPixel = 300; maxPixel < 320; ++maxPixel)
      requests.push_back(ThumbnailLoader::shared().thumbnail(
          QUrl::fromLocalFile(path), maxPixel, [](const QImage&) { QCoreApplication::quit(); }));
    QCoreApplication::exec();
  }
  return 0;
}
