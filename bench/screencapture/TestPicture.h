#pragma once

#include <cstdint>
#include <vector>

/// A picture that compresses like a desktop: a softly coloured ground with a photograph's grain, and large
/// windows with rows of small dark marks on light and light marks on dark, as text has. 0x00RRGGBB, rows from
/// the top; the same at every call.
std::vector<std::uint32_t> desktopPicture(int width, int height);
