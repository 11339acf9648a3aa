#include "tests/app/editor/model/DocumentFixture.h"

using namespace sorrel;

namespace {

class UndoTest : public DocumentFixture {};

/// All that a document is made of.
struct Document {
  QImage baseImage;
  QSize imagePixelSize;
  QSizeF displaySize;
  QList<PenStroke> strokes;
  QList<BlurRegion> blurRegions;
  TextWatermark textWM;
  std::optional<LogoWatermark> logoWM;
  std::vector<EditorModel::EditAction> undoStack;

  static Document of(const EditorModel& model) {
    return {model.baseImage,   model.imagePixelSize,
            model.displaySize, model.strokes,
            model.blurRegions, model.textWM,
            model.logoWM,      {model.undoStack->begin(), model.undoStack->end()}};
  }
  bool operator==(const Document&) const = default;
};

TEST_F(UndoTest, takesEditsBackInReverseOrder) {
  const auto model = open(map({400, 300}));
  const QImage opened = model->baseImage;
  drawStroke(*model, {{10, 10}, {50, 50}});
  blurArea(*model, {0, 0, 50, 50});
  drawStroke(*model, {{10, 50}, {50, 10}});
  const QUuid second = model->strokes->last().id;
  model->undoLast();
  ASSERT_EQ(model->strokes->size(), 1);
  EXPECT_NE(model->strokes->last().id, second);
  model->undoLast();
  EXPECT_TRUE(model->blurRegions->isEmpty());

  model->applyCrop({100, 100, 200, 100});
  EXPECT_EQ(model->undoStack.get(), (QList{EditorModel::EditAction::pen, EditorModel::EditAction::crop}));
  EXPECT_TRUE(model->strokes->isEmpty());
  drawStroke(*model, {{10, 50}, {50, 10}});
  model->applyCrop({0, 0, 50, 50});
  for (int i = 0; i < 3; ++i)
    model->undoLast();
  EXPECT_EQ(model->baseImage.get(), opened);
  EXPECT_EQ(model->displaySize.get(), QSizeF(400, 300));
  EXPECT_EQ(model->undoStack.get(), QList{EditorModel::EditAction::pen});
  EXPECT_EQ(model->strokes->size(), 1);
  model->undoLast();
  model->undoLast();
  EXPECT_TRUE(model->strokes->isEmpty());
}

/// Makes one random change, undoable or not; says whether there is a new entry to undo.
class RandomEdits {
 public:
  explicit RandomEdits(unsigned seed) : random(seed) {}

  void apply(EditorModel& model) {
    switch (below(8)) {
      case 0:
        model.begin(point(model));
        for (int i = below(4); i > 0; --i)
          model.current.change([&](auto& stroke) { stroke->points.append(point(model)); });
        return model.commit();
      case 1:
        for (int i = below(4); i > 0; --i)
          model.extendBlurBrush(point(model));
        return model.commitBlur();
      case 2:
        model.currentBlurRect = QRectF(point(model), QSizeF(below(40), below(40)));
        return model.commitBlur();
      case 3:
        return model.applyCrop({point(model), QSizeF(below(120), below(120))});
      case 4:
        return model.textWM.change([&](auto& text) {
          text.text = QString::number(below(100));
          text.center = point(model);
        });
      case 5:
        if (below(3) == 0)
          model.logoWM = std::nullopt;
        else
          model.setLogo(QImage(1 + below(9), 1 + below(9), QImage::Format_RGBA8888_Premultiplied));
        return;
      case 6:
        model.blurStyle = below(2) ? BlurStyle::gaussian : BlurStyle::mosaic;
        model.blurIntensity = below(100) / 100.0;
        return;
      default:
        model.lineWidth = below(20);
    }
  }
  int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(random); }

 private:
  QPointF point(const EditorModel& model) {
    const QSizeF size = model.displaySize;
    return {below(int(size.width()) + 40) - 20.0, below(int(size.height()) + 40) - 20.0};
  }
  std::mt19937 random;
};

/// Undoing never touches the watermarks, unless it is a crop that is undone.
void expectUndone(const Document& before, const Document& after, bool isCrop) {
  Document expected = before;
  if (!isCrop) {
    expected.textWM = after.textWM;
    expected.logoWM = after.logoWM;
  }
  EXPECT_TRUE(after == expected);
}

TEST_F(UndoTest, undoesAnyRandomSequenceOfEdits) {
  const unsigned seed = std::random_device()();
  RecordProperty("seed", std::to_string(seed));
  std::printf("seed %u\n", seed);
  RandomEdits edits(seed);
  for (int round = 0; round < 20; ++round) {
    const auto model = open(map({260, 160 + round}));
    std::vector<Document> before;
    for (int step = 0; step < 40; ++step) {
      if (edits.below(4) == 0) {
        const bool isCrop = !before.empty() && model->undoStack->last() == EditorModel::EditAction::crop;
        model->undoLast();
        if (!before.empty()) {
          expectUndone(before.back(), Document::of(*model), isCrop);
          before.pop_back();
        }
        continue;
      }
      const Document was = Document::of(*model);
      edits.apply(*model);
      if (model->undoStack->size() > qsizetype(was.undoStack.size()))
        before.push_back(was);
    }
    while (!before.empty()) {
      ASSERT_EQ(model->undoStack->size(), qsizetype(before.size()));
      const bool isCrop = model->undoStack->last() == EditorModel::EditAction::crop;
      model->undoLast();
      expectUndone(before.back(), Document::of(*model), isCrop);
      before.pop_back();
    }
    EXPECT_TRUE(model->undoStack->isEmpty() && model->strokes->isEmpty() && model->blurRegions->isEmpty());
    ASSERT_FALSE(HasFailure()) << "seed " << seed << ", round " << round;
  }
}

TEST_F(UndoTest, snapshotsShareTheirPixels) {
  const auto model = open(map({400, 300}));
  const uchar* const pixels = model->baseImage->constBits();
  model->applyCrop({10, 10, 100, 100});
  EXPECT_NE(model->baseImage->constBits(), pixels);
  model->undoLast();
  EXPECT_EQ(model->baseImage->constBits(), pixels);
}

}  // namespace
