// Reading the bottle, against the least that any program must do for the same answer: read the names, ask for
// each file's date, sort.

#include "app/capture/AppPaths.h"
#include "app/capture/ScreenshotStore.h"
#include "bench/Figures.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct RawEntry {
  uint64_t inode;
  int64_t offset;
  uint16_t length;
  uint8_t type;
  char name[1];
};

struct Dated {
  int64_t nanoseconds;
  size_t nameOffset;
};

size_t bareListing(const char* folder) {
  const int descriptor = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  static std::array<char, 1 << 15> buffer;
  std::string names;
  std::vector<Dated> found;
  for (long got; (got = syscall(SYS_getdents64, descriptor, buffer.data(), buffer.size())) > 0;) {
    for (long at = 0; at < got;) {
      const auto* entry = reinterpret_cast<const RawEntry*>(buffer.data() + at);
      at += entry->length;
      if (entry->name[0] == '.')
        continue;
      struct statx status;
      statx(descriptor, entry->name, AT_SYMLINK_NOFOLLOW, STATX_MTIME, &status);
      found.push_back({status.stx_mtime.tv_sec * 1'000'000'000 + status.stx_mtime.tv_nsec, names.size()});
      names.append(entry->name).push_back('\0');
    }
  }
  close(descriptor);
  std::sort(found.begin(), found.end(),
            [](const Dated& left, const Dated& right) { return left.nanoseconds > right.nanoseconds; });
  return found.size();
}

/// A folder of `count` pictures, in no order, of dates in another.
void fill(const QString& folder, int count) {
  for (int number = 0; number < count; ++number) {
    const QByteArray path =
        QFile::encodeName(QStringLiteral("%1Sorrel 2026-03-14 at 09.26.53 (%2).png").arg(folder).arg(number));
    const int descriptor = open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const timespec times[2] = {{0, UTIME_OMIT}, {1'700'000'000 + (number * 7919L) % count, 0}};
    futimens(descriptor, times);
    close(descriptor);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const testing_support::ScratchHome home;
  const QCoreApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  for (const int count : {1'000, 10'000, 100'000}) {
    const QString folder = home.path(QString::number(count));
    const auto use = [folder] {
      platform::UserDefaults::standard().set(QStringLiteral("storageDirectory"), folder);
      return sorrel::AppPaths::bottleDirectory().toLocalFile();
    };
    fill(use(), count);
    const QByteArray path = QFile::encodeName(folder);
    figures.add(bench::Ratio{"listing " + std::to_string(count) + " files, against getdents+statx+sort",
                             [use] {
                               use();
                               if (sorrel::ScreenshotStore::all().empty())
                                 std::abort();
                             },
                             [path] {
                               if (bareListing(path.constData()) == 0)
                                 std::abort();
                             },
                             1.3});
  }
  return figures.run();
}
