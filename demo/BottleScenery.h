#pragma once

#include <QImage>

/// What people keep pictures of: other programs' windows, maps, talks, photographs, tall and wide ones. Drawn
/// here, so that it is ours and the same on every machine.
namespace demo::scenery {

/// The kinds take turns, and differ a little from turn to turn.
[[nodiscard]] QImage screenshot(int number);

}  // namespace demo::scenery
