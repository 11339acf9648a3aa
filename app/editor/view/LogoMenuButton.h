#pragma once

#include "app/history/ThumbnailLoader.h"

#include <QPushButton>

#include <functional>
#include <vector>

namespace sorrel {

/// Opens a menu of where a logo can come from: a file, or those that are stored, each with a small picture.
class LogoMenuButton : public QPushButton {
 public:
  struct Actions {
    std::function<void()> pickFile;
    std::function<void(const QUrl&)> choose;
    /// The menu opens; it closes, before what was chosen happens.
    std::function<void()> opens;
    std::function<void()> closes;
  };

  LogoMenuButton(Actions actions, QWidget* parent);

 private:
  void fill();
  void addStored(const QUrl& logo);

  const Actions handlers;
  std::vector<ThumbnailLoader::Request> requests;
};

}  // namespace sorrel
