#include "app/editor/view/Canvas.h"
#include "app/editor/view/CanvasTextEditor.h"
#include "app/editor/view/WatermarkTool.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/MainQueue.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::ManualClock;
using platform::TextAlignment;

namespace {

/// A black picture of 600 by 400, shown pixel for pixel, and its text in the field.
class CanvasTextTest : public DocumentFixture {
 protected:
  CanvasTextTest() {
    canvas->setTool(EditorModel::Tool::watermark, std::make_unique<WatermarkTool>(*model, *canvas));
    canvas->resize(700, 460);
    other->setGeometry(0, 465, 60, 30);
    window.resize(700, 500);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    model->tool = EditorModel::Tool::watermark;
    change([](TextWatermark& text) {
      text.center = {300, 200};
      text.opacity = 1;
    });
  }

  template <typename Edit>
  void change(Edit edit) {
    model->textWM.change(edit);
    clock.run();
  }
  void edit(const QString& text = {}) {
    change([&](TextWatermark& watermark) { watermark.text = text; });
    model->isEditingText = true;
    clock.run();
    ASSERT_TRUE(editor());
  }
  [[nodiscard]] CanvasTextEditor* editor() const {
    return dynamic_cast<CanvasTextEditor*>(QApplication::focusWidget());
  }
  [[nodiscard]] QString text() const { return model->textWM->text; }
  void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window.windowHandle(), which, modifiers);
    clock.run();
  }
  void type(const QString& letters) {
    QTest::keyClicks(editor(), letters);
    clock.run();
  }
  void compose(const QString& preedit, const QString& committed = {}) {
    QInputMethodEvent event(preedit, {});
    event.setCommitString(committed);
    QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
    clock.run();
  }
  void click(const QPointF& display) {
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      canvas->mapTo(&window, canvas->fit().toCanvas(display).toPoint()));
    clock.run();
  }
  /// The shown picture as the file would have it.
  [[nodiscard]] QImage seen() const {
    return canvas->viewport()
        ->grab(canvas->fit().picture())
        .toImage()
        .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  }
  /// Without the caret and the line around the field.
  [[nodiscard]] int worstInField() {
    QWidget* const field = editor();
    field->clearFocus();
    const QRect area = field->geometry().translated(-canvas->fit().picture().topLeft());
    const QRect inside = area.adjusted(7, 3, -7, -3);
    return worstDifference(seen(), flattened(*model), [&](int x, int y) { return inside.contains(x, y); });
  }

  ManualClock clock;
  const std::unique_ptr<EditorModel> model = open(QSize(600, 400));
  QWidget window;
  Canvas* const canvas = new Canvas(*model, &window);
  QPushButton* const other = new QPushButton(&window);
};

TEST_F(CanvasTextTest, TheFieldIsAsLargeAsAllOfItsLines) {
  CanvasTextEditor::StyleKey style{.font = u"DejaVu Sans Bold"_s,
                                   .fontSize = 30,
                                   .tracking = 0,
                                   .lineSpacing = 0,
                                   .alignment = TextAlignment::left,
                                   .colour = Qt::white,
                                   .shadow = {}};
  const auto measure = [&](const QString& text) { return CanvasTextEditor::measure(text, style); };
  const QSizeF one = measure(u"a"_s);
  const double line = platform::TextBlock(u"a"_s, style).size().height();
  EXPECT_EQ(measure({}), measure(u" "_s));
  EXPECT_EQ(measure(u"a\n\nb"_s).height(), std::ceil(3 * line) + 2);
  EXPECT_EQ(measure(u"a\n\na"_s).width(), one.width()) << "an empty line widens nothing";
  EXPECT_EQ(measure(u"a\n"_s).height(), std::ceil(2 * line) + 2);
  style.tracking = 4;
  EXPECT_NEAR(measure(u"aaa"_s).width(), std::ceil(3 * (one.width() - 6)) + 12 + 6, 3);
  style.lineSpacing = 10;
  EXPECT_EQ(measure(u"a\nb\nc"_s).height(), std::ceil(3 * line + 20) + 2);
}

TEST_F(CanvasTextTest, EachKeyReachesTheDocumentAtOnce) {
  edit(u"ab"_s);
  type(u"c"_s);
  EXPECT_EQ(text(), u"abc"_s) << "the caret is at the end";
  key(Qt::Key_Return);
  EXPECT_EQ(text(), u"abc\n"_s);
  key(Qt::Key_Return, Qt::ShiftModifier);
  type(u"d"_s);
  EXPECT_EQ(text(), u"abc\n\nd"_s);
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(text(), u"abc\n\nd"_s);
  key(Qt::Key_A, Qt::ControlModifier);
  QApplication::clipboard()->setText(u"x\u2028y\r\nz\u00A0"_s);
  key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(text(), u"x\ny\nz\u00A0"_s);
  change([](TextWatermark& watermark) { watermark.text = u"from outside"_s; });
  EXPECT_EQ(editor()->toPlainText(), u"from outside"_s);
}

TEST_F(CanvasTextTest, EndsInEachWayAndKeepsTheText) {
  const std::vector<std::function<void()>> endings = {
      [&] { key(Qt::Key_Escape); },
      [&] {
        click({20, 20});
      },
      [&] {
        model->tool = EditorModel::Tool::pen;
        clock.run();
      },
      [&] { other->setFocus(); },
      [&] { key(Qt::Key_Tab); },
  };
  for (size_t i = 0; i < endings.size(); ++i) {
    for (const bool isComposing : {false, true}) {
      model->tool = EditorModel::Tool::watermark;
      edit(u"text"_s);
      if (isComposing)
        compose(u"한"_s);
      endings[i]();
      clock.run();
      EXPECT_FALSE(model->isEditingText) << i;
      EXPECT_FALSE(canvas->viewport()->findChild<QTextEdit*>()) << i;
      EXPECT_EQ(text(), isComposing ? u"text한"_s : u"text"_s) << i;
    }
  }
  edit(u"text"_s);
  QApplication::sendEvent(editor(),
                          std::make_unique<QFocusEvent>(QEvent::FocusOut, Qt::ActiveWindowFocusReason).get());
  EXPECT_TRUE(model->isEditingText) << "another window for a while";
}

TEST_F(CanvasTextTest, TheClickThatEndsDoesNothingElse) {
  edit(u"wide enough"_s);
  const QPointF center = model->textWM->center;
  const QPoint beside = canvas->fit().toCanvas({20, 20}).toPoint();
  QTest::mousePress(canvas->viewport(), Qt::LeftButton, {}, beside);
  clock.run();
  QTest::mouseMove(canvas->viewport(), beside + QPoint(60, 60));
  QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, {}, beside + QPoint(60, 60));
  EXPECT_FALSE(model->isEditingText);
  EXPECT_EQ(model->textWM->center, center);
}

TEST_F(CanvasTextTest, WhatIsComposedIsPartOfTheTextAndTheFieldRests) {
  edit(u"ab"_s);
  key(Qt::Key_Left);
  const QSizeF size = editor()->sizeThatFits();
  for (const QString& step : {u"ㅎ"_s, u"하"_s, u"한"_s}) {
    compose(step);
    EXPECT_EQ(text(), u"a"_s + step + u"b"_s);
    EXPECT_EQ(editor()->sizeThatFits(), size);
  }
  change([](TextWatermark& watermark) { watermark.scale = 2; });
  EXPECT_EQ(text(), u"a한b"_s) << "a slider disturbs no composition";
  EXPECT_EQ(editor()->sizeThatFits(), size);
  compose({}, u"한"_s);
  EXPECT_EQ(text(), u"a한b"_s);
  EXPECT_GT(editor()->sizeThatFits().height(), 1.5 * size.height()) << "now it takes effect";
  compose(u"ㄱ"_s);
  compose({});
  EXPECT_EQ(text(), u"a한b"_s) << "cancelled";
  compose(u"ㄱ"_s);
  change([](TextWatermark& watermark) { watermark.text.clear(); });
  EXPECT_EQ(text(), QString()) << "cleared";
  compose(u"ㄴ"_s);
  EXPECT_EQ(text(), u"ㄴ"_s);
}

/// As two input methods do: one hands over only now, the other has nothing more to say.
TEST_F(CanvasTextTest, AClickIntoTheTextLeavesWhatIsComposedWhereItIs) {
  for (const bool isHandedOver : {true, false}) {
    edit(u"ab"_s);
    compose(u"한"_s);
    QTest::mouseClick(editor()->viewport(), Qt::LeftButton, {}, {1, editor()->height() / 2});
    if (isHandedOver)
      compose({}, u"한"_s);
    compose(u"ㄱ"_s);
    compose({}, u"ㄱ"_s);
    compose({}, u"한"_s);
    EXPECT_EQ(text(), u"ㄱ한ab한"_s);
    key(Qt::Key_Escape);
  }
}

TEST_F(CanvasTextTest, TheSelectionStaysThroughRestyling) {
  edit(u"first\nsecond"_s);
  type(u"!"_s);
  QTextCursor cursor = editor()->textCursor();
  cursor.setPosition(3);
  cursor.setPosition(9, QTextCursor::KeepAnchor);
  editor()->setTextCursor(cursor);
  change([](TextWatermark& watermark) {
    watermark.tracking = 3;
    watermark.lineSpacing = 5;
    watermark.scale = 1.7;
    watermark.alignment = TextAlignment::right;
  });
  EXPECT_EQ(editor()->textCursor().selectionStart(), 3);
  EXPECT_EQ(editor()->textCursor().selectionEnd(), 9);
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(text(), u"first\nsecond"_s) << "and restyling isn't what is taken back";
}

TEST_F(CanvasTextTest, ThePointerFindsTheLettersAtEveryZoom) {
  for (const bool isZoomed : {false, true}) {
    if (isZoomed) {
      canvas->zoomIn();
      canvas->zoomIn();
      clock.advance(std::chrono::seconds(1));
    }
    edit(u"one two\nthree"_s);
    const QRect field = editor()->geometry();
    const auto at = [&](double x, double y) {
      return QPoint(int(field.width() * x), int(field.height() * y));
    };
    QTest::mouseDClick(editor()->viewport(), Qt::LeftButton, {}, at(0.75, 0.25));
    EXPECT_EQ(editor()->textCursor().selectedText(), u"two"_s);
    QTest::mouseClick(editor()->viewport(), Qt::LeftButton, {}, at(0.99, 0.75));
    EXPECT_EQ(editor()->textCursor().position(), 13);
    const QRectF end = QGuiApplication::inputMethod()->cursorRectangle();
    const QPointF place = canvas->fit().toDisplay(canvas->viewport()->mapFrom(&window, end.center()));
    const platform::TextBlock line(u"three"_s, model->textWM->style(1, {}));
    EXPECT_NEAR(place.x(), 300 + line.size().width() / 2, 1) << "candidates stand there";
    EXPECT_NEAR(place.y(), 200 + line.size().height() / 2, 1);
    EXPECT_NEAR(end.height(), line.size().height() * canvas->canvasScale(), 1);
    key(Qt::Key_Escape);
  }
}

TEST_F(CanvasTextTest, TheCaretStaysInView) {
  change([](TextWatermark& watermark) { watermark.center = {500, 370}; });
  edit(u"far out"_s);
  for (int step = 0; step < 3; ++step)
    canvas->zoomIn();
  clock.advance(std::chrono::seconds(1));
  const auto caret = [&] { return QGuiApplication::inputMethod()->cursorRectangle(); };
  const QRectF view(canvas->viewport()->rect());
  EXPECT_FALSE(view.contains(caret()));
  type(u"!"_s);
  EXPECT_TRUE(view.contains(caret()));
  canvas->zoomToFit();
  clock.advance(std::chrono::seconds(1));
  canvas->zoomIn();
  clock.advance(std::chrono::seconds(1));
  key(Qt::Key_Home);
  EXPECT_TRUE(view.contains(caret()));
}

TEST_F(CanvasTextTest, TheShownAndTheSavedTextAgree) {
  struct Case {
    QString text;
    QString font;
    double scale, tracking, lineSpacing;
    TextAlignment alignment;
  };
  using enum TextAlignment;
  for (const Case& one : {
           Case{u"Sorrel, fifty AVA"_s, {}, 1, 0, 0, centre},
           {u"Lines\nof their\n\nown"_s, u"DejaVu Sans"_s, 1.3, 2.5, 9, left},
           {u"Right\nalign"_s, u"NanumGothic"_s, 2.2, -1.5, 3, right},
           {u"한글 워터마크\nwatermark"_s, {}, 0.8, 1, 4, centre},
           {u"Γραφή שלום →"_s, u"NanumMyeongjo"_s, 1.1, 0, 0, centre},
           {u"😀 emoji ✓"_s, {}, 1, 0, 0, left},
       }) {
    platform::UserDefaults::standard().set(SettingsKeys::watermarkFontFamily, one.font);
    change([&](TextWatermark& text) {
      text.text = one.text;
      text.scale = one.scale;
      text.tracking = one.tracking;
      text.lineSpacing = one.lineSpacing;
      text.alignment = one.alignment;
      text.center = {301.3, 199.6};
    });
    const QRect withoutCorners(10, 10, 580, 380);
    const auto isCounted = [&](int x, int y) { return withoutCorners.contains(x, y); };
    EXPECT_LE(worstDifference(seen(), flattened(*model), isCounted), 8) << qPrintable(one.text);
    edit(one.text);
    const QSizeF block = model->textRect().size();
    EXPECT_NEAR(block.width(), editor()->sizeThatFits().width() - 6, 1);
    EXPECT_LE(worstInField(), 8) << qPrintable(one.text);
    clock.run();
  }
}

}  // namespace
