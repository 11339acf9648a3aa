#pragma once

#include "platform/updater/UpdateProblem.h"
#include "tests/support/HttpServer.h"
#include "tests/support/UpdateSigner.h"

#include <QStringList>

#include <gtest/gtest.h>

/// What the fetching program did.
struct Fetched {
  int status = -1;
  QByteArray output;
};

/// Runs the fetching program to its end, while the servers of this test answer it.
[[nodiscard]] Fetched runFetcher(const QStringList& arguments);

/// A server whose answers each test gives, and a key.
class FetcherTest : public testing::Test {
 protected:
  static constexpr int good = 0;
  static int status(platform::UpdateProblem problem) { return static_cast<int>(problem); }

  testing_support::HttpServer::Answering answering;
  testing_support::HttpServer server{
      [this](const testing_support::HttpRequest& request) { return answering(request); }};
  const testing_support::UpdateSigner& signer = sharedSigner();

 private:
  static const testing_support::UpdateSigner& sharedSigner();
};
