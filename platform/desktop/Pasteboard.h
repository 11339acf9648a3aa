#pragma once

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <variant>
#include <vector>

namespace platform {

/// A picture to paste: `png` gives a PNG file's bytes. It is called once at the most, when a program asks for
/// the picture, which is the time to do what takes long.
struct PasteboardImage {
  std::function<QByteArray()> png;
};

using PasteboardObject = std::variant<PasteboardImage, QUrl>;

/// The general pasteboard, which on other desktops is called the clipboard. Main thread only.
namespace Pasteboard {

/// Afterwards there is nothing to paste, whoever had put it there.
void clearContents();

/// Replaces the contents by these objects, at most one of each kind.
///
/// A picture is offered as image/png, and to programs that can't read that in the toolkit's other formats, to
/// which it is converted when they ask. A file's address is offered as text/uri-list and as file managers
/// mark a file to be copied.
void writeObjects(const std::vector<PasteboardObject>& objects);

/// To be called when the program is about to end. Where the contents are this program's, another process
/// keeps them from now on, or the desktop's clipboard manager; where another program has put something there
/// meanwhile, nothing happens. Returns within a few seconds at the most, and nearly at once as a rule.
///
/// Only X11 needs this and has it; elsewhere nothing happens.
void handOver();

}  // namespace Pasteboard
}  // namespace platform
