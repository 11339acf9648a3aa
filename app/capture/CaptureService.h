#pragma once

#include "platform/base/Published.h"

#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>
#include <set>

namespace sorrel {

/// Takes screenshots by running the system's interactive capture tool. Draws nothing and reads no pixels
/// itself. Captures may overlap: each has a file name of its own from its start on. Main thread only.
class CaptureService {
  platform::Observers observers;

 public:
  /// Given the picture's file, or nothing if the user cancelled or the tool failed; called once, on the main
  /// thread, after the call that it belongs to has returned.
  using Completion = std::function<void(std::optional<QUrl>)>;

  static CaptureService& shared();

  /// Captures into a new file in the storage folder as it is set now.
  void interactiveCaptureToFile(Completion completion);
  void interactiveCaptureToClipboard();

  /// How many selections of the screen are under way.
  platform::PublishedBy<CaptureService, int> selections{observers, 0};

 private:
  CaptureService() = default;
  /// The first free name in the storage folder: of the present second, then numbered from 2.
  [[nodiscard]] QUrl uniqueURL() const;
  /// `fileURL` is where the tool was told to put the picture, if it was told.
  void runScreencapture(const QStringList& arguments, const std::optional<QUrl>& fileURL,
                        Completion completion);

  std::set<QByteArray> underWay;  // the paths that tools were given and haven't ended with
};

}  // namespace sorrel
