#include "tools/screencapture/wayland/Runs.h"

#include "tools/screencapture/selection/ColorPickUse.h"
#include "tools/screencapture/selection/SelectionUse.h"
#include "tools/screencapture/selection/Sentences.h"
#include "tools/screencapture/wayland/PlasmaWindows.h"
#include "tools/screencapture/wayland/Services.h"
#include "tools/screencapture/wayland/Session.h"
#include "tools/screencapture/wayland/SwayWindows.h"
#include "tools/screencapture/wayland/Turn.h"

#include <cstdio>

namespace screencapture::wayland {

namespace {

/// The frozen screen, or what the desktop's services gave instead.
struct Beginning {
  std::optional<platform::Descriptor> turn;
  std::unique_ptr<Stage> stage;
  ServicesAnswer answer;
};

Beginning begin(Display& display, ServicesQuestion question, const std::optional<Color>& veil) {
  Beginning beginning{takeTurn(), nullptr, {}};
  if (!beginning.turn) {
    complain(display, "another selection is open");
    return beginning;
  }
  beginning.stage = Stage::copy(display, veil);
  if (beginning.stage || display.isLost())
    return beginning;
  beginning.answer = askServices(display, question);
  if (beginning.answer.kind == AnswerHeader::Frozen)
    beginning.stage = Stage::of(display, std::move(beginning.answer.pictures), veil);
  return beginning;
}

void tellRefusal(Language language) {
  std::fputs("screencapture: the desktop doesn't allow screenshots\n", stderr);
  std::string advice = sentence(Sentence::RefusalAdvice, language);
  if (const std::size_t gap = advice.find("%1"); gap != std::string::npos)
    advice.replace(gap, 2, servicesProgram() + " ask-again");
  notify(sentence(Sentence::RefusalTitle, language), advice);
}

/// Gives the screen back. First the turn: who sees the screen as it was may begin anew.
void end(Beginning& beginning) {
  beginning.turn.reset();
  beginning.stage->clear();
}

/// True where the gestures have taken something. Where they were cut short, that is said.
bool hasTaken(const Stage& stage, const Gestures& gestures) {
  if (gestures.outcome() == Outcome::Open)
    complain(stage.display, "the compositor took the selection away");
  return gestures.outcome() == Outcome::Taken;
}

}  // namespace

std::optional<platform::PngFile> captureInteractively(Display& display, Language language) {
  // Asked at the moment at which the screen is frozen.
  SwayWindows swayWindows;
  PlasmaWindows plasmaWindows(display);
  Beginning beginning = begin(display, ServicesQuestion::Picture, veil);
  if (beginning.answer.kind == AnswerHeader::Refused)
    tellRefusal(language);
  if (beginning.answer.kind == AnswerHeader::Selected)
    return encode(beginning.answer.pictures.front());
  if (!beginning.stage)
    return std::nullopt;
  Stage& stage = *beginning.stage;
  wl_display_flush(display.connection());
  auto frames = swayWindows.frames();
  if (!frames)
    frames = plasmaWindows.frames(display);
  SelectionUse use(stage, stage.setting(), frames ? std::optional(stage.onScreen(*frames)) : std::nullopt,
                   language);
  perform(stage, use);
  end(beginning);
  const std::optional<Rectangle> part = use.result().selected();
  if (!hasTaken(stage, use.result()) || !part)
    return std::nullopt;
  auto png = stage.frozen().encode(*part);
  if (!png)
    complain(display, "there is not enough memory");
  return png;
}

std::optional<std::uint32_t> pickColor(Display& display) {
  Beginning beginning = begin(display, ServicesQuestion::Color, std::nullopt);
  if (beginning.answer.kind == AnswerHeader::Color)
    return beginning.answer.color;
  if (!beginning.stage)
    return std::nullopt;
  Stage& stage = *beginning.stage;
  ColorPickUse use(stage, stage.setting());
  perform(stage, use);
  end(beginning);
  if (!hasTaken(stage, use.result()))
    return std::nullopt;
  const Point pixel = use.result().pixel();
  return stage.frozen().pixels({pixel.x, pixel.y, 1, 1}).front() & 0xffffff;
}

}  // namespace screencapture::wayland
