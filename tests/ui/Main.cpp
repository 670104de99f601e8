// The tests of the window need an application; without a platform of their own they run offscreen.
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/controls/ProgramStyle.h"

int main(int argumentCount, char** arguments) {
  ::testing::InitGoogleTest(&argumentCount, arguments);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication::setStyle(new pellorin::ProgramStyle);
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
