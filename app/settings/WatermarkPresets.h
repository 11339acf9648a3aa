#pragma once

#include <QList>
#include <QUrl>

#include <optional>

namespace sorrel {

/// The user's logo pictures: plain files in one folder, which is the list itself. Nothing is opened, checked
/// or converted here. Main thread only; add() takes as long as the copy.
namespace WatermarkPresets {

/// The folder, made if it isn't there. That it can't be made shows only when it is used.
[[nodiscard]] QUrl directory();

/// The folder's visible entries that are named like PNG, JPEG or TIFF pictures, newest first; empty if it
/// can't be read.
[[nodiscard]] QList<QUrl> all();

/// Copies the file into the folder under its own name, numbered if that is taken, and with "png" for an
/// extension if it has none; a name that leaves no room for a number is cut. Gives the copy's address;
/// nothing, and a log line, if it can't be made.
std::optional<QUrl> add(const QUrl& source);

/// Deletes the file at once. One that can't be deleted stays in the list.
void remove(const QUrl& preset);

}  // namespace WatermarkPresets
}  // namespace sorrel
