#include "platform/imaging/decoding/Decoders.h"

#include <algorithm>
#include <cstring>
#include <libheif/heif.h>
#include <limits>
#include <memory>

namespace platform::decoding {
namespace {

template <auto release>
struct Release {
  void operator()(auto* object) const { release(object); }
};
using Context = std::unique_ptr<heif_context, Release<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<heif_image_handle_release>>;
using Picture = std::unique_ptr<heif_image, Release<heif_image_release>>;

bool succeeded(const heif_error& error) {
  return error.code == heif_error_Ok;
}

Handle primaryPicture(heif_context* context) {
  heif_image_handle* handle = nullptr;
  return Handle(succeeded(heif_context_get_primary_image_handle(context, &handle)) ? handle : nullptr);
}

Picture decode(const heif_image_handle* handle) {
  heif_image* image = nullptr;
  return Picture(
      succeeded(heif_decode_image(handle, &image, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr))
          ? image
          : nullptr);
}

QByteArray profileOf(const heif_image_handle* handle) {
  QByteArray profile(static_cast<qsizetype>(heif_image_handle_get_raw_color_profile_size(handle)), '\0');
  if (!profile.isEmpty() && !succeeded(heif_image_handle_get_raw_color_profile(handle, profile.data())))
    profile.clear();
  return profile;
}

}  // namespace

bool decodeHeic(Bytes file, RowSink& sink) {
  const Context context(heif_context_alloc());
  if (!context)
    return false;
  // The library bounds each side alone; no side is longer than all pixels in one row.
  heif_context_set_maximum_image_size_limit(
      context.get(),
      static_cast<int>(std::min<std::int64_t>(sink.bounds().pixels, std::numeric_limits<int>::max())));
  if (!succeeded(
          heif_context_read_from_memory_without_copy(context.get(), file.data(), file.size(), nullptr)))
    return false;
  const Handle handle = primaryPicture(context.get());
  if (!handle)
    return false;
  const int width = heif_image_handle_get_width(handle.get());
  const int height = heif_image_handle_get_height(handle.get());
  const Alpha alpha = heif_image_handle_has_alpha_channel(handle.get()) != 0 ? Alpha::Straight : Alpha::None;
  // The library has turned the picture upright by itself.
  if (!sink.begin({width, height, alpha, 1, profileOf(handle.get())}))
    return false;
  const Picture image = decode(handle.get());
  int stride = 0;
  const std::uint8_t* pixels =
      image ? heif_image_get_plane_readonly(image.get(), heif_channel_interleaved, &stride) : nullptr;
  if (!pixels || heif_image_get_width(image.get(), heif_channel_interleaved) != width ||
      heif_image_get_height(image.get(), heif_channel_interleaved) != height)
    return false;
  for (int y = 0; y < height; ++y) {
    std::memcpy(sink.row(), pixels + std::ptrdiff_t{y} * stride, static_cast<std::size_t>(4 * width));
    sink.finishRow();
  }
  return true;
}

}  // namespace platform::decoding
