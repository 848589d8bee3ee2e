#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The user's own folders stay as they are.
  const QTemporaryDir home;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
    qputenv(folder, home.path().toUtf8());
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
