#pragma once
// "OTA Update Addr Setting": where each of the seven material blocks begins
// and how much room it keeps, so that an update over the air can replace one
// block without moving the others. The dialog edits Addr_Info.txt of the
// project; the build places the blocks by the same file and rule
// (build/OtaPlacement.h).
//
// The reserves are typed; a value takes effect with Enter, which recomputes
// the blocks behind it as the next build will place them, against the
// reserves and ends the file held when the dialog opened. The Font start
// and the current sizes are those of the last build.

#include "build/OtaPlacement.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vantile {

class Dialogmaterialaddr : public QDialog
{
    Q_OBJECT
public:
    explicit Dialogmaterialaddr(QWidget *parent = nullptr);
    void retranslate();

    // Fills the dialog from <projectDir>Addr_Info.txt; a missing file gives
    // the unchecked box and empty fields, a damaged one is told and what
    // could be read is shown. alignUnit: the build's align unit;
    // flashLimit: the flash size in bytes (0: no limit).
    void openFor(const QString &projectDir, qint64 alignUnit, qint64 flashLimit = 0);
    // What the fields hold, as OK would write it.
    OtaAddresses addresses() const;
    QString filePath() const;

public slots:
    void on_lineEdit_Font_ReserveLength_editingFinished();
    void on_lineEdit_MultiLanguage_ReserveLength_editingFinished();
    void on_lineEdit_WAV_ReserveLength_editingFinished();
    void on_lineEdit_GIF_ReserveLength_editingFinished();
    void on_lineEdit_Image_ReserveLength_editingFinished();
    void on_lineEdit_Icon_ReserveLength_editingFinished();
    void on_lineEdit_Text_ReserveLength_editingFinished();
    // Recomputes, writes Addr_Info.txt and closes; a failed write keeps it open.
    void on_pushButton_OK_clicked();
    void on_pushButton_Cancel_clicked();

private:
    struct Row {
        QLabel *name;
        QLineEdit *start;
        QLineEdit *size;
        QLineEdit *reserve;
    };
    void recompute();
    void fill(const OtaAddresses &a);

    QString m_projectDir;
    qint64 m_alignUnit = 0x20000;
    qint64 m_flashLimit = 0;
    OtaAddresses m_loaded; // what the fields don't show: the ends and counts
    OtaMemory m_previous;  // the reserves and ends of the file as opened
    Row m_rows[kMaterialCount];
    QCheckBox *checkBox;
    QLabel *m_hint;
    QLabel *m_status;
    QLabel *m_heads[3];
    QPushButton *pushButton_OK;
    QPushButton *pushButton_Cancel;
};

} // namespace vantile
