#include "app/capture/ScreenshotStore.h"

#include "app/capture/AppPaths.h"
#include "platform/base/Directory.h"
#include "platform/base/Trash.h"

#include <array>
#include <string_view>

namespace sorrel::ScreenshotStore {
namespace {

constexpr std::array<std::string_view, 6> imageExtensions{"png", "jpg", "jpeg", "heic", "tiff", "gif"};

bool hasImageExtension(std::string_view name) {
  return platform::hasExtension(name, imageExtensions);
}

}  // namespace

std::vector<Screenshot> all() {
  auto entries = platform::newestFirst(AppPaths::bottleDirectory().toLocalFile(), hasImageExtension);
  std::vector<Screenshot> screenshots;
  if (!entries)
    return screenshots;
  screenshots.reserve(entries->size());
  for (auto& entry : *entries)
    screenshots.push_back({std::move(entry.path), entry.modificationDate});
  return screenshots;
}

void moveToTrash(const Screenshot& screenshot) {
  // What can't be moved stays in the list, which is all that a user is to be told.
  [[maybe_unused]] const auto moved = platform::Trash::moveItem(screenshot.path);
}

}  // namespace sorrel::ScreenshotStore
