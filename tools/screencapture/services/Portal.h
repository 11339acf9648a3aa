#pragma once

#include "tools/screencapture/services/Bus.h"

#include <cstdint>
#include <optional>
#include <string>

namespace screencapture {

/// The desktop portal's screenshots, for programs that the compositor itself gives nothing.
class Portal {
 public:
  enum class Manner { WithoutAsking, Interactive };
  enum class Outcome { Given, Cancelled, Failed, Silent, Missing };
  template <typename T>
  struct Answer {
    Outcome outcome = Outcome::Missing;
    T value{};
  };

  /// Waits for `patience` at most for each answer; the user may have to think.
  Portal(sd_bus* bus, std::chrono::milliseconds patience);

  /// The URI of a file with the picture: of all outputs, or of what the user has selected where that is how
  /// it is asked.
  [[nodiscard]] Answer<std::string> screenshot(Manner manner);
  /// 0xRRGGBB, by the desktop's own eyedropper.
  [[nodiscard]] Answer<std::uint32_t> color();

  /// What the user has said to screenshots without asking before; nothing where there was no such question.
  [[nodiscard]] std::optional<bool> permission();
  /// Lets it forget that. False where it can't be told.
  bool forgetPermission();

 private:
  template <typename T, typename Append, typename Read>
  Answer<T> request(const char* method, Append append, Read read);

  sd_bus* bus;
  std::chrono::milliseconds patience;
  int requests = 0;
};

}  // namespace screencapture
