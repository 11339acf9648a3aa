// Opening, the coordinate spaces, publication, and what is remembered.

#include "tests/app/editor/model/DocumentFixture.h"

using namespace sorrel;
using platform::UserDefaults;

namespace {

class DocumentTest : public DocumentFixture {};

TEST_F(DocumentTest, opensNothingThatIsNoPicture) {
  for (const QByteArray& contents : {QByteArray(), QByteArray("\x89PNG\r\n\x1a\n"), QByteArray("text")})
    EXPECT_FALSE(EditorModel::open(QUrl::fromLocalFile(home.write(QStringLiteral("a.png"), contents))));
  EXPECT_FALSE(EditorModel::open(QUrl::fromLocalFile(home.path(QStringLiteral("missing.png")))));
  EXPECT_FALSE(EditorModel::open(QUrl::fromLocalFile(home.path())));
  EXPECT_FALSE(EditorModel::open(QUrl()));
}

TEST_F(DocumentTest, isWithoutAPictureUntilThatIsDecoded) {
  UserDefaults::standard().set(QStringLiteral("rememberWatermarkText"), true);
  UserDefaults::standard().set(QStringLiteral("lastWatermarkText"), QStringLiteral("seen"));
  const auto known = open(map({60, 40}));
  const auto model = EditorModel::beginOpening(known->fileURL);
  ASSERT_TRUE(model);
  EXPECT_TRUE(model->baseImage->isNull());
  EXPECT_EQ(model->textWM->text, QStringLiteral("seen"));
  QRectF repainted;
  const auto token = model->observeRepainting([&](EditorModel::Field field, const QRectF& rectangle) {
    if (field == &model->baseImage)
      repainted = rectangle;
  });
  ASSERT_TRUE(model->awaitPicture());
  EXPECT_EQ(model->document(), known->document());
  EXPECT_EQ(repainted, QRectF(0, 0, 60, 40));
}

TEST_F(DocumentTest, isReducedOnAThreadAsItIsWithoutOne) {
  const QImage picture = noise({300, 200});
  const auto model = open(picture);
  const QImage expected = model->reduced({150, 100});
  for (const QSize& begun : {QSize(150, 100), QSize(90, 60)}) {
    model->dropReduced();
    model->beginReducing(begun);
    EXPECT_EQ(model->reduced({150, 100}), expected);
    EXPECT_EQ(model->processed(BlurStyle::mosaic, {150, 100}).size(), expected.size());
  }
  // A crop comes before the copy has been asked for.
  model->beginReducing({75, 50});
  model->applyCrop({0, 0, 100, 100});
  EXPECT_EQ(model->reduced({75, 50}), open(model->baseImage)->reduced({75, 50}));
}

TEST_F(DocumentTest, aSliverWithoutDisplayWidthKeepsItsPixels) {
  const QImage sliver = map({2, 3000});
  const auto model = open(sliver);
  EXPECT_EQ(model->displaySize->width(), 0);
  drawStroke(*model, {{0, 0}, {1, 500}});
  blurArea(*model, {0, 0, 10, 100});
  model->textWM.change([](auto& text) { text.text = QStringLiteral("text"); });
  EXPECT_TRUE(model->save());
  EXPECT_EQ(EditorModel::open(model->fileURL)->baseImage.get(), sliver);
  EXPECT_TRUE(model->processed(BlurStyle::gaussian).isNull());
}

TEST_F(DocumentTest, tellsObserversOncePerChangeAndBeforeIt) {
  const auto model = open({200, 100});
  int told = 0;
  qsizetype strokesSeen = -1;
  const auto token = model->observe([&] {
    ++told;
    strokesSeen = model->strokes->size();
  });
  const auto count = [&](auto&& operation) {
    told = 0;
    operation();
    return told;
  };
  model->begin({1, 1});
  EXPECT_EQ(count([&] { model->current.change([](auto& stroke) { stroke->points.append({2, 2}); }); }), 1);
  EXPECT_EQ(count([&] { model->commit(); }), 3) << "strokes, undoStack, current";
  EXPECT_EQ(count([&] { model->undoLast(); }), 2);
  EXPECT_EQ(strokesSeen, 1) << "told while the stroke was still there";
  EXPECT_EQ(count([&] { model->applyCrop({0, 0, 8, 100}); }), 0) << "refused";
  EXPECT_EQ(count([&] { model->tool = model->tool.get(); }), 1) << "also the same value again";
  EXPECT_EQ(count([&] { (void)model->processed(BlurStyle::mosaic); }), 0);
}

TEST_F(DocumentTest, theTextIsRememberedOnlyIfTheUserWantsIt) {
  auto& defaults = UserDefaults::standard();
  const QString remember = QStringLiteral("rememberWatermarkText");
  const QString last = QStringLiteral("lastWatermarkText");
  const auto saveWith = [&](const QString& text) {
    const auto model = open({50, 50});
    model->textWM.change([&](auto& watermark) { watermark.text = text; });
    EXPECT_TRUE(model->save());
  };
  defaults.set(last, QStringLiteral("old"));
  EXPECT_EQ(open({50, 50})->textWM->text, QString());
  saveWith(QStringLiteral("new"));
  EXPECT_EQ(defaults.string(last), QStringLiteral("old"));

  defaults.set(remember, true);
  EXPECT_EQ(open({50, 50})->textWM->text, QStringLiteral("old"));
  saveWith(QStringLiteral("new\n"));
  EXPECT_EQ(defaults.string(last), QStringLiteral("new\n")) << "untrimmed";
  saveWith(QStringLiteral(" \n"));
  EXPECT_EQ(defaults.string(last), QStringLiteral(" \n")) << "also where nothing was drawn";

  defaults.set(last, QStringLiteral("old"));
  const auto cropped = open({50, 50});
  cropped->applyCrop({0, 0, 20, 20});
  EXPECT_EQ(cropped->textWM->text, QString()) << "it is in the pixels now";
  EXPECT_TRUE(cropped->save());
  EXPECT_EQ(defaults.string(last), QString());
  defaults.remove(last);
  EXPECT_EQ(open({50, 50})->textWM->text, QString());
}

TEST_F(DocumentTest, theNameInTheTextTriggersABurst) {
  const auto model = open({50, 50});
  const auto fires = [&](const char* text) {
    const auto before = model->sorrelBurstID.get();
    model->maybeTriggerBurst(QString::fromUtf8(text));
    return model->sorrelBurstID.get() != before;
  };
  for (const char* text :
       {"sorrel", " SORREL\n", "Sorrel", "소렐", "\t소렐 ", "\u1109\u1169\u1105\u1166\u11AF"})
    EXPECT_TRUE(fires(text)) << text;
  EXPECT_TRUE(fires("소렐")) << "again";
  for (const char* text : {"sorrels", "sor rel", "", "소렐a"})
    EXPECT_FALSE(fires(text)) << text;
}

}  // namespace
