#pragma once

#include <optional>
#include <span>
#include <string>

namespace screencapture {

enum class Wish { PictureInFile, PictureOnClipboard, Color };

/// What the command line asks for: `-i PATH`, `-i -c` or `--pick-color`, and nothing else.
struct Arguments {
  Wish wish = Wish::PictureInFile;
  std::string path;  // of the file

  bool operator==(const Arguments&) const = default;
};

inline constexpr char usage[] =
    "usage: screencapture -i (PATH | -c)\n"
    "       screencapture --pick-color";
inline constexpr int wrongUseStatus = 64;  // EX_USAGE of sysexits.h

/// `words` without the program's name; empty where they are wrong use.
[[nodiscard]] std::optional<Arguments> parseArguments(std::span<const char* const> words);
/// The same of what main() is given.
[[nodiscard]] std::optional<Arguments> parseCommandLine(int count, const char* const* words);

}  // namespace screencapture
