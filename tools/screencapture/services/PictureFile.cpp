#include "tools/screencapture/services/PictureFile.h"

#include <charconv>
#include <fcntl.h>
#include <png.h>
#include <sys/stat.h>
#include <unistd.h>

namespace screencapture {

std::optional<std::string> pathOfUri(std::string_view uri) {
  constexpr std::string_view scheme = "file://";
  if (!uri.starts_with(scheme))
    return std::nullopt;
  uri.remove_prefix(scheme.size());
  if (!uri.starts_with('/'))
    return std::nullopt;  // on another machine
  std::string path;
  for (std::size_t i = 0; i < uri.size(); ++i) {
    if (uri[i] != '%') {
      path += uri[i];
      continue;
    }
    int byte = 0;
    const char* const digits = uri.data() + i + 1;
    if (i + 2 >= uri.size() || std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2 || byte == 0)
      return std::nullopt;
    path += static_cast<char>(byte);
    i += 2;
  }
  return path;
}

bool addPictureOfFile(const std::string& path, AnswerFile& answer) {
  std::FILE* const file = std::fopen(path.c_str(), "rbe");
  if (!file)
    return false;
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  bool isThere = png_image_begin_read_from_stdio(&image, file) != 0;
  if (isThere) {
    image.format = PNG_FORMAT_BGRA;
    const auto pixels = answer.addPicture({}, static_cast<int>(image.width), static_cast<int>(image.height));
    isThere = !pixels.empty() && png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) != 0;
    png_image_free(&image);
  }
  (void)std::fclose(file);
  if (!isThere)
    answer.clear();
  return isThere;
}

void deleteIfMadeSince(const std::string& path, std::time_t asked) {
  struct stat status {};
  if (lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
      status.st_mtime >= asked)
    (void)unlink(path.c_str());  // where that is forbidden, nothing is to be done about it
}

}  // namespace screencapture
