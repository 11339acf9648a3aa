#include "tools/screencapture/services/AnswerFile.h"

#include "platform/system/Descriptor.h"

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

namespace screencapture {

namespace {

constexpr int longestSide = 1 << 16;
constexpr std::size_t mostPixels = std::size_t{1} << 28;

template <typename T>
std::span<const std::uint8_t> bytesOf(const T& value) {
  return {reinterpret_cast<const std::uint8_t*>(&value), sizeof value};
}

}  // namespace

AnswerFile::~AnswerFile() {
  unmap();
}

void AnswerFile::unmap() {
  if (!mapped.empty())
    munmap(mapped.data(), mapped.size());
  mapped = {};
}

std::span<std::uint32_t> AnswerFile::addPicture(std::string_view output, int width, int height) {
  unmap();
  if (width <= 0 || height <= 0 || width > longestSide || height > longestSide)
    return {};
  const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  PictureHeader header{{}, width, height};
  if (pixels > mostPixels || output.size() >= header.output.size())
    return {};
  std::ranges::copy(output, header.output.begin());
  const std::size_t begin = size + sizeof header, end = begin + pixels * sizeof(std::uint32_t);
  if (ftruncate(file, static_cast<off_t>(end)) != 0 ||
      platform::writeAll(file, bytesOf(header), static_cast<off_t>(size)) != 0)
    return {};
  // A mapping begins at a page, so this one begins with the file.
  void* const memory = mmap(nullptr, end, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  if (memory == MAP_FAILED)
    return {};
  mapped = {static_cast<std::uint8_t*>(memory), end};
  size = end;
  ++pictures;
  return {reinterpret_cast<std::uint32_t*>(mapped.data() + begin), pixels};
}

void AnswerFile::clear() {
  unmap();
  size = sizeof(AnswerHeader);
  pictures = 0;
}

bool AnswerFile::finish(AnswerHeader::Kind kind, std::uint32_t color) {
  return platform::writeAll(file, bytesOf(AnswerHeader{kind, color, pictures}), 0) == 0;
}

}  // namespace screencapture
