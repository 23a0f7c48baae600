#pragma once
// The project settings dialog. It edits the ProjectSettings that MainWindow
// owns: every user edit goes straight into the model, and loadFromSettings()
// shows the model again. Created once, shown and hidden.

#include "project/ProjectSettings.h"

#include <QDialog>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <memory>

class QCheckBox;
class QCloseEvent;
class QComboBox;
class QDialogButtonBox;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace vantile {

class DialogProjectSetting : public QDialog
{
    Q_OBJECT
public:
    explicit DialogProjectSetting(QWidget *parent = nullptr);
    ~DialogProjectSetting() override;

    // The model the dialog edits (owned by the caller). Until one is set the
    // dialog edits a private default model.
    void setSettings(ProjectSettings *model);
    ProjectSettings *settings() const { return m_model; }

    // Fills every field from the model, sets the enabled states that follow
    // from the chip index (no value changes), then emits ICType_change.
    void loadFromSettings();

    // Fills comboBox_SPage; the model's start page is kept when it is in range,
    // otherwise the start page becomes 0.
    void setPageItems(const QStringList &items);

    // New-project mode: no resolution question on close, and the close
    // emits new_prj_setting_close().
    void setNewProjectMode(bool on);
    bool newProjectMode() const { return m_newProjectMode; }

    // Remembers the XSIZE/YSIZE texts that the close compares with.
    void storeResolution();
    QString storedXSize() const { return m_storedX; }
    QString storedYSize() const { return m_storedY; }

    // Re-sets every visible text through the translator.
    void retranslate();

signals:
    void Resolution_refres();
    void new_prj_setting_close();
    void ICType_change(int);

public slots:
    void reject() override; // Escape and the title bar go through the close

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void on_comboBox_ICType_currentIndexChanged(int index);
    void on_comboBox_FalshType_currentIndexChanged(int index);

private:
    void buildForm();
    void bindModel();
    void fillFields();
    void applyChipStates(int chip, bool fromLoad);
    void setFlashTypeCombo(int modelIndex);

    // --- form -------------------------------------------------------------
    QLabel *label_Title = nullptr;

    QGroupBox *groupBox_General = nullptr;
    QGroupBox *groupBox_Application = nullptr;
    QGroupBox *groupBox_Communication = nullptr;
    QGroupBox *groupBox_TFT = nullptr;
    QGroupBox *groupBox_UserInfo = nullptr;

    // User information
    QLineEdit *lineEdit_USER_KEY = nullptr;
    QLineEdit *lineEdit_UserVER = nullptr;
    QLineEdit *lineEdit_VC_KEY = nullptr;
    QLineEdit *lineEdit_VC_VER = nullptr;
    // Communication
    QComboBox *comboBox_BAUD = nullptr;
    QComboBox *comboBox_EOCheck = nullptr;
    QCheckBox *checkBox_ModbusM = nullptr;
    QCheckBox *checkBox_NoFB = nullptr;
    QCheckBox *checkBox_NoCRC = nullptr;
    QLineEdit *lineEdit_StartBytes = nullptr;
    QLineEdit *lineEdit_DevAddr = nullptr;
    QLineEdit *lineEdit_DevNum = nullptr;
    // General
    QComboBox *comboBox_ICType = nullptr;
    QComboBox *comboBox_FalshType = nullptr;
    QComboBox *comboBox_FlhSize = nullptr;
    QComboBox *comboBox_SPage = nullptr;
    QLineEdit *lineEdit_LangueNum = nullptr;
    QComboBox *comboBox_NdlDType = nullptr;
    QLineEdit *lineEdit_GeData = nullptr;
    // TFT panel
    QLineEdit *lineEdit_XSIZE = nullptr;
    QLineEdit *lineEdit_YSIZE = nullptr;
    QComboBox *comboBox_Rotate = nullptr;
    QComboBox *comboBox_RGBIF = nullptr;
    QLineEdit *lineEdit_VBPD = nullptr;
    QLineEdit *lineEdit_VFPD = nullptr;
    QLineEdit *lineEdit_VSPW = nullptr;
    QLineEdit *lineEdit_HBPD = nullptr;
    QLineEdit *lineEdit_HFPD = nullptr;
    QLineEdit *lineEdit_HSPW = nullptr;
    QCheckBox *checkBox_PCLK = nullptr;
    QCheckBox *checkBox_HSYNC = nullptr;
    QCheckBox *checkBox_VSYNC = nullptr;
    QCheckBox *checkBox_DE = nullptr;
    QCheckBox *checkBox_BGR = nullptr;
    // Application
    QCheckBox *checkBox_AutoBL = nullptr;
    QLineEdit *lineEdit_BLON = nullptr;
    QLineEdit *lineEdit_BLSP = nullptr;
    QLineEdit *lineEdit_KPTM = nullptr;
    QLineEdit *lineEdit_Volume = nullptr;
    QCheckBox *checkBox_KeyBeep = nullptr;
    QCheckBox *checkBoxInitVar = nullptr;
    QCheckBox *checkBox_GBKCode = nullptr;
    QCheckBox *checkBox_PageImageZip = nullptr;
    QCheckBox *checkBox_ByteSwap = nullptr;
    QCheckBox *checkBox_aRGB_Png = nullptr;

    QDialogButtonBox *buttonBox = nullptr;

    // The labels in front of the fields, with their English text.
    QList<QPair<QLabel *, const char *>> m_labels;

    // Field <-> model member pairs of the plain fields.
    struct Bindings;
    std::unique_ptr<Bindings> m_bind;

    // --- state ------------------------------------------------------------
    ProjectSettings m_ownModel;
    ProjectSettings *m_model = &m_ownModel;
    bool m_loading = false;        // fields are being filled: edits are not the user's
    bool m_newProjectMode = false;
    QString m_storedX;
    QString m_storedY;
};

} // namespace vantile
