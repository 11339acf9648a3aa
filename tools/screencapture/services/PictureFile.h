#pragma once

#include "tools/screencapture/services/AnswerFile.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace screencapture {

/// The path of a file's URI; empty where it is of another kind.
[[nodiscard]] std::optional<std::string> pathOfUri(std::string_view uri);

/// Adds the PNG picture in a file. False where it can't be read or is no such picture.
[[nodiscard]] bool addPictureOfFile(const std::string& path, AnswerFile& answer);

/// Deletes a file that was made for us since `asked`. One that is older, no plain file or somebody else's
/// stays: then its name was no more than a claim.
void deleteIfMadeSince(const std::string& path, std::time_t asked);

}  // namespace screencapture
