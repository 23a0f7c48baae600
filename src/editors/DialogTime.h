#pragma once
// "File Timestamp": the time a build stamps into the image and its files.
// With "Fixed Timestamp" checked every build uses the time of the edit, so
// that builds of an unchanged project give the same bytes; unchecked, a
// build takes the present time. The state lives in the project's settings
// ("Compilation_Time_Index: " and "compileDateTime:" of the .ini), where
// the command-line build finds it too.

#include <QDateTime>
#include <QDialog>

class QCheckBox;
class QDateTimeEdit;
class QPushButton;

namespace vantile {

class DialogTime : public QDialog
{
    Q_OBJECT
public:
    explicit DialogTime(QWidget *parent = nullptr);
    void retranslate();

public slots:
    // Fills the dialog with the project's state.
    void Time_Update_from_MainWindow(bool fixed, const QDateTime &time);
    void on_checkBox_Time_toggled(bool checked);
    // Stores the state and closes.
    void on_pushButton_OK_clicked();

signals:
    void Time_Update_to_MainWindow(bool fixed, const QDateTime &time);
    void Background_mask_Close_Signal_list();

private:
    QDateTimeEdit *dateTimeEdit;
    QCheckBox *checkBox_Time;
    QPushButton *pushButton_OK;
};

} // namespace vantile
