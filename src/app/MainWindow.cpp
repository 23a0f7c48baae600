#include "app/MainWindow.h"

namespace vantile {
MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent) {}
MainWindow::~MainWindow() = default;
void MainWindow::openProjectFile(const QString &) {}
} // namespace vantile
