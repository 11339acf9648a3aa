#pragma once

#include <QByteArray>
#include <QUrl>

#include <variant>
#include <vector>

namespace platform {

/// A picture to paste, as the bytes of a PNG file.
struct PasteboardImage {
  QByteArray png;
};

using PasteboardObject = std::variant<PasteboardImage, QUrl, QString>;

/// The general pasteboard, which on other desktops is called the clipboard. Main thread only.
namespace Pasteboard {

/// Empties it, whoever had filled it, when the event loop turns again; a write before that takes its place.
/// So the two together are one step to the desktop, without a moment of emptiness that a clipboard manager
/// would fill with what was there before.
void clearContents();

/// Replaces the contents by these objects, at most one of each kind. False, and the contents are as they
/// were, where that can't be done.
///
/// A picture is offered as image/png; a file's address as text/uri-list and as file managers mark a file to
/// be copied. Neither is offered as text, which some programs would take in place of the picture; a text is.
///
/// A process of its own keeps the contents, so that they outlive this program however it ends; the call
/// returns when they can be pasted. They end with this program only where that process can't have them, and
/// this program has the keyboard.
[[nodiscard]] bool writeObjects(const std::vector<PasteboardObject>& objects);

}  // namespace Pasteboard
}  // namespace platform
