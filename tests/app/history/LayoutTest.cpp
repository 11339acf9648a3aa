#include "app/history/RelativeDate.h"
#include "app/history/ThumbnailLayout.h"
#include "tests/app/history/HistoryFixture.h"

#include <QRandomGenerator>

using namespace sorrel;

namespace {

TEST(ThumbnailLayoutTest, CellsOfEqualWidthFillTheWidthAndArithmeticFindsThem) {
  const struct {
    qreal width;
    int columns;
    qreal side;
  } widths[] = {{460, 3, 138}, {100, 1, 120}, {150, 1, 126}, {220, 1, 160},
                {274, 2, 120}, {403, 2, 160}, {404, 3, 120}};
  for (const auto& each : widths) {
    const ThumbnailLayout layout(each.width, 100);
    EXPECT_EQ(layout.columns(), each.columns) << each.width;
    EXPECT_EQ(layout.picture(0).width(), each.side) << each.width;
  }
  EXPECT_EQ(ThumbnailLayout(460, 0).height(), 0);
  EXPECT_EQ(ThumbnailLayout(460, 4).height(), 12 + 156 + 10 + 156 + 12);

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

using RelativeDateTest = HistoryFixture;

TEST_F(RelativeDateTest, SaysHowLongAgoInOneUnit) {
  const struct {
    qint64 seconds;
    QString english, korean;
  } cases[] = {
      {0, u"Just now"_s, u"방금"_s},
      {59, u"Just now"_s, u"방금"_s},
      {-3600, u"Just now"_s, u"방금"_s},
      {60, u"1 minute ago"_s, u"1분 전"_s},
      {239, u"3 minutes ago"_s, u"3분 전"_s},
      {3599, u"59 minutes ago"_s, u"59분 전"_s},
      {3600, u"1 hour ago"_s, u"1시간 전"_s},
      {86399, u"23 hours ago"_s, u"23시간 전"_s},
      {86400, u"1 day ago"_s, u"1일 전"_s},
      {7 * 86400, u"1 week ago"_s, u"1주 전"_s},
      {60 * 86400, u"2 months ago"_s, u"2개월 전"_s},
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
