#include "tests/support/ScratchHome.h"
#include "tests/support/SwaySession.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing_support::becomeOrdinaryUser();
  const testing_support::ScratchHome home;
  ::testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
