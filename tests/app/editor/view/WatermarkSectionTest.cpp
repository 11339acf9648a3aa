#include "app/editor/view/PopoverTiming.h"
#include "app/editor/view/WatermarkSection.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/WatermarkPresets.h"
#include "platform/base/Environment.h"
#include "platform/desktop/OpenPanel.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QAbstractButton>
#include <QMenu>
#include <QPushButton>
#include <QSlider>

using namespace Qt::StringLiterals;
using namespace sorrel;

namespace {

/// Answers in the user's place, when told to.
class OpenPanelDouble : public platform::OpenPanelPresenter {
 public:
  void present(const platform::OpenPanel&, QWidget&, Chosen chosen) override { answer = std::move(chosen); }

  Chosen answer;
};

class WatermarkSectionTest : public DocumentFixture {
 protected:
  WatermarkSectionTest() {
    platform::Environment::provide<platform::OpenPanelPresenter>(panel);
    LocalizationManager::shared().setLanguage(AppLanguage::en);
    section = std::make_unique<WatermarkSection>(SectionContext{*model, timing}, nullptr);
    section->show();
  }

  void write(const QString& text) {
    model->textWM.change([&](TextWatermark& watermark) { watermark.text = text; });
    clock.run();
  }
  template <typename Control>
  [[nodiscard]] Control* control(const QString& name) const {
    for (auto* candidate : section->findChildren<Control*>())
      if (candidate->accessibleName() == name || candidate->property("text").toString() == name)
        return candidate;
    return nullptr;
  }
  [[nodiscard]] bool isShown(const QString& name) const {
    const auto* const found = control<QWidget>(name);
    return found && found->isVisible();
  }
  void click(const QString& name) {
    control<QAbstractButton>(name)->click();
    clock.run();
  }
  [[nodiscard]] QUrl file(const QString& name, const QColor& color) const {
    const QString path = home.path(name);
    EXPECT_TRUE(plain({40, 20}, color).save(path, "png"));
    return QUrl::fromLocalFile(path);
  }
  [[nodiscard]] QMenu& openMenu() const {
    QMenu& menu = *section->findChild<QMenu*>();
    menu.popup({});
    return menu;
  }
  void choose(const QString& title) {
    QMenu& menu = openMenu();
    for (QAction* const action : menu.actions())
      if (action->text() == title) {
        menu.close();
        action->trigger();
        clock.run();
        return;
      }
    ADD_FAILURE() << qPrintable(title);
  }
  [[nodiscard]] QColor logoColor() const {
    return model->logoWM.get() ? model->logoWM.get()->image.pixelColor(5, 5) : QColor();
  }

  platform::ManualClock clock;
  const std::shared_ptr<OpenPanelDouble> panel = std::make_shared<OpenPanelDouble>();
  const std::unique_ptr<EditorModel> model = open(QSize(300, 200));
  bool isPopoverShown = true;
  PopoverTiming timing{
      [this](PopoverTiming::Change change) { isPopoverShown = change == PopoverTiming::Change::shown; }};
  std::unique_ptr<WatermarkSection> section;
};

TEST_F(WatermarkSectionTest, RowsShowForWhatIsThere) {
  EXPECT_TRUE(isShown(u"Add text"_s) && isShown(u"Add logo"_s));
  EXPECT_FALSE(isShown(u"Text size"_s) || isShown(u"Center"_s) || isShown(u"Clear text"_s) ||
               isShown(u"Logo size"_s) || isShown(u"Remove logo"_s));
  write(u" \n"_s);
  EXPECT_FALSE(isShown(u"Text size"_s)) << "nothing to be seen";
  write(u"words"_s);
  EXPECT_TRUE(isShown(u"Edit text"_s) && isShown(u"Text size"_s) && isShown(u"Center"_s));
  model->setLogo(plain({20, 10}, Qt::red));
  clock.run();
  EXPECT_TRUE(isShown(u"Change logo"_s) && isShown(u"Logo size"_s));
  click(u"Edit text"_s);
  EXPECT_TRUE(model->isEditingText && model->tool == EditorModel::Tool::watermark);
  click(u"Clear text"_s);
  EXPECT_TRUE(model->textWM->text.isEmpty() && !model->isEditingText);
  click(u"Remove logo"_s);
  EXPECT_FALSE(model->logoWM->has_value());
  EXPECT_FALSE(isShown(u"Text size"_s) || isShown(u"Logo size"_s) || isShown(u"Remove logo"_s));
}

TEST_F(WatermarkSectionTest, SlidersSpanTheirRangesAndFollowTheDocument) {
  write(u"words"_s);
  model->setLogo(plain({20, 10}, Qt::red));
  clock.run();
  const auto text = [this](double TextWatermark::*field) { return model->textWM.get().*field; };
  const auto logo = [this](double LogoWatermark::*field) { return (*model->logoWM.get()).*field; };
  const struct {
    const char16_t* name;
    std::function<double()> value;
    double least;
    double greatest;
  } settings[] = {
      {u"Text opacity", [&] { return text(&TextWatermark::opacity); }, 0.2, 1},
      {u"Text size", [&] { return text(&TextWatermark::scale); }, 0.2, 6},
      {u"Letter spacing", [&] { return text(&TextWatermark::tracking); }, -12, 20},
      {u"Line spacing", [&] { return text(&TextWatermark::lineSpacing); }, 0, 24},
      {u"Logo opacity", [&] { return logo(&LogoWatermark::opacity); }, 0.2, 1},
      {u"Logo size", [&] { return logo(&LogoWatermark::scale); }, 0.2, 6},
  };
  for (const auto& setting : settings) {
    auto* const slider = control<QSlider>(QString::fromUtf16(setting.name));
    slider->setValue(slider->maximum());
    EXPECT_DOUBLE_EQ(setting.value(), setting.greatest) << qPrintable(slider->accessibleName());
    slider->setValue(slider->minimum());
    EXPECT_DOUBLE_EQ(setting.value(), setting.least) << qPrintable(slider->accessibleName());
  }
  click(u"Align right"_s);
  EXPECT_EQ(model->textWM->alignment, platform::TextAlignment::right);
  model->textWM.change([](TextWatermark& watermark) { watermark.scale = 3.1; });
  clock.run();
  const auto* const size = control<QSlider>(u"Text size"_s);
  EXPECT_EQ(size->value(), (size->minimum() + size->maximum()) / 2);
  EXPECT_EQ(model->textWM->scale, 3.1) << "to show a value doesn't change it";
}

TEST_F(WatermarkSectionTest, ALogoComesFromAFileOrFromTheStoredOnes) {
  EXPECT_EQ(openMenu().actions().size(), 1) << "none is stored";
  choose(u"Choose a file…"_s);
  clock.advance(std::chrono::hours(1));
  EXPECT_TRUE(isPopoverShown) << "it waits for the file chooser";
  panel->answer({file(u"picked.png"_s, Qt::red)});
  EXPECT_EQ(logoColor(), QColor(Qt::red));
  clock.advance(std::chrono::seconds(3));
  EXPECT_FALSE(isPopoverShown);

  ASSERT_TRUE(WatermarkPresets::add(file(u"R&D.png"_s, Qt::blue)));
  choose(u"R&&D"_s);
  EXPECT_EQ(logoColor(), QColor(Qt::blue));
}

TEST_F(WatermarkSectionTest, WhatIsNoPictureLeavesTheLogoAlone) {
  QFile broken(home.path(u"broken.png"_s));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly) && broken.write("no picture") > 0);
  broken.close();
  const QUrl url = QUrl::fromLocalFile(broken.fileName());
  ASSERT_TRUE(WatermarkPresets::add(url));
  choose(u"broken"_s);
  EXPECT_FALSE(model->logoWM->has_value());
  model->setLogo(plain({20, 10}, Qt::red));
  model->logoWM.change([](auto& logo) { logo->scale = 2; });
  for (const QList<QUrl>& answer : {QList<QUrl>{url}, QList<QUrl>()}) {
    choose(u"Choose a file…"_s);
    panel->answer(answer);
    EXPECT_EQ(logoColor(), QColor(Qt::red));
    EXPECT_EQ(model->logoWM.get()->scale, 2);
  }
  choose(u"Choose a file…"_s);
  section.reset();
  panel->answer({file(u"late.png"_s, Qt::blue)});
  EXPECT_EQ(logoColor(), QColor(Qt::red)) << "the editor has gone";
}

TEST_F(WatermarkSectionTest, TextsFollowTheLanguageAtOnce) {
  write(u"words"_s);
  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  clock.run();
  EXPECT_TRUE(isShown(u"텍스트 편집"_s) && isShown(u"로고 추가"_s) && isShown(u"자간"_s));
}

}  // namespace
