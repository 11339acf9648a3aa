#include "tests/app/editor/model/DocumentFixture.h"
#include "tests/app/editor/model/RandomEdits.h"

using namespace sorrel;

namespace {

class UndoTest : public DocumentFixture {};

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
          expectUndone(before.back(), model->document(), isCrop);
          before.pop_back();
        }
        continue;
      }
      const Document was = model->document();
      edits.apply(*model);
      if (model->undoStack->size() > was.undoStack.size())
        before.push_back(was);
    }
    while (!before.empty()) {
      ASSERT_EQ(model->undoStack->size(), qsizetype(before.size()));
      const bool isCrop = model->undoStack->last() == EditorModel::EditAction::crop;
      model->undoLast();
      expectUndone(before.back(), model->document(), isCrop);
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
