// What a screen reader finds: the icon, and the history panel.

#include "tests/e2e/Panel.h"
#include "tests/e2e/ScreenReader.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

TEST(Accessibility, AScreenReaderFindsTheIconTheControlsAndThePictures) {
  Desktop desktop({.assistiveTechnology = AssistiveTechnology::Listening});
  Sorrel::store(desktop, u"quillonPromptShown"_s, true);
  Sorrel::putPicture(desktop, u"first.png"_s, randomPicture({200, 100}, 2));
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  panel.open();
  const QPoint thumbnail = panel.thumbnail(0).center();
  desktop.input().moveTo(thumbnail.x(), thumbnail.y());
  desktop.input().tapKey(KEY_RIGHT);
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().tapKey(KEY_C);
  desktop.input().releaseKey(KEY_LEFTCTRL);

  const ScreenReader reader(desktop.busAddress());
  std::vector<ScreenReader::Element> elements;
  const auto names = [&](const QString& role) {
    QStringList found;
    for (const ScreenReader::Element& element : elements) {
      if (element.role == role)
        found << element.name;
    }
    return found.join(u'|');
  };
  until("the toast is told", [&] {
    elements = reader.elements();
    return names(u"alert message"_s) == u"Copied";
  });
  EXPECT_EQ(names(u"push button"_s),
            u"Sorrel: 1 screenshot in the bottle|Keep open when you click elsewhere|Close|Move to Trash|Copy|"
            "Open Bottle Folder|Settings"_s);
  EXPECT_EQ(names(u"list item"_s), u"first, Just now"_s);
}

}  // namespace
}  // namespace e2e
