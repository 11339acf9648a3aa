#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>

class QWidget;

namespace platform {

/// What the user is to choose in the desktop's own file chooser.
struct OpenPanel {
  enum class Choice { File, Files, Folder };

  Choice choice = Choice::File;
  /// What the choice is for.
  QString message;
  /// On the button that confirms; empty: the chooser's own word.
  QString prompt;
  /// The media types of the files that can be chosen, "image/png" or "image/*", and what such files are
  /// called; all files if there are none.
  QStringList contentTypes;
  QString contentsTitle;

  bool operator==(const OpenPanel&) const = default;
};

/// Shows file choosers: the desktop's own where the toolkit knows it, or else the toolkit's. A test provides
/// another, which answers in the user's place. Main thread only.
class OpenPanelPresenter {
 public:
  static OpenPanelPresenter& shared();

  virtual ~OpenPanelPresenter() = default;
  OpenPanelPresenter(const OpenPanelPresenter&) = delete;
  OpenPanelPresenter& operator=(const OpenPanelPresenter&) = delete;

  /// Called once with what was chosen, local files all; with nothing if the user left it.
  using Chosen = std::function<void(const QList<QUrl>& files)>;

  /// Shows the chooser above `window`, which takes no input until the answer is there. Returns at once. If
  /// the window goes, so does the chooser, and nobody is called.
  virtual void present(const OpenPanel& panel, QWidget& window, Chosen chosen) = 0;

 protected:
  OpenPanelPresenter() = default;
};

}  // namespace platform
