#include "tests/tools/updatefetcher/Fetcher.h"

#include "tests/support/Waiting.h"

#include <QProcess>

Fetched runFetcher(const QStringList& arguments) {
  QProcess process;
  process.start(QStringLiteral(SORREL_UPDATEFETCHER), arguments);
  testing_support::until("the fetching program has ended",
                         [&] { return process.state() == QProcess::NotRunning; });
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  EXPECT_TRUE(process.exitCode() == 0 || !process.readAllStandardError().isEmpty()) << "it says why";
  return {process.exitCode(), process.readAllStandardOutput()};
}

const testing_support::UpdateSigner& FetcherTest::sharedSigner() {
  static const testing_support::UpdateSigner signer;
  return signer;
}
