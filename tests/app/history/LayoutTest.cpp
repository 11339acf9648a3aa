#include "app/history/RelativeDate.h"
#include "app/history/ThumbnailSelection.h"
#include "tests/app/history/HistoryFixture.h"

#include <QRandomGenerator>

using namespace sorrel;

namespace {

TEST(ThumbnailLayoutTest, CellsOfEqualWidthFillTheWidthAndArithmeticFindsThem) {
  const ThumbnailLayout panels(460, 4);
  EXPECT_EQ(panels.columns(), 3);
  EXPECT_EQ(panels.picture(0).width(), 138);
  EXPECT_EQ(ThumbnailLayout(460, 0).height(), 0);
  EXPECT_EQ(panels.height(), 12 + 156 + 10 + 156 + 12);

  // Against looking at each cell in turn.
  const ThumbnailLayout layout(460, 50);
  QRandomGenerator random(7);
  for (int i = 0; i < 2000; ++i) {
    const QPointF point(random.bounded(500) - 20, random.bounded(3000) - 20);
    const qreal bottom = point.y() + random.bounded(600);
    int at = -1, first = -1, last = -1;
    for (int cell = 0; cell < layout.count(); ++cell) {
      const QRectF rect = layout.cell(cell);
      if (rect.contains(point))
        at = cell;
      if (rect.bottom() >= point.y() && rect.top() <= bottom) {
        first = first < 0 ? cell : first;
        last = cell;
      }
    }
    EXPECT_EQ(layout.at(point), at) << point.x() << ' ' << point.y();
    const auto [from, to] = layout.range(point.y(), bottom);
    if (first >= 0) {
      EXPECT_LE(from, first);
      EXPECT_GT(to, last);
      EXPECT_LE(to - from, last - first + 1 + 2 * layout.columns()) << "no more than the rows at the edges";
    }
  }
}

TEST(ThumbnailLayoutTest, KeysLeadWhereTheEyeExpects) {
  // Against looking for it among the cells: the next above or below in the same column, so many times.
  QRandomGenerator random(3);
  for (int i = 0; i < 1000; ++i) {
    const ThumbnailLayout layout(100 + random.bounded(800), 1 + random.bounded(40));
    const int viewHeight = 50 + random.bounded(900), from = random.bounded(layout.count());
    const auto vertically = [&](int direction, int times) {
      int at = from;
      for (; times > 0; --times) {
        int next = at;
        for (int cell = 0; cell < layout.count(); ++cell) {
          const qreal way = direction * (layout.cell(cell).top() - layout.cell(at).top());
          const qreal best = direction * (layout.cell(next).top() - layout.cell(at).top());
          if (layout.cell(cell).left() == layout.cell(at).left() && way > 0 && (next == at || way < best))
            next = cell;
        }
        at = next;
      }
      return at;
    };
    const auto moved = [&](CursorMove move) { return layout.moved(from, move, viewHeight); };
    const int rowsInView = std::max(1, static_cast<int>(viewHeight / layout.rowPitch()));
    EXPECT_EQ(moved(CursorMove::Up), vertically(-1, 1));
    EXPECT_EQ(moved(CursorMove::Down), vertically(1, 1));
    EXPECT_EQ(moved(CursorMove::PageUp), vertically(-1, rowsInView));
    EXPECT_EQ(moved(CursorMove::PageDown), vertically(1, rowsInView));
    EXPECT_EQ(moved(CursorMove::Left), std::max(from - 1, 0));
    EXPECT_EQ(moved(CursorMove::Right), std::min(from + 1, layout.count() - 1));

    // A view shows the whole cell afterwards, if it can, and goes no further than it must.
    const int scrolled = random.bounded(layout.scrollRange(viewHeight) + 1);
    const int to = layout.scrolledTo(from, scrolled, viewHeight);
    const QRectF cell = layout.cell(from), view(0, to, layout.cell(0).right(), viewHeight);
    EXPECT_TRUE(cell.height() + 2 * ThumbnailLayout::padding > viewHeight ||
                (view.top() <= cell.top() && view.bottom() >= cell.bottom()));
    if (cell.top() - ThumbnailLayout::padding >= scrolled &&
        cell.bottom() + ThumbnailLayout::padding <= scrolled + viewHeight) {
      EXPECT_EQ(to, scrolled);
    }
  }
}

std::vector<Screenshot> listOf(const QString& names) {
  std::vector<Screenshot> list;
  for (const QChar name : names)
    list.push_back({QByteArray("/") + name.toLatin1()});
  return list;
}

TEST(ListChangeTest, TellsWhereEachRowWentAndWhichAreNew) {
  // Against looking for each in turn.
  QRandomGenerator random(5);
  const auto someNames = [&] {
    QString names;
    for (int i = 0; i < 12; ++i)
      if (const QChar name(u'a' + random.bounded(10)); !names.contains(name))
        names.insert(random.bounded(static_cast<int>(names.size()) + 1), name);
    return names;
  };
  for (int i = 0; i < 2000; ++i) {
    const QString before = someNames();
    QString after = i % 2 ? before : someNames();
    if (i % 2 && !after.isEmpty())  // the usual: one goes, one comes
      after.remove(random.bounded(static_cast<int>(after.size())), 1).insert(0, u'z');
    ListChange expected;
    for (const QChar name : before)
      expected.rows.push_back(static_cast<int>(after.indexOf(name)));
    for (int row = 0; row < after.size(); ++row)
      if (!before.contains(after[row]))
        expected.inserted.push_back(row);
    EXPECT_EQ(ListChange::between(listOf(before), listOf(after)), expected)
        << qPrintable(before) << " to " << qPrintable(after);
  }
}

TEST(ListChangeTest, TheSelectionStaysWithItsScreenshotAndTheKeyboardWhereThatWas) {
  const struct {
    const char16_t *before, *after;
    int selected;
    std::optional<int> now;
    int keyboard;
  } cases[] = {
      {u"abcd", u"xabcd", 1, 2, 2},          {u"abcd", u"bacd", 1, 0, 0},
      {u"abcd", u"acd", 1, std::nullopt, 1}, {u"abcd", u"xad", 1, std::nullopt, 2},
      {u"abcd", u"ab", 3, std::nullopt, 1},  {u"abcd", u"", 1, std::nullopt, 0},
  };
  for (const auto& each : cases) {
    ThumbnailSelection selection;
    selection.select(each.selected);
    selection.follow(
        ListChange::between(listOf(QString::fromUtf16(each.before)), listOf(QString::fromUtf16(each.after))));
    EXPECT_EQ(selection.row(), each.now);
    EXPECT_EQ(selection.keyboardRow(), each.keyboard);
  }
}

using RelativeDateTest = HistoryFixture;

TEST_F(RelativeDateTest, SaysHowLongAgoInOneUnit) {
  const struct {
    qint64 seconds;
    QString english, korean;
  } cases[] = {
      {59, u"Just now"_s, u"방금"_s},
      {-3600, u"Just now"_s, u"방금"_s},
      {60, u"1 minute ago"_s, u"1분 전"_s},
      {3599, u"59 minutes ago"_s, u"59분 전"_s},
      {86399, u"23 hours ago"_s, u"23시간 전"_s},
      {7 * 86400, u"1 week ago"_s, u"1주 전"_s},
      {800 * 86400, u"2 years ago"_s, u"2년 전"_s},
  };
  for (const auto language : {AppLanguage::en, AppLanguage::ko}) {
    LocalizationManager::shared().setLanguage(language);
    for (const auto& each : cases) {
      const platform::Date date(
          std::chrono::seconds(platform::MainQueue::main().now().toSecsSinceEpoch() - each.seconds));
      EXPECT_EQ(relativeDate(date), language == AppLanguage::en ? each.english : each.korean);
    }
    EXPECT_EQ(relativeDate(platform::distantPast), QString());
  }
}

}  // namespace
