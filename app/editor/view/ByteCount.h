#pragma once

#include <QString>

namespace sorrel {

/// A file's size as file managers show it, in the interface language: in units of a thousand, bytes and
/// kilobytes whole, megabytes with at most one decimal and larger units with at most two. Here and not in
/// platform/, because the words are the program's own.
[[nodiscard]] QString fileSizeText(qint64 byteCount);

}  // namespace sorrel
