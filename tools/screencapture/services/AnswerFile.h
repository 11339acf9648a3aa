#pragma once

#include "tools/screencapture/services/Answer.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace screencapture {

/// The output file, to which the answer is added piece by piece. It must be one that can be mapped.
class AnswerFile {
 public:
  explicit AnswerFile(int opened) : file(opened) {}
  ~AnswerFile();
  AnswerFile(const AnswerFile&) = delete;
  AnswerFile& operator=(const AnswerFile&) = delete;

  /// Room for one more picture, to be filled before the next; empty where it is too large or there is no
  /// memory. `output` is empty for a picture of all outputs.
  [[nodiscard]] std::span<std::uint32_t> addPicture(std::string_view output, int width, int height);
  /// Takes all pictures back.
  void clear();

  /// Completes the file. False where that fails.
  [[nodiscard]] bool finish(AnswerHeader::Kind kind, std::uint32_t color = 0);

 private:
  void unmap();

  int file;
  std::size_t size = sizeof(AnswerHeader);
  std::uint32_t pictures = 0;
  std::span<std::uint8_t> mapped;
};

}  // namespace screencapture
