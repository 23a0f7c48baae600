#pragma once
// "WriteAddr Setting": whether a paste gives the pasted widgets new write
// addresses, and the next free address they start from.

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vantile {

class DialogWdgVar : public QDialog
{
    Q_OBJECT
public:
    explicit DialogWdgVar(QWidget *parent = nullptr);
    void retranslate();
    void setNextAddress(quint32 address);

signals:
    void Background_mask_Close_Signal_wdgvar();
    // OK: the check and the address typed ("0x" hexadecimal)
    void WriteAddr_Update_to_MainWindow(bool autoAddress, uint nextAddress);

public slots:
    void VarAddr_Update_from_MainWindow(int autoAddressMode);
    void on_pushButton_OK_clicked();
    void on_pushButton_Cancel_clicked();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QCheckBox *checkBox_AutoAddr;
    QLabel *m_addressLabel;
    QLineEdit *lineEdit;
    QPushButton *pushButton_OK;
    QPushButton *pushButton_Cancel;
};

} // namespace vantile
