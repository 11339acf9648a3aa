#pragma once

#include <array>
#include <cstdint>

namespace screencapture {

/// What the program that asks the desktop's services leaves in the file that it was given as its output:
/// this, and then the pictures, each a PictureHeader and its pixels, 0xXXRRGGBB, rows without gaps from the
/// top.
struct AnswerHeader {
  enum Kind : std::uint32_t {
    Nothing,   // the user has cancelled, or something failed, which has been said
    Refused,   // the user has once said that we may not see the screen
    Frozen,    // pictures of what is on the screen
    Selected,  // one picture that the user has already selected with the desktop's own interface
    Color,
  };

  Kind kind = Nothing;
  std::uint32_t color = 0;     // 0xRRGGBB
  std::uint32_t pictures = 0;  // how many
  std::uint32_t unused = 0;
};

struct PictureHeader {
  std::array<char, 64> output{};  // whose picture it is, ended by a zero; empty for one of all outputs
  std::int32_t width = 0;
  std::int32_t height = 0;
};

}  // namespace screencapture
