#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace platform::decoding {

/// From the colours of an embedded ICC profile to sRGB. RGB and grey profiles are known.
class ColorConversion {
 public:
  /// Absent where nothing is to be converted: the profile is sRGB within a level of 255, of another kind of
  /// colour than the pixels, or broken.
  [[nodiscard]] static std::optional<ColorConversion> fromProfile(const QByteArray& profile);

  /// In place, on RGBA with 8 bits a channel, not premultiplied; alpha stays.
  void convert(std::uint8_t* pixels, std::size_t count) const;

 private:
  struct Release {
    void operator()(void* held) const;
  };
  using Transform = std::unique_ptr<void, Release>;

  explicit ColorConversion(Transform made) : transform(std::move(made)) {}
  [[nodiscard]] bool changesAnything() const;

  Transform transform;
};

}  // namespace platform::decoding
