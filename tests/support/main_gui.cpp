#include "tests/support/ScratchHome.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  const testing_support::ScratchHome home;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
