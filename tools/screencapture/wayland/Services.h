#pragma once

#include "tools/screencapture/services/Answer.h"
#include "tools/screencapture/wayland/Display.h"

#include <span>

namespace screencapture::wayland {

/// What the desktop's services gave.
struct ServicesAnswer {
  AnswerHeader::Kind kind = AnswerHeader::Nothing;
  std::uint32_t color = 0;
  std::vector<Picture> pictures;  // Frozen: one for each output, in their order; Selected: one
};

enum class ServicesQuestion { Picture, Color };

/// Asks the desktop's services by a program of its own; answers the compositor meanwhile. What fails is said
/// on standard error.
[[nodiscard]] ServicesAnswer askServices(Display& display, ServicesQuestion question);

/// Shows a notification; what comes of it, nobody can tell.
void notify(const std::string& title, const std::string& text);

/// The path of that program, which a user may run, too.
[[nodiscard]] std::string servicesProgram();

/// Cuts the outputs' pictures out of one of all outputs, in which all have the same scale.
[[nodiscard]] std::vector<Picture> cutOutputs(const Picture& all, std::span<const Rectangle> logical);

}  // namespace screencapture::wayland
