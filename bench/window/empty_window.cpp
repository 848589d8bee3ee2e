// An empty Qt window up to its first frame: what walrim's start is measured against.
#include <QApplication>
#include <QMainWindow>
#include <cstdlib>

#include "window/FirstFrame.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  walrim::CallAfterFirstFrame(window, [] { std::_Exit(0); });
  window.resize(1000, 680);
  window.show();
  return QApplication::exec();
}
