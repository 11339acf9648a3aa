#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace screencapture {

/// How a file is kept out of sight until it is complete.
enum class Unfinished {
  Nameless,  // it has no name at all, so that nothing is left of it if the program is killed
  Hidden,    // under another, hidden name, where the file system can't do the former
};

/// Writes a file that appears under its path only when it is complete; whatever ends the program before
/// leaves the path as it was. A new file gets the permissions that the umask allows. An existing one is
/// replaced and its permissions are kept, unless it may not be written or is no plain file, which is an
/// error; a symbolic link stays and its target is replaced.
///
/// Returns 0 or the error's number (errno).
[[nodiscard]] int writeFile(const std::string& path, std::span<const std::uint8_t> contents,
                            Unfinished unfinished = Unfinished::Nameless);

}  // namespace screencapture
