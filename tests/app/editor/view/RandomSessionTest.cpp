// Long sessions in the editor, made of random events of the window system: nothing may break, and what is
// saved is what the document renders. Worth most under the sanitizers.

#include "app/editor/view/Canvas.h"
#include "app/editor/view/EditorView.h"
#include "app/look/LookStyle.h"
#include "app/settings/LocalizationManager.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QApplication>
#include <QSlider>
#include <QStyleFactory>
#include <QTest>
#include <QWheelEvent>

using namespace sorrel;
using namespace std::chrono_literals;
using Tool = EditorModel::Tool;

namespace {

class RandomSession : public DocumentFixture {
 protected:
  RandomSession() {
    QApplication::setStyle(new LookStyle);
    auto opened = open(noise(QSize(420, 260)));
    model = opened.get();
    view = std::make_unique<EditorView>(std::move(opened), [] {});
    canvas = view->findChild<Canvas*>();
    view->resize(524, 364);
    view->show();
    view->activateWindow();
  }
  ~RandomSession() override {
    view.reset();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  }

  [[nodiscard]] int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }
  [[nodiscard]] QPoint somewhere() {
    const QPoint corner = canvas->mapTo(view.get(), QPoint(0, 0));
    return corner + QPoint(below(canvas->width()), below(canvas->height()));
  }

  void drag() {
    const QPoint from = somewhere();
    const QWidget* const hit = view->childAt(from);
    if (hit && !canvas->isAncestorOf(hit))
      return;  // what the options open is beyond this test
    QTest::mousePress(view->windowHandle(), Qt::LeftButton, {}, from);
    for (int moves = below(8); moves > 0; --moves) {
      QTest::mouseMove(view->windowHandle(), somewhere());
      if (below(12) == 0)
        anythingElse();
    }
    QTest::mouseRelease(view->windowHandle(), Qt::LeftButton, {}, somewhere());
  }
  void pressKey() {
    const struct {
      Qt::Key key;
      Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    } keys[] = {{Qt::Key_Z, Qt::ControlModifier},
                {Qt::Key_Z, Qt::ControlModifier},
                {Qt::Key_Plus, Qt::ControlModifier},
                {Qt::Key_Minus, Qt::ControlModifier},
                {Qt::Key_0, Qt::ControlModifier},
                {Qt::Key_Return},
                {Qt::Key_Left},
                {Qt::Key_Down, Qt::ShiftModifier},
                {Qt::Key_Tab},
                {Qt::Key_A},
                {Qt::Key_Backspace}};
    const auto& chosen = keys[below(int(std::size(keys)))];
    QTest::keyClick(view->windowHandle(), chosen.key, chosen.modifiers);
  }
  void turnWheel() {
    const QPoint place = somewhere();
    const Qt::KeyboardModifiers modifiers = below(2) ? Qt::ControlModifier : Qt::NoModifier;
    QWheelEvent event(canvas->viewport()->mapFrom(view.get(), place), view->mapToGlobal(place), {},
                      {0, below(2) ? 120 : -120}, {}, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas->viewport(), &event);
  }
  void moveASlider() {
    const auto sliders = view->findChildren<QSlider*>();
    if (sliders.isEmpty())
      return;
    QSlider* const slider = sliders[below(int(sliders.size()))];
    slider->setValue(slider->minimum() + below(slider->maximum() - slider->minimum() + 1));
  }
  void changeTheText() {
    static const QStringList texts = {QStringLiteral("sorrel"),
                                      QStringLiteral("한글\nwatermark"),
                                      {},
                                      QStringLiteral(" "),
                                      QStringLiteral("w")};
    model->textWM.change([&](TextWatermark& text) { text.text = texts[below(int(texts.size()))]; });
    if (below(3) == 0 && model->tool == Tool::watermark)
      model->isEditingText = true;
  }
  void anythingElse() {
    switch (below(12)) {
      case 0:
        view->selectTool(EditorModel::allTools[std::size_t(below(4))]);
        return;
      case 1:
        model->blurApply = below(2) ? BlurApply::brush : BlurApply::area;
        return;
      case 2:
        model->blurStyle = below(2) ? BlurStyle::gaussian : BlurStyle::mosaic;
        return;
      case 3:
        return turnWheel();
      case 4:
        return moveASlider();
      case 5:
        return changeTheText();
      case 6:
        model->setLogo(noise(QSize(1 + below(60), 1 + below(60))));
        return;
      case 7:
        view->resize(316 + below(500), 256 + below(300));
        return;
      case 8:
        LocalizationManager::shared().setLanguage(below(2) ? AppLanguage::ko : AppLanguage::en);
        return;
      case 9:
        clock.advance(std::chrono::milliseconds(below(400)));
        return;
      case 10:
        return model->undoLast();
      default:
        return pressKey();
    }
  }

  [[nodiscard]] QImage savedFile() const {
    return QImage(model->fileURL.toLocalFile()).convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  }

  platform::ManualClock clock;
  std::mt19937 random{20261123};
  EditorModel* model = nullptr;
  std::unique_ptr<EditorView> view;
  Canvas* canvas = nullptr;
};

TEST_F(RandomSession, EndsInAFileThatIsWhatTheDocumentRenders) {
  for (int step = 1; step <= 1500; ++step) {
    if (below(3) == 0)
      drag();
    else
      anythingElse();
    if (step % 5 == 0) {
      clock.run();
      QApplication::processEvents();
    }
    if (step % 250 == 0) {
      ASSERT_TRUE(model->save());
      ASSERT_EQ(savedFile(), flattened(*model)) << "after " << step << " steps";
    }
  }
}

}  // namespace
