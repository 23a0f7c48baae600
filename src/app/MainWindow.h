#pragma once

#include <QMainWindow>

namespace vantile {

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;
    void openProjectFile(const QString &path);
};

} // namespace vantile
