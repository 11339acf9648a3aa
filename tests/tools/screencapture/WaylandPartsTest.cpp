// What the tool makes of what a Wayland compositor tells: how the outputs lie, how their pixels lie in
// memory, where the windows are.

#include "tools/screencapture/wayland/FrozenScreen.h"
#include "tools/screencapture/wayland/Services.h"
#include "tools/screencapture/wayland/SwayWindows.h"

#include <gtest/gtest.h>
#include <ostream>
#include <wayland-client-protocol.h>

namespace screencapture {

void PrintTo(const Rectangle& area, std::ostream* out) {
  *out << area.width << "x" << area.height << "+" << area.x << "+" << area.y;
}

}  // namespace screencapture

using namespace screencapture;
using namespace screencapture::wayland;

namespace {

using Rows = std::vector<std::vector<std::uint32_t>>;
using Rectangles = std::vector<Rectangle>;

Rows rowsOf(const Picture& picture) {
  Rows rows;
  for (int y = 0; y < picture.size().height; ++y)
    rows.emplace_back(picture.row(y), picture.row(y) + picture.size().width);
  return rows;
}

Picture filled(Size size, std::uint32_t color) {
  return Picture(size, std::vector<std::uint32_t>(static_cast<std::size_t>(size.width * size.height), color));
}

std::optional<Picture> upright(std::vector<std::uint32_t> memory, Size size, int transform,
                               RowOrder order = RowOrder::FromTop,
                               std::uint32_t format = WL_SHM_FORMAT_XRGB8888) {
  const auto owner = std::make_shared<const std::vector<std::uint32_t>>(std::move(memory));
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(owner->data()), owner->size() * 4);
  return uprightPicture({format, size, static_cast<std::size_t>(size.width) * 4, bytes},
                        Transform::of(transform), order, owner);
}

}  // namespace

TEST(WaylandLayout, keepsEachOutputsPixelsAndLeavesNoGapsBetweenThem) {
  // 1280 pixels at a scale of 1.5 are 853 1/3 logical ones: the second begins at 853.
  const OutputShape left{{0, 0, 853, 533}, {1280, 800}}, right{{853, 0, 853, 533}, {1280, 800}};
  const Layout fractional = Layout::of(std::vector{left, right});
  EXPECT_EQ(fractional.scale, 1.5);
  EXPECT_EQ(fractional.places, (Rectangles{{0, 0, 1280, 800}, {1280, 0, 1280, 800}}));

  // One below the other, the first in the order of the compositor being the lower, left of the origin.
  const Layout stacked = Layout::of(
      std::vector<OutputShape>{{{-640, 400, 640, 400}, {1280, 800}}, {{-640, 0, 640, 400}, {1280, 800}}});
  EXPECT_EQ(stacked.places, (Rectangles{{0, 800, 1280, 800}, {0, 0, 1280, 800}}));
  EXPECT_EQ(stacked.screen, (Size{1280, 1600}));
}

TEST(WaylandLayout, showsOutputsOfSmallerScaleLargerButTakesTheirOwnPixels) {
  Layout mixed = Layout::of(std::vector<OutputShape>{{{0, 0, 4, 2}, {8, 4}}, {{4, 0, 4, 2}, {4, 2}}});
  EXPECT_EQ(mixed.scale, 2);
  EXPECT_EQ(mixed.places, (Rectangles{{0, 0, 8, 4}, {8, 0, 8, 4}}));
  EXPECT_EQ(ownPixels({10, 0, 3, 4}, mixed.places[1], {4, 2}), (Rectangle{1, 0, 2, 2}));

  const FrozenScreen screen(mixed, {filled({8, 4}, 0x111111), Picture({4, 2}, {1, 2, 3, 4, 5, 6, 7, 8})});
  EXPECT_EQ(screen.sizeOf({10, 0, 3, 4}), (Size{2, 2}));
  EXPECT_EQ(screen.sizeOf({6, 0, 4, 4}), (Size{4, 4})) << "of both";
  EXPECT_EQ(screen.pixels({7, 2, 4, 1}),
            (std::vector<std::uint32_t>{0xff111111, 0xff000005, 0xff000005, 0xff000006}));
  EXPECT_EQ(screen.pixels({15, 3, 2, 1}), (std::vector<std::uint32_t>{0xff000008, 0})) << "beyond the edge";
}

TEST(WaylandLayout, findsPartsOfTheCompositorsSpaceOnTheScreen) {
  const Rectangles logical{{0, 0, 853, 533}, {853, 0, 853, 533}};
  const Layout layout =
      Layout::of(std::vector<OutputShape>{{logical[0], {1280, 800}}, {logical[1], {1280, 800}}});
  EXPECT_EQ(onScreen({853, 100, 300, 200}, logical, layout), (Rectangle{1280, 150, 450, 300}));
  EXPECT_EQ(onScreen({-100, -100, 200, 200}, logical, layout), (Rectangle{0, 0, 150, 150}));
  EXPECT_TRUE(onScreen({5000, 0, 10, 10}, logical, layout).isEmpty());
}

TEST(WaylandPicture, isUprightWhateverTheOutputsTransform) {
  // As grim shows the outputs of sway that are turned and mirrored so.
  const std::vector<std::uint32_t> memory{1, 2, 3, 4, 5, 6};
  const Rows expected[] = {{{1, 2, 3}, {4, 5, 6}},   {{4, 1}, {5, 2}, {6, 3}}, {{6, 5, 4}, {3, 2, 1}},
                           {{3, 6}, {2, 5}, {1, 4}}, {{3, 2, 1}, {6, 5, 4}},   {{1, 4}, {2, 5}, {3, 6}},
                           {{4, 5, 6}, {1, 2, 3}},   {{6, 3}, {5, 2}, {4, 1}}};
  for (int transform = 0; transform < 8; ++transform)
    EXPECT_EQ(rowsOf(*upright(memory, {3, 2}, transform)), expected[transform]) << transform;
  EXPECT_EQ(rowsOf(*upright(memory, {3, 2}, 0, RowOrder::FromBottom)), expected[6]);
}

TEST(WaylandPicture, understandsTheFormatsOfScreensAndRefusesOthers) {
  const auto first = [](std::uint32_t pixel, std::uint32_t format) {
    return upright({pixel}, {1, 1}, 0, RowOrder::FromTop, format)->row(0)[0] & 0xffffff;
  };
  EXPECT_EQ(first(0x12345678, WL_SHM_FORMAT_ARGB8888), 0x345678U);
  EXPECT_EQ(first(0x12345678, WL_SHM_FORMAT_XBGR8888), 0x785634U);
  EXPECT_EQ(first(0xffU << 20 | 0x3ffU << 10 | 0x200, WL_SHM_FORMAT_XRGB2101010), 0x3fff80U);
  EXPECT_EQ(first(0xffU << 20 | 0x3ffU << 10 | 0x200, WL_SHM_FORMAT_XBGR2101010), 0x80ff3fU);
  EXPECT_FALSE(upright({0}, {1, 1}, 0, RowOrder::FromTop, WL_SHM_FORMAT_RGB565));
  EXPECT_FALSE(upright({0}, {1, 2}, 0)) << "too few bytes";
}

TEST(WaylandPicture, ofAllOutputsIsCutIntoTheirs) {
  const std::vector<Picture> cut =
      cutOutputs(Picture({4, 2}, {1, 2, 3, 4, 5, 6, 7, 8}), Rectangles{{102, 0, 2, 1}, {100, 0, 2, 2}});
  ASSERT_EQ(cut.size(), 2U);
  EXPECT_EQ(rowsOf(cut[0]), (Rows{{3, 4}}));
  EXPECT_EQ(rowsOf(cut[1]), (Rows{{1, 2}, {5, 6}}));
}

TEST(SwayWindows, areThoseThatAreSeenTheTopmostFirstWithTheirTitles) {
  constexpr char tree[] = R"({"type": "root", "nodes": [
    {"type": "output", "nodes": [{"type": "workspace", "name": "__i3_scratch", "visible": null, "nodes": []}]},
    {"type": "output", "nodes": [{"type": "workspace", "layout": "splith", "floating_nodes": [
        {"visible": true, "rect": {"x": 1, "y": 2, "width": 3, "height": 4}, "border": "pixel", "nodes": []},
        {"visible": true, "rect": {"x": 200, "y": 175, "width": 500, "height": 275}, "border": "normal",
         "deco_rect": {"x": 200, "y": 150, "width": 500, "height": 25}, "nodes": []}],
      "nodes": [
        {"visible": true, "rect": {"x": 0, "y": 25, "width": 640, "height": 775}, "border": "normal",
         "deco_rect": {"x": 0, "y": 0, "width": 640, "height": 25}, "nodes": []},
        {"layout": "tabbed", "visible": true, "nodes": [
          {"visible": false, "rect": {"x": 640, "y": 25, "width": 9, "height": 9}, "nodes": []},
          {"visible": true, "rect": {"x": 640, "y": 25, "width": 640, "height": 775}, "border": "normal",
           "deco_rect": {"x": 640, "y": 0, "width": 320, "height": 25}, "nodes": []}]},
        {"visible": true, "fullscreen_mode": 1, "rect": {"x": 0, "y": 0, "width": 1280, "height": 800}}]}]}]})";
  EXPECT_EQ(
      framesInTree(tree),
      (Rectangles{
          {0, 0, 1280, 800}, {200, 150, 500, 300}, {1, 2, 3, 4}, {0, 0, 640, 800}, {640, 25, 640, 775}}));
  EXPECT_EQ(framesInTree(R"({"nodes": [{"visible": true, "rect": "none"}, 7, null]})"), Rectangles{});
  EXPECT_FALSE(framesInTree("[]"));
  EXPECT_FALSE(framesInTree(R"({"nodes": [)"));
}
