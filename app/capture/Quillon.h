#pragma once

/// The companion clipboard manager, as this build knows it: whoever ships it under another name, or has a
/// page of its own, says so to CMake.
namespace sorrel::Quillon {

/// Its name on the session bus and, with ".desktop", that of its desktop file.
inline constexpr char identifier[] = SORREL_QUILLON_IDENTIFIER;
/// Its page's address; empty: the page that is installed with this program.
inline constexpr char page[] = SORREL_QUILLON_PAGE;

}  // namespace sorrel::Quillon
