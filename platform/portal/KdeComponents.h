#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

namespace platform {

/// The places in which KDE keeps this program's hot keys. Up to Plasma 5.27 the place depends on the way in
/// which the program was started: from a menu it has a name of its own there, from a terminal it has none.
/// Keys that one place holds the other doesn't get.
namespace KdeComponents {

/// Looks for all of them, under the names that go with the session's token, and calls `onFound` with what
/// there is, unless `context` has gone; with none where this is no such desktop. Never before this has
/// returned.
void find(QObject& context, const QString& token, std::function<void(const QStringList& paths)> onFound);

/// Has them forget all keys that no running program has.
void forgetInactive(const QStringList& paths);

}  // namespace KdeComponents
}  // namespace platform
