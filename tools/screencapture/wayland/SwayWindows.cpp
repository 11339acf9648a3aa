#include "tools/screencapture/wayland/SwayWindows.h"

#include "platform/system/UnixSocket.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <json-c/json.h>
#include <memory>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace screencapture::wayland {

namespace {

// The window manager i3's protocol: a magic word, and the number and kind of the bytes that follow.
constexpr std::array<char, 6> magic{'i', '3', '-', 'i', 'p', 'c'};
constexpr std::uint32_t treeKind = 4;
constexpr std::uint32_t longestTree = 1 << 24;
constexpr std::chrono::milliseconds answerPatience{500};

struct __attribute__((packed)) Header {
  std::array<char, 6> word = magic;
  std::uint32_t length = 0;
  std::uint32_t kind = treeKind;
};

/// Fills all of `bytes`; false where they don't come.
bool readWhole(int file, std::span<std::uint8_t> bytes) {
  pollfd waiting{file, POLLIN, 0};
  while (!bytes.empty()) {
    if (poll(&waiting, 1, static_cast<int>(answerPatience.count())) <= 0)
      return false;
    const ssize_t count = read(file, bytes.data(), bytes.size());
    if (count <= 0)
      return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

/// A value of the tree. What isn't there, or is of another type, is 0, false or empty.
class Node {
 public:
  explicit Node(json_object* value) : json(value) {}

  [[nodiscard]] Node at(const char* key) const {
    json_object* value = nullptr;
    json_object_object_get_ex(json, key, &value);
    return Node(value);
  }
  [[nodiscard]] int number() const { return json_object_get_int(json); }
  [[nodiscard]] bool isTrue() const { return json_object_get_boolean(json); }
  [[nodiscard]] bool is(const char* text) const {
    return json_object_is_type(json, json_type_string) && !std::strcmp(json_object_get_string(json), text);
  }
  [[nodiscard]] std::size_t count() const {
    return json_object_is_type(json, json_type_array) ? json_object_array_length(json) : 0;
  }
  [[nodiscard]] Node operator[](std::size_t index) const {
    return Node(json_object_array_get_idx(json, index));
  }
  [[nodiscard]] bool isObject() const { return json_object_is_type(json, json_type_object); }
  [[nodiscard]] Rectangle rectangle() const {
    return {at("x").number(), at("y").number(), at("width").number(), at("height").number()};
  }

 private:
  json_object* json;
};

class Collector {
 public:
  /// Adds the windows of a container and of all in it.
  void collect(const Node& node, const Node& parent, bool isFloating) {
    const Node tiled = node.at("nodes"), floatingNodes = node.at("floating_nodes");
    if (node.at("visible").isTrue() && tiled.count() == 0)
      add(node, parent, isFloating);
    for (std::size_t i = floatingNodes.count(); i > 0; --i)  // the lowest stands first
      collect(floatingNodes[i - 1], node, true);
    for (std::size_t i = 0; i < tiled.count(); ++i)
      collect(tiled[i], node, isFloating);
  }

  [[nodiscard]] std::vector<Rectangle> all() && {
    for (const auto* below : {&floating, &others})
      fullscreen.insert(fullscreen.end(), below->begin(), below->end());
    return std::move(fullscreen);
  }

 private:
  void add(const Node& node, const Node& parent, bool isFloating) {
    Rectangle frame = node.at("rect").rectangle();
    const bool isFullscreen = node.at("fullscreen_mode").number() != 0;
    // Tabs and stacked titles belong to all of a container's windows.
    const bool hasOwnTitle = node.at("border").is("normal") && !isFullscreen &&
                             !parent.at("layout").is("tabbed") && !parent.at("layout").is("stacked");
    const int title = hasOwnTitle ? node.at("deco_rect").rectangle().height : 0;
    frame.y -= title;
    frame.height += title;
    if (!frame.isEmpty())
      (isFullscreen ? fullscreen : isFloating ? floating : others).push_back(frame);
  }

  std::vector<Rectangle> fullscreen, floating, others;
};

}  // namespace

SwayWindows::SwayWindows() {
  const char* const path = std::getenv("SWAYSOCK");
  if (!path || !*path)
    return;
  socket = platform::connectTo(path);
  const Header question;
  if (socket.isOpen() && platform::writeAll(socket.get(), {reinterpret_cast<const std::uint8_t*>(&question),
                                                           sizeof question}) != 0)
    (void)socket.close();
}

std::optional<std::vector<Rectangle>> SwayWindows::frames() {
  Header header;
  if (!socket.isOpen() ||
      !readWhole(socket.get(), {reinterpret_cast<std::uint8_t*>(&header), sizeof header}) ||
      header.word != magic || header.kind != treeKind || header.length > longestTree)
    return std::nullopt;
  std::string text(header.length, 0);
  if (!readWhole(socket.get(), {reinterpret_cast<std::uint8_t*>(text.data()), text.size()}))
    return std::nullopt;
  return framesInTree(text);
}

std::optional<std::vector<Rectangle>> framesInTree(std::string_view json) {
  const std::unique_ptr<json_tokener, void (*)(json_tokener*)> parser(json_tokener_new(), json_tokener_free);
  const std::unique_ptr<json_object, int (*)(json_object*)> tree(
      json_tokener_parse_ex(parser.get(), json.data(), static_cast<int>(json.size())), json_object_put);
  const Node root(tree.get());
  if (!root.isObject())
    return std::nullopt;
  Collector collector;
  collector.collect(root, root, false);
  return std::move(collector).all();
}

}  // namespace screencapture::wayland
