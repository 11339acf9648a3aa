#pragma once

#include <optional>
#include <span>
#include <string>

namespace screencapture {

enum class Destination { File, Clipboard };

/// What the command line asks for: `-i PATH` or `-i -c`, and nothing else.
struct Arguments {
  Destination destination = Destination::File;
  std::string path;  // empty for the clipboard

  bool operator==(const Arguments&) const = default;
};

inline constexpr char usage[] = "usage: screencapture -i (PATH | -c)";
inline constexpr int wrongUseStatus = 64;  // EX_USAGE of sysexits.h

/// `words` without the program's name; empty where they are wrong use.
[[nodiscard]] std::optional<Arguments> parseArguments(std::span<const char* const> words);

}  // namespace screencapture
