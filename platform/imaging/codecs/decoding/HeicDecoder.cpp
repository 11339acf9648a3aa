#include "platform/imaging/codecs/decoding/Decoders.h"

#include <QLibrary>

#include <algorithm>
#include <cstring>
#include <libheif/heif.h>
#include <limits>
#include <memory>

namespace platform::decoding {
namespace {

/// The functions of libheif, which is loaded for the first file that needs it: it brings several video
/// decoders along, and a program that starts with the session should not wait for those.
class Heif {
 public:
  /// Null where the library isn't there.
  static const Heif* shared() {
    static const Heif heif;
    return heif.isLoaded ? &heif : nullptr;
  }

 private:
  QLibrary library{QStringLiteral("heif"), 1};
  bool isLoaded = true;

  template <typename Function>
  Function* find(const char* name) {
    auto* const function = reinterpret_cast<Function*>(library.resolve(name));
    isLoaded = isLoaded && function;
    return function;
  }

 public:
#define SORREL_HEIF(name) decltype(heif_##name)* const name = find<decltype(heif_##name)>("heif_" #name)
  SORREL_HEIF(context_alloc);
  SORREL_HEIF(context_free);
  SORREL_HEIF(context_set_maximum_image_size_limit);
  SORREL_HEIF(context_read_from_memory_without_copy);
  SORREL_HEIF(context_get_primary_image_handle);
  SORREL_HEIF(image_handle_release);
  SORREL_HEIF(image_handle_get_width);
  SORREL_HEIF(image_handle_get_height);
  SORREL_HEIF(image_handle_has_alpha_channel);
  SORREL_HEIF(image_handle_get_raw_color_profile_size);
  SORREL_HEIF(image_handle_get_raw_color_profile);
  SORREL_HEIF(decode_image);
  SORREL_HEIF(image_get_width);
  SORREL_HEIF(image_get_height);
  SORREL_HEIF(image_get_plane_readonly);
  SORREL_HEIF(image_release);
#undef SORREL_HEIF
};

using OwnedHandle = std::unique_ptr<heif_image_handle, void (*)(const heif_image_handle*)>;
using OwnedImage = std::unique_ptr<heif_image, void (*)(const heif_image*)>;

bool succeeded(const heif_error& error) {
  return error.code == heif_error_Ok;
}

OwnedHandle primaryPicture(const Heif& heif, heif_context* context) {
  heif_image_handle* handle = nullptr;
  const bool isFound = succeeded(heif.context_get_primary_image_handle(context, &handle));
  return {isFound ? handle : nullptr, heif.image_handle_release};
}

OwnedImage decode(const Heif& heif, const heif_image_handle* handle) {
  heif_image* image = nullptr;
  const bool isDecoded = succeeded(
      heif.decode_image(handle, &image, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr));
  return {isDecoded ? image : nullptr, heif.image_release};
}

QByteArray profileOf(const Heif& heif, const heif_image_handle* handle) {
  QByteArray profile(static_cast<qsizetype>(heif.image_handle_get_raw_color_profile_size(handle)), '\0');
  if (!profile.isEmpty() && !succeeded(heif.image_handle_get_raw_color_profile(handle, profile.data())))
    profile.clear();
  return profile;
}

}  // namespace

bool decodeHeic(Bytes file, RowSink& sink) {
  const Heif* const heif = Heif::shared();
  if (!heif)
    return false;
  const std::unique_ptr<heif_context, void (*)(heif_context*)> context(heif->context_alloc(),
                                                                       heif->context_free);
  if (!context)
    return false;
  // The library bounds each side alone; no side is longer than all pixels in one row.
  heif->context_set_maximum_image_size_limit(
      context.get(),
      static_cast<int>(std::min<std::int64_t>(sink.bounds().pixels, std::numeric_limits<int>::max())));
  if (!succeeded(
          heif->context_read_from_memory_without_copy(context.get(), file.data(), file.size(), nullptr)))
    return false;
  const OwnedHandle handle = primaryPicture(*heif, context.get());
  if (!handle)
    return false;
  const int width = heif->image_handle_get_width(handle.get());
  const int height = heif->image_handle_get_height(handle.get());
  const Alpha alpha = heif->image_handle_has_alpha_channel(handle.get()) != 0 ? Alpha::Straight : Alpha::None;
  // The library has turned the picture upright by itself.
  if (!sink.begin({width, height, alpha, 1, profileOf(*heif, handle.get())}))
    return false;
  const OwnedImage image = decode(*heif, handle.get());
  int stride = 0;
  const std::uint8_t* pixels =
      image ? heif->image_get_plane_readonly(image.get(), heif_channel_interleaved, &stride) : nullptr;
  if (!pixels || heif->image_get_width(image.get(), heif_channel_interleaved) != width ||
      heif->image_get_height(image.get(), heif_channel_interleaved) != height)
    return false;
  for (int y = 0; y < height; ++y) {
    std::memcpy(sink.row(), pixels + std::ptrdiff_t{y} * stride, 4 * static_cast<std::size_t>(width));
    sink.finishRow();
  }
  return true;
}

}  // namespace platform::decoding
