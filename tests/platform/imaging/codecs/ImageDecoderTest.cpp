#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageFormat.h"
#include "platform/imaging/codecs/Thumbnail.h"
#include "tests/platform/imaging/codecs/PictureFiles.h"
#include "tests/support/ScratchHome.h"

#include <QColorSpace>
#include <QImageReader>

#include <algorithm>
#include <gtest/gtest.h>
#include <libheif/heif.h>
#include <map>
#include <zlib.h>

using namespace platform;
using namespace testing_support;

// The encoder that a test makes its files with forgets some of its memory. The program doesn't use it.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
  return "leak:libx265";
}

namespace {

struct Kind {
  const char* format;
  QStringList options;
  SampleKind sample = SampleKind::Opaque;
  int tolerance = 0;
};

QStringList words(const char* text) {
  return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

const std::vector<Kind>& kinds() {
  constexpr auto alpha = SampleKind::HasAlpha;
  static const std::vector<Kind> all{
      {"png24", {}},
      {"png32", {}, alpha, 1},
      {"png32", words("-interlace PNG"), alpha, 1},
      {"png48", words("-depth 16"), SampleKind::Opaque, 1},
      {"png64", words("-depth 16"), alpha, 1},
      {"png8", words("-colors 9")},
      {"png", words("-colorspace gray -define png:color-type=0")},
      {"png", words("-colorspace gray -define png:color-type=4"), alpha, 1},
      {"png", words("-monochrome -interlace PNG")},
      {"jpeg", {}},
      {"jpeg", words("-interlace JPEG -sampling-factor 1x1")},
      {"jpeg", words("-colorspace gray")},
      {"jpeg", words("-colorspace cmyk"), SampleKind::Opaque, 1},
      {"tiff", words("-compress lzw")},
      {"tiff", words("-compress zip -define tiff:tile-geometry=32x16"), alpha, 1},
      {"tiff", words("-compress none -define tiff:alpha=associated"), alpha, 1},
      {"tiff", words("-compress lzw -interlace plane")},
      {"tiff", words("-colorspace gray -compress rle"), alpha, 2},
      {"tiff", words("-depth 16 -compress zip"), SampleKind::Opaque, 1},
      {"tiff", words("-colors 9 -type palette"), SampleKind::Opaque, 1},
      {"tiff", words("-monochrome -compress group4")},
      {"tiff64", words("-endian MSB")},
      {"gif", words("-interlace GIF")},
      {"gif", {}, alpha},
      {"bmp3", {}},
      {"bmp", {}, alpha, 1},
      {"bmp3", words("-colors 9 -compress rle")},
      {"bmp3", words("-monochrome")},
      {"bmp", words("-define bmp:subtype=RGB565"), SampleKind::Opaque, 1},
      {"bmp", words("-define bmp:subtype=RGB555"), SampleKind::Opaque, 1},
      {"webp", words("-quality 70"), SampleKind::Opaque, 0},
      {"webp", words("-define webp:lossless=true"), alpha, 1},
      {"heic", {}, SampleKind::Opaque, 60},  // the other program doesn't smooth colours that it makes larger
  };
  return all;
}

/// Of 61 by 43 pixels; made once.
const QByteArray& fileOf(const Kind& kind) {
  static std::map<const Kind*, QByteArray> files;
  QByteArray& file = files[&kind];
  if (file.isEmpty())
    file = makeFile(sample({61, 43}, kind.sample), kind.options, QString::fromLatin1(kind.format));
  return file;
}

std::string nameOf(const Kind& kind) {
  return std::string(kind.format) + " " + kind.options.join(u' ').toStdString();
}

/// A JPEG file with an EXIF block that tells this orientation, in either byte order.
QByteArray withOrientation(const QByteArray& jpeg, int orientation, bool littleEndian) {
  const auto number = [&](int value, int size) {
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
      bytes.append(static_cast<char>(value >> 8 * (littleEndian ? i : size - 1 - i)));
    return bytes;
  };
  const QByteArray exif = QByteArray("Exif\0\0", 6) + (littleEndian ? "II" : "MM") + number(42, 2) +
                          number(8, 4) + number(1, 2) + number(0x0112, 2) + number(3, 2) + number(1, 4) +
                          number(orientation, 2) + number(0, 2) + number(0, 4);
  const auto length = static_cast<int>(exif.size()) + 2;
  return jpeg.first(2) + "\xff\xe1" + static_cast<char>(length >> 8) + static_cast<char>(length) + exif +
         jpeg.mid(2);
}

QByteArray pngChunk(const QByteArray& type, const QList<quint32>& numbers, QByteArray data = {}) {
  const auto append = [](QByteArray& to, quint32 number) {
    for (int shift = 24; shift >= 0; shift -= 8)
      to.append(static_cast<char>(number >> shift));
  };
  for (const quint32 number : numbers)
    append(data, number);
  QByteArray chunk;
  append(chunk, static_cast<quint32>(data.size()));
  chunk += type + data;
  append(chunk, static_cast<quint32>(crc32(0, reinterpret_cast<const Bytef*>(chunk.constData()) + 4,
                                           static_cast<uInt>(data.size()) + 4)));
  return chunk;
}

/// The other program writes no profiles into this format.
QByteArray makeHeic(const QImage& picture, const QByteArray& profile) {
  heif_image* image = nullptr;
  heif_image_create(picture.width(), picture.height(), heif_colorspace_RGB, heif_chroma_interleaved_RGBA,
                    &image);
  heif_image_add_plane(image, heif_channel_interleaved, picture.width(), picture.height(), 32);
  int stride = 0;
  uint8_t* plane = heif_image_get_plane(image, heif_channel_interleaved, &stride);
  for (int y = 0; y < picture.height(); ++y)
    std::copy_n(picture.constScanLine(y), 4 * picture.width(), plane + ptrdiff_t{y} * stride);
  if (!profile.isEmpty())
    heif_image_set_raw_color_profile(image, "prof", profile.constData(), static_cast<size_t>(profile.size()));
  heif_context* context = heif_context_alloc();
  heif_encoder* encoder = nullptr;
  heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder);
  heif_context_encode_image(context, image, encoder, nullptr, nullptr);
  QByteArray file;
  heif_writer writer{1, [](heif_context*, const void* data, size_t size, void* to) {
                       static_cast<QByteArray*>(to)->append(static_cast<const char*>(data),
                                                            static_cast<qsizetype>(size));
                       return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                     }};
  heif_context_write(context, &writer, &file);
  heif_encoder_release(encoder);
  heif_context_free(context);
  heif_image_release(image);
  return file;
}

}  // namespace

TEST(ImageDecoder, seesWhatAnotherProgramSeesInEveryKindOfFile) {
  for (const Kind& kind : kinds()) {
    const QByteArray file = fileOf(kind);
    const auto picture = ImageDecoder::decode(file);
    ASSERT_TRUE(picture) << nameOf(kind);
    EXPECT_EQ(picture->format(), QImage::Format_RGBA8888_Premultiplied);
    EXPECT_LE(largestDifference(*picture, readByOther(file, QString::fromLatin1(kind.format))),
              kind.tolerance)
        << nameOf(kind);
  }
}

TEST(ImageDecoder, turnsPicturesUpright) {
  const QImage upright = sample({48, 32}, SampleKind::Opaque);
  const QByteArray jpeg = makeFile(upright, {}, QStringLiteral("jpeg"));
  const QStringList turn{QStringLiteral("-auto-orient")};
  for (int orientation = 0; orientation <= 9; ++orientation) {
    const QByteArray file = withOrientation(jpeg, orientation, orientation % 2 == 0);
    const auto picture = ImageDecoder::decode(file);
    ASSERT_TRUE(picture);
    EXPECT_EQ(largestDifference(*picture, readByOther(file, QStringLiteral("jpeg"), turn)), 0) << orientation;
    const auto thumbnail = Thumbnail::decode(file, 12);
    ASSERT_TRUE(thumbnail);
    EXPECT_EQ(thumbnail->size(), orientation >= 5 && orientation <= 8 ? QSize(8, 12) : QSize(12, 8));
  }
  for (const char* orientation :
       {"TopRight", "BottomRight", "BottomLeft", "LeftTop", "RightTop", "LeftBottom"}) {
    const QByteArray file = makeFile(upright, {QStringLiteral("-orient"), QString::fromLatin1(orientation)},
                                     QStringLiteral("tiff"));
    const auto picture = ImageDecoder::decode(file);
    ASSERT_TRUE(picture);
    EXPECT_EQ(largestDifference(*picture, readByOther(file, QStringLiteral("tiff"), turn)), 0) << orientation;
  }
}

TEST(ImageDecoder, convertsEmbeddedProfilesToSrgb) {
  const ScratchHome home;
  for (const auto space : {QColorSpace::DisplayP3, QColorSpace::AdobeRgb, QColorSpace::SRgb}) {
    const QString profile = home.write(QStringLiteral("profile.icc"), QColorSpace(space).iccProfile());
    for (const char* format : {"png", "jpeg", "tiff", "webp", "heic"}) {
      const bool hasAlpha = QByteArray(format) == "png" || QByteArray(format) == "tiff";
      const QImage picture = sample({61, 43}, hasAlpha ? SampleKind::HasAlpha : SampleKind::Opaque);
      const QString name = QString::fromLatin1(format);
      const bool isHeic = name == QStringLiteral("heic");
      const auto plain = ImageDecoder::decode(isHeic ? makeHeic(picture, {}) : makeFile(picture, {}, name));
      const QByteArray tagged = isHeic ? makeHeic(picture, QColorSpace(space).iccProfile())
                                       : makeFile(picture, {QStringLiteral("-profile"), profile}, name);
      const auto converted = ImageDecoder::decode(tagged);
      ASSERT_TRUE(plain && converted);
      QImage expected = plain->convertToFormat(QImage::Format_RGBA64);
      expected.setColorSpace(space);
      expected.convertToColorSpace(QColorSpace::SRgb);
      expected.convertTo(QImage::Format_RGBA8888_Premultiplied);
      EXPECT_LE(largestDifference(*converted, expected), hasAlpha ? 4 : 2) << format << ' ' << space;
    }
  }
}

TEST(ImageDecoder, givesTheWholePictureOrNoneOfAFileCutShort) {
  for (const Kind& kind : kinds()) {
    const QByteArray file = fileOf(kind);
    const auto whole = ImageDecoder::decode(file);
    ASSERT_TRUE(whole) << nameOf(kind);
    int refused = 0;
    for (qsizetype length = 0; length < file.size();) {
      const auto picture = ImageDecoder::decode(file.first(length));
      EXPECT_TRUE(!picture || *picture == *whole)
          << nameOf(kind) << " cut at " << length << " of " << file.size();
      refused += picture ? 0 : 1;
      const bool nearAnEnd = length < 300 || file.size() - length < 300;
      length += nearAnEnd ? 7 : 250;
    }
    EXPECT_GT(refused, 20) << nameOf(kind);
  }
}

TEST(ImageDecoder, showsPicturesThatLackNoPixel) {
  const QStringList plain, inScans = words("-interlace JPEG");
  for (const auto& [format, options, tail] :
       {std::tuple("jpeg", plain, 2), std::tuple("jpeg", inScans, 2), std::tuple("png24", plain, 12),
        std::tuple("png24", plain, 5)}) {
    const QByteArray file =
        makeFile(sample({61, 43}, SampleKind::Opaque), options, QString::fromLatin1(format));
    const auto whole = ImageDecoder::decode(file);
    ASSERT_TRUE(whole);
    EXPECT_EQ(ImageDecoder::decode(file.chopped(tail)), whole) << format << " without " << tail;
    EXPECT_FALSE(ImageDecoder::decode(file.first(file.size() / 2))) << format;
    if (options == inScans) {
      EXPECT_FALSE(ImageDecoder::decode(file.first(file.lastIndexOf("\xff\xda")))) << "without a scan";
    }
  }
}

TEST(ImageDecoder, readsBitmapsFromTheTopDownToo) {
  QByteArray file = makeFile(sample({61, 43}, SampleKind::Opaque), {}, QStringLiteral("bmp3"));
  const auto bottomUp = ImageDecoder::decode(file);
  file.replace(22, 4, QByteArray("\xd5\xff\xff\xff", 4));  // a height of -43
  const auto topDown = ImageDecoder::decode(file);
  ASSERT_TRUE(bottomUp && topDown);
  EXPECT_EQ(*topDown, bottomUp->mirrored());
  EXPECT_EQ(QImageReader::allocationLimit(), 128);  // the toolkit's own for the whole program, left alone
}

TEST(ImageDecoder, heedsTheGammaAndThePrimariesOfPng) {
  const QByteArray plain =
      makeFile(sample({61, 43}, SampleKind::Opaque), words("-strip"), QStringLiteral("png24"));
  const auto untouched = ImageDecoder::decode(plain);
  const QList<quint32> adobeRgb{31270, 32900, 64000, 33000, 21000, 71000, 15000, 6000};
  for (const auto& [gamma, primaries] : std::initializer_list<std::pair<quint32, QList<quint32>>>{
           {100000, {}}, {55556, {}}, {30000, {}}, {45455, {}}, {45455, adobeRgb}, {0, {}}}) {
    QByteArray file = plain;
    if (!primaries.isEmpty())
      file.insert(33, pngChunk("cHRM", primaries));
    file.insert(33, pngChunk("gAMA", {gamma}));
    const auto picture = ImageDecoder::decode(file);
    ASSERT_TRUE(picture && untouched);
    const bool isUsual = gamma == 0 || (gamma == 45455 && primaries.isEmpty());
    QImage expected = QImage::fromData(file);
    expected.convertToColorSpace(QColorSpace::SRgb);
    EXPECT_LE(
        largestDifference(
            *picture, isUsual ? *untouched : expected.convertToFormat(QImage::Format_RGBA8888_Premultiplied)),
        isUsual ? 0 : 3)
        << gamma << " with " << primaries.size();
    EXPECT_EQ(*picture == *untouched, isUsual);
    QByteArray saysSrgb = file;
    saysSrgb.insert(33, pngChunk("sRGB", {}, QByteArray(1, '\0')));
    EXPECT_EQ(ImageDecoder::decode(saysSrgb), untouched);
  }
}

TEST(ImageDecoder, keepsToItsBounds) {
  for (const Kind& kind : kinds()) {
    const QByteArray file = fileOf(kind);
    EXPECT_TRUE(ImageDecoder::decode(file, {61 * 43, 1 << 20})) << nameOf(kind);
    EXPECT_FALSE(ImageDecoder::decode(file, {61 * 43 - 1, 1 << 20})) << nameOf(kind);
    EXPECT_FALSE(Thumbnail::decode(file, 10, {61 * 43 - 1, 1 << 20})) << nameOf(kind);
    EXPECT_FALSE(ImageDecoder::decode(file, {61 * 43, file.size() - 1})) << nameOf(kind);
  }
}

TEST(ImageDecoder, isNotImpressedByForgedSizes) {
  struct Forgery {
    const char* format;
    qsizetype at;
    QByteArray bytes;
  };
  const QByteArray huge("\x7f\xff\xff\xff", 4);
  const QByteArray hugeLittle("\xff\xff\xff\x7f", 4);
  for (const auto& [format, at, bytes] :
       std::vector<Forgery>{{"png24", 16, huge + huge},
                            {"gif", 6, QByteArray(4, '\xff')},
                            {"bmp3", 18, hugeLittle + hugeLittle},
                            {"bmp3", 18, QByteArray("\xff\xff\0\0\xff\x0f\0\0", 8)},
                            {"jpeg", -1, QByteArray(4, '\xff')}}) {
    QByteArray file = makeFile(sample({61, 43}, SampleKind::Opaque), {}, QString::fromLatin1(format));
    const qsizetype place = at >= 0 ? at : file.indexOf("\xff\xc0") + 5;
    file.replace(place, bytes.size(), bytes);
    if (QByteArray(format) == "png24") {
      const auto sum =
          static_cast<quint32>(crc32(0, reinterpret_cast<const Bytef*>(file.constData()) + 12, 17));
      for (int i = 0; i < 4; ++i)
        file[29 + i] = static_cast<char>(sum >> (24 - 8 * i));
    }
    EXPECT_FALSE(ImageDecoder::decode(file)) << format;
    EXPECT_FALSE(Thumbnail::decode(file, 320)) << format;
  }
}

TEST(ImageDecoder, readsTheDiskAndHasNoPictureOfWhatIsNone) {
  const ScratchHome home;
  EXPECT_FALSE(ImageDecoder::read(home.write(QStringLiteral("empty.png"))));
  EXPECT_FALSE(ImageDecoder::read(home.write(QStringLiteral("text.png"), "What is in the bottle?")));
  EXPECT_FALSE(ImageDecoder::read(home.path()));
  EXPECT_FALSE(ImageDecoder::read(home.path(QStringLiteral("missing.png"))));
  const QByteArray png = makeFile(sample({200, 100}, SampleKind::HasAlpha), {}, QStringLiteral("png"));
  EXPECT_EQ(ImageDecoder::read(home.write(QStringLiteral("whole.png"), png)), ImageDecoder::decode(png));
  EXPECT_FALSE(ImageDecoder::read(home.write(QStringLiteral("cut.png"), png.chopped(png.size() / 2))));
  const QByteArray gif = makeFile(sample({20, 10}, SampleKind::Opaque), {}, QStringLiteral("gif"));
  const auto misnamed = ImageDecoder::read(home.write(QStringLiteral("really a gif.png"), gif));
  EXPECT_TRUE(misnamed && misnamed->size() == QSize(20, 10));
}
