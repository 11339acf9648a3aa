#pragma once

/// The companion clipboard manager. Both are constants of the build: whoever ships it under another name, or
/// has its page elsewhere, changes them here.
namespace sorrel::Quillon {

/// Its name on the session bus and, with ".desktop", that of its desktop file.
inline constexpr char identifier[] = "org.sorrel.Quillon";
inline constexpr char page[] = "https://quillon.example/";

}  // namespace sorrel::Quillon
