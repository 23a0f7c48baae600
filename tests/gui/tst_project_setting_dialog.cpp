// The project settings dialog on the offscreen platform: the chip rules as the
// user meets them through comboBox_ICType, the TFT and flash type memories,
// validators, the hidden chips, the resolution question on close, and the
// way edits reach the settings model and its file.

#include "app/Prompts.h"
#include "editors/DialogProjectSetting.h"
#include "project/ProjectSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalSpy>
#include <QTranslator>
#include <QtTest>

using namespace vantile;

namespace {

const char *const kTftEdits[] = {"lineEdit_HBPD", "lineEdit_HFPD", "lineEdit_HSPW",
                                 "lineEdit_VBPD", "lineEdit_VFPD", "lineEdit_VSPW"};
const char *const kTftChecks[] = {"checkBox_PCLK", "checkBox_HSYNC", "checkBox_VSYNC", "checkBox_DE", "checkBox_BGR"};

// Marks every text it is asked for, so that a test sees which texts went
// through the translator.
class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char * = nullptr, int = -1) const override
    {
        if (qstrcmp(context, "vantile::DialogProjectSetting") != 0)
            return QString();
        return QStringLiteral("<") + QString::fromUtf8(sourceText) + QStringLiteral(">");
    }
};

} // namespace

class TestProjectSettingDialog : public QObject
{
    Q_OBJECT

    ProjectSettings *m_model = nullptr;
    DialogProjectSetting *m_dialog = nullptr;
    QMessageBox::StandardButton m_answer = QMessageBox::NoButton;

    template <typename T>
    T *field(const char *name)
    {
        T *w = m_dialog->findChild<T *>(QLatin1String(name));
        if (!w)
            qFatal("no form object %s", name);
        return w;
    }
    QLineEdit *edit(const char *name) { return field<QLineEdit>(name); }
    QCheckBox *check(const char *name) { return field<QCheckBox>(name); }
    QComboBox *combo(const char *name) { return field<QComboBox>(name); }

    // The user picks a chip in the combo.
    void chooseChip(int chip) { combo("comboBox_ICType")->setCurrentIndex(chip); }

    // The user replaces the text of a field by typing.
    void typeInto(QLineEdit *e, const QString &text)
    {
        e->setFocus();
        e->selectAll();
        QTest::keyClick(e, Qt::Key_Delete);
        QTest::keyClicks(e, text);
    }

    static QValidator::State validate(QLineEdit *e, QString text)
    {
        int pos = 0;
        return e->validator()->validate(text, pos);
    }

private slots:
    void init()
    {
        m_model = new ProjectSettings;
        m_dialog = new DialogProjectSetting;
        m_dialog->setSettings(m_model);
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_answer = QMessageBox::NoButton;
        Prompts::Responder r;
        r.answer = [this](const PromptRecord &) { return m_answer; };
        Prompts::installResponder(r);
    }

    void cleanup()
    {
        Prompts::removeResponder();
        delete m_dialog;
        delete m_model;
        m_dialog = nullptr;
        m_model = nullptr;
    }

    void formObjectsAndItems()
    {
        const char *const names[] = {
            "lineEdit_USER_KEY", "lineEdit_UserVER", "lineEdit_VC_KEY", "lineEdit_VC_VER", "lineEdit_StartBytes",
            "lineEdit_DevAddr", "lineEdit_DevNum", "lineEdit_XSIZE", "lineEdit_YSIZE", "lineEdit_VBPD",
            "lineEdit_VFPD", "lineEdit_VSPW", "lineEdit_HBPD", "lineEdit_HFPD", "lineEdit_HSPW", "lineEdit_BLON",
            "lineEdit_BLSP", "lineEdit_KPTM", "lineEdit_Volume", "lineEdit_LangueNum", "lineEdit_GeData"};
        for (const char *n : names)
            QVERIFY2(m_dialog->findChild<QLineEdit *>(QLatin1String(n)), n);
        const char *const checks[] = {
            "checkBox_ModbusM", "checkBox_NoFB", "checkBox_NoCRC", "checkBox_PCLK", "checkBox_HSYNC",
            "checkBox_VSYNC", "checkBox_DE", "checkBox_BGR", "checkBox_AutoBL", "checkBox_KeyBeep",
            "checkBoxInitVar", "checkBox_GBKCode", "checkBox_PageImageZip", "checkBox_ByteSwap", "checkBox_aRGB_Png"};
        for (const char *n : checks)
            QVERIFY2(m_dialog->findChild<QCheckBox *>(QLatin1String(n)), n);

        auto items = [](QComboBox *c) {
            QStringList l;
            for (int i = 0; i < c->count(); ++i)
                l << c->itemText(i);
            return l;
        };
        QCOMPARE(items(combo("comboBox_ICType")),
                 QStringList({"VC210", "VC220C", "VC220D", "VC530", "VC540", "VC650", "VC110A", "VC110B(MCU)",
                              "VC110B(RGB)", "VC110B(QSPI)", "VC110B+PSRAM(RGB)"}));
        QCOMPARE(items(combo("comboBox_RGBIF")), QStringList({"RGB565", "RGB888"}));
        QCOMPARE(items(combo("comboBox_Rotate")),
                 QStringList({"  0 Degree", " 90 Degree", "180 Degree", "270 Degree"}));
        QCOMPARE(items(combo("comboBox_FlhSize")), QStringList({"  2MB", "  4MB", "  8MB", " 16MB", " 32MB",
                                                                " 64MB", "128MB", "256MB", "512MB"}));
        QCOMPARE(items(combo("comboBox_BAUD")),
                 QStringList({"9600", "19200", "38400", "57600", "115200", "230400", "256000", "460800", "921600",
                              "1382400"}));
        QCOMPARE(items(combo("comboBox_EOCheck")), QStringList({"None", "Even", "Odd"}));
        QCOMPARE(items(combo("comboBox_SPage")), QStringList({"Page0000", "Page0001"}));
        QCOMPARE(items(combo("comboBox_NdlDType")), QStringList({"aRGB4444", "aRGB4444 Zip"}));
        QCOMPARE(items(combo("comboBox_FalshType")), QStringList({"NandFlash", "NorFlash"}));

        // Start indices of a fresh dialog.
        DialogProjectSetting fresh;
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_ICType")->currentText(), QStringLiteral("VC530"));
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_BAUD")->currentText(), QStringLiteral("115200"));
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_FlhSize")->currentText(), QStringLiteral(" 16MB"));
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_FalshType")->currentText(), QStringLiteral("NorFlash"));
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_RGBIF")->currentIndex(), 0);
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_Rotate")->currentIndex(), 0);
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_EOCheck")->currentIndex(), 0);
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_SPage")->currentIndex(), 0);
        QCOMPARE(fresh.findChild<QComboBox *>("comboBox_NdlDType")->currentIndex(), 0);

        // The supplier fields show the fixed values and can't be typed into.
        QCOMPARE(edit("lineEdit_VC_VER")->text(), QStringLiteral("V3.20"));
        QCOMPARE(edit("lineEdit_VC_KEY")->text(), QStringLiteral("0x5E21B7C4"));
        QVERIFY(edit("lineEdit_VC_VER")->isReadOnly());
        QVERIFY(edit("lineEdit_VC_KEY")->isReadOnly());
        QTest::keyClicks(edit("lineEdit_VC_KEY"), "12");
        QCOMPARE(m_model->supplierId, QStringLiteral("0x5E21B7C4"));
        QTest::keyClicks(edit("lineEdit_UserVER"), "V9");
        QCOMPARE(m_model->userVer, QString());
    }

    void fixedTexts()
    {
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Project Setting"));
        QStringList frames;
        for (QGroupBox *g : m_dialog->findChildren<QGroupBox *>())
            frames << g->title();
        frames.sort();
        QCOMPARE(frames, QStringList({"Application", "Communication", "General", "TFT panel", "User Information"}));

        QStringList labels;
        for (QLabel *l : m_dialog->findChildren<QLabel *>())
            labels << l->text();
        for (const char *t : {"Projrct Setting", "Volume (0~16)", "Sleep (0~63)", "Normal (10~63)", "Hold time (s)"})
            QVERIFY2(labels.contains(QLatin1String(t)), t);

        const QList<QPair<const char *, const char *>> checkTexts = {
            {"checkBox_ModbusM", "Master mode"},     {"checkBox_NoCRC", "No CRC padding"},
            {"checkBox_NoFB", "No reply"},           {"checkBox_KeyBeep", "Key with beep"},
            {"checkBoxInitVar", "Initialize variable"}, {"checkBox_GBKCode", "With GBKCode"},
            {"checkBox_PageImageZip", "Page Image Zip"}, {"checkBox_ByteSwap", "Byte Swap"},
            {"checkBox_aRGB_Png", "aRGB Png"},       {"checkBox_AutoBL", "Auto Dimming"},
            {"checkBox_PCLK", "PCLK_Falling"},       {"checkBox_HSYNC", "HSYNC_High"},
            {"checkBox_VSYNC", "VSYNC_High"},        {"checkBox_DE", "DE_High"},
            {"checkBox_BGR", "BGR"}};
        for (const auto &p : checkTexts)
            QCOMPARE(check(p.first)->text(), QLatin1String(p.second));
    }

    // Enabled states and values after the user picks chip `to`, coming from
    // chip `from`. Before the pick the user set RGB888 (on chip 3), went to
    // `from`, and ticked Byte Swap and Page Image Zip where they could be
    // ticked. Expectations follow the chip table row by row; "left" columns
    // take what `from` had.
    void chipDependency_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("byteSwapEnabled");
        QTest::addColumn<bool>("zipEnabled");
        QTest::addColumn<bool>("zipChecked");
        QTest::addColumn<int>("rgbIf");
        QTest::addColumn<int>("flashModel"); // 0 Nand, 1 Nor, 2 blank
        QTest::addColumn<bool>("flashEnabled");
        QTest::addColumn<bool>("rotateEnabled");
        QTest::addColumn<bool>("tftCleared");

        //                           from to  bswap  zipEn  zipChk rgb flash flEn   rotEn  cleared
        QTest::newRow("9->0 VC210") << 9 << 0 << true << false << false << 0 << 2 << false << false << true;
        QTest::newRow("9->1 VC220C") << 9 << 1 << true << false << false << 0 << 2 << false << false << true;
        QTest::newRow("9->2 VC220D") << 9 << 2 << true << false << false << 0 << 2 << false << false << true;
        QTest::newRow("9->3 VC530") << 9 << 3 << false << false << false << 1 << 1 << true << true << false;
        QTest::newRow("9->4 VC540") << 9 << 4 << false << true << true << 1 << 1 << false << true << false;
        QTest::newRow("9->5 VC650 keeps") << 9 << 5 << false << true << true << 1 << 2 << true << true << false;
        QTest::newRow("9->6 VC110A") << 9 << 6 << true << true << true << 1 << 2 << false << true << true;
        QTest::newRow("9->7 VC110B(MCU)") << 9 << 7 << true << true << true << 1 << 2 << false << true << true;
        QTest::newRow("9->8 VC110B(RGB)") << 9 << 8 << false << true << true << 1 << 2 << false << true << false;
        QTest::newRow("6->9 VC110B(QSPI)") << 6 << 9 << true << true << true << 1 << 2 << false << true << false;
        QTest::newRow("9->10 PSRAM") << 9 << 10 << false << true << true << 1 << 2 << false << true << false;
        // VC650 leaves zip, rotate, flash value and TFT as the chip before had them.
        QTest::newRow("0->5 keeps cleared") << 0 << 5 << false << false << false << 0 << 2 << true << false << true;
        QTest::newRow("4->5 keeps Nor") << 4 << 5 << false << true << true << 1 << 1 << true << true << false;
        QTest::newRow("6->5 keeps cleared") << 6 << 5 << false << true << true << 1 << 2 << true << true << true;
        // Back to VC530 from a chip that forced RGB565 and cleared the TFT fields.
        QTest::newRow("0->3 restores") << 0 << 3 << false << false << false << 0 << 1 << true << true << false;
    }

    void chipDependency()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, byteSwapEnabled);
        QFETCH(bool, zipEnabled);
        QFETCH(bool, zipChecked);
        QFETCH(int, rgbIf);
        QFETCH(int, flashModel);
        QFETCH(bool, flashEnabled);
        QFETCH(bool, rotateEnabled);
        QFETCH(bool, tftCleared);

        QCOMPARE(combo("comboBox_ICType")->currentIndex(), 3);
        combo("comboBox_RGBIF")->setCurrentIndex(1);
        if (from != 3)
            chooseChip(from);
        if (check("checkBox_ByteSwap")->isEnabled())
            check("checkBox_ByteSwap")->click();
        if (check("checkBox_PageImageZip")->isEnabled())
            check("checkBox_PageImageZip")->click();

        QSignalSpy icSpy(m_dialog, &DialogProjectSetting::ICType_change);
        chooseChip(to);
        QCOMPARE(icSpy.count(), 1);
        QCOMPARE(icSpy.at(0).at(0).toInt(), to);
        QCOMPARE(m_model->panelType, to);

        QCOMPARE(check("checkBox_ByteSwap")->isChecked(), false);
        QCOMPARE(m_model->byteSwap, false);
        QCOMPARE(check("checkBox_ByteSwap")->isEnabled(), byteSwapEnabled);

        QCOMPARE(check("checkBox_PageImageZip")->isEnabled(), zipEnabled);
        QCOMPARE(check("checkBox_PageImageZip")->isChecked(), zipChecked);
        QCOMPARE(m_model->pageImageZip, zipChecked);

        QCOMPARE(combo("comboBox_RGBIF")->currentIndex(), rgbIf);
        QCOMPARE(m_model->colorDepth, rgbIf);

        QComboBox *flash = combo("comboBox_FalshType");
        QCOMPARE(m_model->flashTypeIndex, flashModel);
        QCOMPARE(flash->currentText(), flashModel == 0 ? QStringLiteral("NandFlash")
                                       : flashModel == 1 ? QStringLiteral("NorFlash")
                                                         : QString());
        QCOMPARE(flash->isEnabled(), flashEnabled);

        QCOMPARE(combo("comboBox_Rotate")->isEnabled(), rotateEnabled);

        const QStringList restored = {"140", "160", "20", "20", "12", "3"};
        for (int i = 0; i < 6; ++i) {
            QLineEdit *e = edit(kTftEdits[i]);
            QCOMPARE(e->isEnabled(), !tftCleared);
            QCOMPARE(e->text(), tftCleared ? QString() : restored[i]);
        }
        const bool restoredChecks[] = {true, true, true, true, false};
        for (int i = 0; i < 5; ++i) {
            QCheckBox *c = check(kTftChecks[i]);
            QCOMPARE(c->isEnabled(), !tftCleared);
            QCOMPARE(c->isChecked(), tftCleared ? false : restoredChecks[i]);
        }
        QCOMPARE(m_model->tft.hbpd, tftCleared ? QString() : QStringLiteral("140"));
        QCOMPARE(m_model->tft.pclk, !tftCleared);
    }

    void tftMemoryKeepsUserValues()
    {
        typeInto(edit("lineEdit_HBPD"), QStringLiteral("99"));
        QCOMPARE(m_model->tft.hbpd, QStringLiteral("99"));
        check("checkBox_PCLK")->click(); // PCLK off
        check("checkBox_BGR")->click();  // BGR on
        QCOMPARE(m_model->tft.pclk, false);

        chooseChip(6);
        for (const char *n : kTftEdits) {
            QCOMPARE(edit(n)->text(), QString());
            QVERIFY(!edit(n)->isEnabled());
        }
        for (const char *n : kTftChecks) {
            QVERIFY(!check(n)->isChecked());
            QVERIFY(!check(n)->isEnabled());
        }
        QCOMPARE(m_model->tft.hbpd, QString());

        // A second clear must not stash the empty fields over the memory.
        chooseChip(7);
        chooseChip(3);
        QCOMPARE(edit("lineEdit_HBPD")->text(), QStringLiteral("99"));
        QCOMPARE(edit("lineEdit_HFPD")->text(), QStringLiteral("160"));
        QCOMPARE(edit("lineEdit_VSPW")->text(), QStringLiteral("3"));
        QVERIFY(edit("lineEdit_HBPD")->isEnabled());
        QVERIFY(!check("checkBox_PCLK")->isChecked());
        QVERIFY(check("checkBox_BGR")->isChecked());
        QVERIFY(check("checkBox_HSYNC")->isChecked());
        QCOMPARE(m_model->tft.hbpd, QStringLiteral("99"));
        QVERIFY(m_model->toIni().contains("\nHBPD: 99\n"));
    }

    void flashTypeRememberedPerChip()
    {
        QComboBox *flash = combo("comboBox_FalshType");
        flash->setCurrentIndex(0); // the user picks NandFlash on VC530
        QCOMPARE(m_model->flashTypeIndex, 0);
        QVERIFY(m_model->toIni().contains("\nFlashType: 1\n"));

        chooseChip(4);
        QCOMPARE(flash->currentText(), QStringLiteral("NorFlash")); // VC540 starts at its own 1
        QVERIFY(!flash->isEnabled());

        chooseChip(3);
        QCOMPARE(flash->currentText(), QStringLiteral("NandFlash"));
        QVERIFY(flash->isEnabled());

        chooseChip(6); // blank on VC110A
        QCOMPARE(flash->currentIndex(), -1);
        QVERIFY(m_model->toIni().contains("\nFlashType: 2\n"));
        chooseChip(3);
        QCOMPARE(flash->currentText(), QStringLiteral("NandFlash"));
        QVERIFY(m_model->toIni().contains("\nFlashType: 1\n"));
    }

    void flashTypeBlankFromFile()
    {
        m_model->readIni("\xEF\xBB\xBF[INFO]\nPanelType: 3\nFlashType: 2\n", 1);
        m_dialog->loadFromSettings();
        QComboBox *flash = combo("comboBox_FalshType");
        QCOMPARE(flash->currentIndex(), -1);
        QCOMPARE(flash->currentText(), QString());
        QVERIFY(flash->isEnabled());
        QVERIFY(m_model->toIni().contains("\nFlashType: 2\n"));

        flash->setCurrentIndex(1); // the user picks NorFlash
        QVERIFY(m_model->toIni().contains("\nFlashType: 0\n"));

        // Other chips ignore the key: VC110A shows blank whatever the file says.
        m_model->readIni("[INFO]\nPanelType: 6\nFlashType: 1\n", 1);
        m_dialog->loadFromSettings();
        QCOMPARE(flash->currentIndex(), -1);
        QVERIFY(!flash->isEnabled());
        QVERIFY(m_model->toIni().contains("\nFlashType: 2\n"));
    }

    void validators()
    {
        const char *const decimal[] = {"lineEdit_XSIZE", "lineEdit_HSPW", "lineEdit_HBPD", "lineEdit_HFPD",
                                       "lineEdit_YSIZE", "lineEdit_VSPW", "lineEdit_VBPD", "lineEdit_VFPD",
                                       "lineEdit_GeData", "lineEdit_BLON", "lineEdit_BLSP", "lineEdit_KPTM",
                                       "lineEdit_DevNum", "lineEdit_Volume"};
        for (const char *n : decimal) {
            QLineEdit *e = edit(n);
            QVERIFY2(e->validator(), n);
            // Two digits at least: one digit can still be typed on the way.
            QCOMPARE(validate(e, "8"), QValidator::Intermediate);
            QCOMPARE(validate(e, ""), QValidator::Intermediate);
            QCOMPARE(validate(e, "80"), QValidator::Acceptable);
            QCOMPARE(validate(e, "0480"), QValidator::Acceptable);
            QCOMPARE(validate(e, "8a"), QValidator::Invalid);
            QCOMPARE(validate(e, "-8"), QValidator::Invalid);
            QCOMPARE(validate(e, "8 0"), QValidator::Invalid);
        }

        QLineEdit *lang = edit("lineEdit_LangueNum");
        QCOMPARE(validate(lang, "0"), QValidator::Invalid);
        QCOMPARE(validate(lang, "05"), QValidator::Invalid);
        QCOMPARE(validate(lang, "1"), QValidator::Intermediate);
        QCOMPARE(validate(lang, "12"), QValidator::Acceptable);
        QCOMPARE(validate(lang, "123456789"), QValidator::Acceptable); // 1 + 8 digits
        QCOMPARE(validate(lang, "1234567890"), QValidator::Invalid);   // 1 + 9 digits

        QLineEdit *addr = edit("lineEdit_DevAddr");
        QCOMPARE(validate(addr, "0x1F"), QValidator::Acceptable);
        QCOMPARE(validate(addr, "0XaB"), QValidator::Acceptable);
        QCOMPARE(validate(addr, "0x1G"), QValidator::Invalid);
        QCOMPARE(validate(addr, "0x01,0x02"), QValidator::Invalid);

        QLineEdit *start = edit("lineEdit_StartBytes");
        QCOMPARE(validate(start, "0x5A,0xA5"), QValidator::Acceptable);
        QCOMPARE(validate(start, "0x5A;0xA5"), QValidator::Invalid);
        QCOMPARE(validate(start, "0x5A, 0xA5"), QValidator::Invalid);

        // Typing: refused keys never reach the field or the model.
        typeInto(lang, QStringLiteral("0"));
        QCOMPARE(lang->text(), QString());
        QCOMPARE(m_model->languageNum, QString());
        typeInto(lang, QStringLiteral("03"));
        QCOMPARE(lang->text(), QStringLiteral("3")); // the "0" is refused, the "3" may start a number
        typeInto(lang, QStringLiteral("a2x4"));
        QCOMPARE(lang->text(), QStringLiteral("24"));
        QCOMPARE(m_model->languageNum, QStringLiteral("24"));

        typeInto(edit("lineEdit_XSIZE"), QStringLiteral("8a0 0"));
        QCOMPARE(edit("lineEdit_XSIZE")->text(), QStringLiteral("800"));
        QCOMPARE(m_model->xsize, QStringLiteral("800"));
        typeInto(addr, QStringLiteral("0x1g2"));
        QCOMPARE(addr->text(), QStringLiteral("0x12"));
        QCOMPARE(m_model->devAddr, QStringLiteral("0x12"));
    }

    void hiddenChips()
    {
        QComboBox *ic = combo("comboBox_ICType");
        auto *view = qobject_cast<QListView *>(ic->view());
        QVERIFY(view);
        QCOMPARE(ic->count(), 11);
        const bool hidden[] = {true, true, true, false, true, true, false, false, false, false, false};
        for (int row = 0; row < 11; ++row)
            QCOMPARE(view->isRowHidden(row), hidden[row]);
        // "VC110B+PSRAM(RGB)" has 17 characters: 17 * 10 * 1.1.
        QCOMPARE(view->minimumWidth(), 187);

        // The keyboard passes over the hidden chips as the list does.
        ic->setFocus();
        QTest::keyClick(ic, Qt::Key_Down);
        QCOMPARE(ic->currentIndex(), 6);
        QCOMPARE(m_model->panelType, 6);
        QTest::keyClick(ic, Qt::Key_Up);
        QCOMPARE(ic->currentIndex(), 3);
        QTest::keyClick(ic, Qt::Key_Up);
        QCOMPARE(ic->currentIndex(), 3);

        // A project can still carry a hidden chip.
        m_model->readIni("[INFO]\nPanelType: 0\n", 1);
        m_dialog->loadFromSettings();
        QCOMPARE(ic->currentIndex(), 0);
        QCOMPARE(ic->currentText(), QStringLiteral("VC210"));
        QVERIFY(!combo("comboBox_Rotate")->isEnabled());
        QVERIFY(!edit("lineEdit_HBPD")->isEnabled());
    }

    void loadShowsTheModel()
    {
        const QByteArray ini = "\xEF\xBB\xBF[INFO]\n"
                               "UserID: 0x1a2b\n"
                               "Baudrate: 10\n"
                               "EOCheck: 2\n"
                               "Modbus: 1\n"
                               "NoCRC: 1\n"
                               "DevAddr: 0xA\n"
                               "PanelType: 11\n"
                               "XSIZE: 1024\n"
                               "YSIZE: 600\n"
                               "HBPD: 46\n"
                               "DEPolarity: 0\n"
                               "ColorDepth: 1\n"
                               "Rotate: 2\n"
                               "FlashSize: 5\n"
                               "BLON:60\n"
                               "KeyBeep: 1\n"
                               "StartPage:2\n"
                               "Volume:12\n"
                               "NDLDType:1\n"
                               "LanguageNum:4\n";
        m_model->readIni(ini, 3);
        m_dialog->setPageItems({"Page0000", "Page0001", "Page0002"});
        QSignalSpy icSpy(m_dialog, &DialogProjectSetting::ICType_change);
        m_dialog->loadFromSettings();
        QCOMPARE(icSpy.count(), 1);
        QCOMPARE(icSpy.at(0).at(0).toInt(), 3); // "PanelType: 11" opens as VC530

        QCOMPARE(edit("lineEdit_USER_KEY")->text(), QStringLiteral("0x1A2B"));
        QCOMPARE(combo("comboBox_BAUD")->currentText(), QStringLiteral("115200")); // 10 is out of range
        QCOMPARE(combo("comboBox_EOCheck")->currentText(), QStringLiteral("Odd"));
        QVERIFY(check("checkBox_ModbusM")->isChecked());
        QVERIFY(check("checkBox_NoCRC")->isChecked());
        QVERIFY(!check("checkBox_NoFB")->isChecked());
        QCOMPARE(edit("lineEdit_DevAddr")->text(), QStringLiteral("0x0A"));
        QCOMPARE(combo("comboBox_ICType")->currentText(), QStringLiteral("VC530"));
        QCOMPARE(edit("lineEdit_XSIZE")->text(), QStringLiteral("1024"));
        QCOMPARE(edit("lineEdit_YSIZE")->text(), QStringLiteral("600"));
        QCOMPARE(edit("lineEdit_HBPD")->text(), QStringLiteral("46"));
        QVERIFY(!check("checkBox_DE")->isChecked());
        QVERIFY(check("checkBox_HSYNC")->isChecked()); // key missing: stays at its default
        QCOMPARE(combo("comboBox_RGBIF")->currentText(), QStringLiteral("RGB888")); // VC530 keeps it
        QCOMPARE(combo("comboBox_Rotate")->currentText(), QStringLiteral("180 Degree"));
        QCOMPARE(combo("comboBox_FlhSize")->currentText(), QStringLiteral(" 64MB"));
        QCOMPARE(edit("lineEdit_BLON")->text(), QStringLiteral("60"));
        QVERIFY(check("checkBox_KeyBeep")->isChecked());
        QCOMPARE(combo("comboBox_SPage")->currentText(), QStringLiteral("Page0002"));
        QCOMPARE(edit("lineEdit_Volume")->text(), QStringLiteral("12"));
        QCOMPARE(combo("comboBox_NdlDType")->currentText(), QStringLiteral("aRGB4444 Zip"));
        QCOMPARE(edit("lineEdit_LangueNum")->text(), QStringLiteral("4"));

        // Fewer pages: the start page falls back to the first one.
        m_dialog->setPageItems({"Page0000", "Page0001"});
        QCOMPARE(combo("comboBox_SPage")->currentIndex(), 0);
        QCOMPARE(m_model->startPage, 0);

        // "ColorDepth: 1" on VC110A is shown and written as RGB565.
        m_model->readIni("[INFO]\nPanelType: 6\nColorDepth: 1\n", 2);
        m_dialog->loadFromSettings();
        QCOMPARE(combo("comboBox_RGBIF")->currentText(), QStringLiteral("RGB565"));
        QVERIFY(m_model->toIni().contains("\nColorDepth: 0\n"));
    }

    void loadDoesNotTouchValues()
    {
        // Chip 6 with TFT values in the file: loading shows them as they are,
        // only the enabled states follow the chip.
        m_model->panelType = 6;
        m_model->tft.hbpd = QStringLiteral("33");
        m_model->tftCleared = true;
        m_model->flashTypeIndex = 2;
        m_model->byteSwap = true;
        m_dialog->loadFromSettings();
        QCOMPARE(edit("lineEdit_HBPD")->text(), QStringLiteral("33"));
        QVERIFY(!edit("lineEdit_HBPD")->isEnabled());
        QVERIFY(check("checkBox_ByteSwap")->isChecked());
        QVERIFY(check("checkBox_ByteSwap")->isEnabled());
        QCOMPARE(m_model->tft.hbpd, QStringLiteral("33"));
        QVERIFY(m_model->byteSwap);
        QCOMPARE(m_model->panelType, 6);
    }

    void pageZipFollowsTheChipOnRead()
    {
        chooseChip(4); // Page Image Zip on
        QVERIFY(check("checkBox_PageImageZip")->isEnabled());
        // A VC650 project read from its file: the check is off and greyed,
        // whatever the dialog showed before.
        m_model->readIni("[INFO]\nPanelType: 5\nPIMGZip: 1\n", 1);
        m_dialog->loadFromSettings();
        QVERIFY(!check("checkBox_PageImageZip")->isChecked());
        QVERIFY(!check("checkBox_PageImageZip")->isEnabled());
        // A VC110B(RGB) project keeps it.
        m_model->readIni("[INFO]\nPanelType: 8\nPIMGZip: 1\n", 1);
        m_dialog->loadFromSettings();
        QVERIFY(check("checkBox_PageImageZip")->isChecked());
        QVERIFY(check("checkBox_PageImageZip")->isEnabled());
    }

    void editsReachTheModelAndTheFile()
    {
        typeInto(edit("lineEdit_USER_KEY"), QStringLiteral("0x12AB"));
        typeInto(edit("lineEdit_XSIZE"), QStringLiteral("480"));
        typeInto(edit("lineEdit_YSIZE"), QStringLiteral("272"));
        typeInto(edit("lineEdit_StartBytes"), QStringLiteral("0x5A,0xA6"));
        typeInto(edit("lineEdit_DevNum"), QStringLiteral("17"));
        typeInto(edit("lineEdit_KPTM"), QStringLiteral("30"));
        typeInto(edit("lineEdit_GeData"), QStringLiteral("64"));
        combo("comboBox_BAUD")->setCurrentIndex(6);
        combo("comboBox_EOCheck")->setCurrentIndex(1);
        combo("comboBox_Rotate")->setCurrentIndex(1);
        combo("comboBox_FlhSize")->setCurrentIndex(7);
        combo("comboBox_SPage")->setCurrentIndex(1);
        check("checkBox_NoFB")->click();
        check("checkBox_AutoBL")->click();
        check("checkBoxInitVar")->click();
        check("checkBox_GBKCode")->click();
        check("checkBox_aRGB_Png")->click();
        check("checkBox_HSYNC")->click(); // off

        QCOMPARE(m_model->userId, QStringLiteral("0x12AB"));
        QCOMPARE(m_model->xsize, QStringLiteral("480"));
        QCOMPARE(m_model->ysize, QStringLiteral("272"));
        QCOMPARE(m_model->baudrate, 6);
        QCOMPARE(m_model->rotate, 1);
        QCOMPARE(m_model->startPage, 1);
        QVERIFY(m_model->noFeedBack);
        QVERIFY(m_model->gbkCode);
        QCOMPARE(m_model->charTableBound(), 0x100);
        QVERIFY(!m_model->tft.hsync);
        // Rotation 1: the canvas is YSIZE wide and XSIZE high.
        QCOMPARE(m_model->canvasSize(), QSize(272, 480));

        const QByteArray ini = m_model->toIni();
        for (const char *line : {"\nUserID: 0x12AB\n", "\nXSIZE: 480\n", "\nYSIZE: 272\n", "\nStartByte: 0x5A,0xA6\n",
                                 "\nDevNum: 17\n", "\nKPTM:30\n", "\nGeData:64\n", "\nBaudrate: 6\n",
                                 "\nEOCheck: 1\n", "\nRotate: 1\n", "\nFlashSize: 7\n", "\nStartPage:1\n",
                                 "\nNoFeedBack: 1\n", "\nAutoBL: 1\n", "\nInitVar: 1\n", "\nGBKCode: 1\n",
                                 "\naRGB_Png: 1\n", "\nHSYNCPolarity: 0\n", "\nPCLKRISING: 1\n"})
            QVERIFY2(ini.contains(line), line);

        // The file read into a second dialog shows the same fields.
        ProjectSettings again;
        again.readIni(ini, 2);
        DialogProjectSetting other;
        other.setSettings(&again);
        other.loadFromSettings();
        for (const char *n : {"lineEdit_USER_KEY", "lineEdit_XSIZE", "lineEdit_YSIZE", "lineEdit_StartBytes",
                              "lineEdit_DevNum", "lineEdit_KPTM", "lineEdit_GeData", "lineEdit_HBPD"})
            QCOMPARE(other.findChild<QLineEdit *>(n)->text(), edit(n)->text());
        for (const char *n : {"comboBox_BAUD", "comboBox_EOCheck", "comboBox_Rotate", "comboBox_FlhSize",
                              "comboBox_SPage", "comboBox_ICType", "comboBox_FalshType"})
            QCOMPARE(other.findChild<QComboBox *>(n)->currentIndex(), combo(n)->currentIndex());
        for (const char *n : {"checkBox_NoFB", "checkBox_AutoBL", "checkBoxInitVar", "checkBox_GBKCode",
                              "checkBox_aRGB_Png", "checkBox_HSYNC", "checkBox_PCLK"})
            QCOMPARE(other.findChild<QCheckBox *>(n)->isChecked(), check(n)->isChecked());
    }

    void resolutionQuestion_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("stays");
        QTest::addColumn<QString>("xAfter");
        QTest::addColumn<int>("refreshes");
        QTest::newRow("Yes keeps") << int(QMessageBox::Yes) << false << "1024" << 1;
        QTest::newRow("No restores") << int(QMessageBox::No) << false << "800" << 1;
        QTest::newRow("Cancel stays open") << int(QMessageBox::Cancel) << true << "1024" << 0;
    }

    void resolutionQuestion()
    {
        QFETCH(int, answer);
        QFETCH(bool, stays);
        QFETCH(QString, xAfter);
        QFETCH(int, refreshes);

        m_model->xsize = QStringLiteral("800");
        m_model->ysize = QStringLiteral("480");
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_dialog->show();
        typeInto(edit("lineEdit_XSIZE"), QStringLiteral("1024"));

        QSignalSpy refresh(m_dialog, &DialogProjectSetting::Resolution_refres);
        QSignalSpy newClose(m_dialog, &DialogProjectSetting::new_prj_setting_close);
        m_answer = QMessageBox::StandardButton(answer);
        QPushButton *ok = m_dialog->findChild<QPushButton *>();
        QVERIFY(ok);
        ok->click();

        QCOMPARE(Prompts::recorded().size(), 1);
        QCOMPARE(Prompts::recorded().at(0).kind, QStringLiteral("question"));
        QCOMPARE(Prompts::recorded().at(0).title, QStringLiteral("Message"));
        QCOMPARE(Prompts::recorded().at(0).text,
                 QStringLiteral("Modifying the resolution may cause the page to be distorted, are you sure to modify it?"));
        QCOMPARE(m_dialog->isVisible(), stays);
        QCOMPARE(edit("lineEdit_XSIZE")->text(), xAfter);
        QCOMPARE(m_model->xsize, xAfter);
        QCOMPARE(edit("lineEdit_YSIZE")->text(), QStringLiteral("480"));
        QCOMPARE(refresh.count(), refreshes);
        QCOMPARE(newClose.count(), 0);

        // Closing once more: after Yes and No the size is the stored one and
        // nothing is asked; after Cancel the question comes again.
        Prompts::recorded().clear();
        m_answer = QMessageBox::Yes;
        m_dialog->show();
        m_dialog->close();
        QCOMPARE(Prompts::recorded().size(), stays ? 1 : 0);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->storedXSize(), xAfter);
    }

    void escapeAsksToo()
    {
        m_model->xsize = QStringLiteral("800");
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_dialog->show();
        typeInto(edit("lineEdit_YSIZE"), QStringLiteral("600"));
        m_answer = QMessageBox::Cancel;
        QTest::keyClick(m_dialog, Qt::Key_Escape);
        QCOMPARE(Prompts::recorded().size(), 1);
        QVERIFY(m_dialog->isVisible());
        m_answer = QMessageBox::No;
        QTest::keyClick(m_dialog, Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_model->ysize, QString()); // the stored size was empty
    }

    void unchangedSizeClosesQuietly()
    {
        m_dialog->show();
        typeInto(edit("lineEdit_Volume"), QStringLiteral("10"));
        QSignalSpy refresh(m_dialog, &DialogProjectSetting::Resolution_refres);
        m_dialog->close();
        QVERIFY(Prompts::recorded().isEmpty());
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(refresh.count(), 1);
    }

    void newProjectModeSignalsClose()
    {
        m_dialog->setNewProjectMode(true);
        QVERIFY(m_dialog->newProjectMode());
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_dialog->show();
        typeInto(edit("lineEdit_XSIZE"), QStringLiteral("320"));
        typeInto(edit("lineEdit_YSIZE"), QStringLiteral("240"));

        QSignalSpy refresh(m_dialog, &DialogProjectSetting::Resolution_refres);
        QSignalSpy newClose(m_dialog, &DialogProjectSetting::new_prj_setting_close);
        QStringList order;
        connect(m_dialog, &DialogProjectSetting::Resolution_refres, this, [&] { order << "refresh"; });
        connect(m_dialog, &DialogProjectSetting::new_prj_setting_close, this, [&] { order << "new"; });
        m_dialog->close();
        QVERIFY(Prompts::recorded().isEmpty()); // no resolution question for a new project
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(refresh.count(), 1);
        QCOMPARE(newClose.count(), 1);
        QCOMPARE(order, QStringList({"refresh", "new"}));
        QCOMPARE(m_model->canvasSize(), QSize(320, 240));
        // The caller ends the mode; the dialog does not.
        QVERIFY(m_dialog->newProjectMode());
    }

    void retranslateReachesEveryText()
    {
        combo("comboBox_Rotate")->setCurrentIndex(2);
        combo("comboBox_EOCheck")->setCurrentIndex(1);
        MarkingTranslator marks;
        QCoreApplication::installTranslator(&marks);
        m_dialog->retranslate();
        QCoreApplication::removeTranslator(&marks);

        auto marked = [](const QString &t) { return t.startsWith('<') && t.endsWith('>'); };
        QVERIFY(marked(m_dialog->windowTitle()));
        for (QGroupBox *g : m_dialog->findChildren<QGroupBox *>())
            QVERIFY2(marked(g->title()), qPrintable(g->title()));
        for (QLabel *l : m_dialog->findChildren<QLabel *>())
            QVERIFY2(marked(l->text()), qPrintable(l->text()));
        for (QCheckBox *c : m_dialog->findChildren<QCheckBox *>())
            QVERIFY2(marked(c->text()), qPrintable(c->objectName()));
        for (QPushButton *b : m_dialog->findChildren<QPushButton *>())
            QVERIFY2(marked(b->text()), qPrintable(b->text()));
        QCOMPARE(combo("comboBox_Rotate")->itemText(1), QStringLiteral("< 90 Degree>"));
        QCOMPARE(combo("comboBox_EOCheck")->itemText(2), QStringLiteral("<Odd>"));
        // Technical items stay, indices and the model stay.
        QCOMPARE(combo("comboBox_ICType")->itemText(3), QStringLiteral("VC530"));
        QCOMPARE(combo("comboBox_BAUD")->itemText(4), QStringLiteral("115200"));
        QCOMPARE(combo("comboBox_RGBIF")->itemText(0), QStringLiteral("RGB565"));
        QCOMPARE(combo("comboBox_Rotate")->currentIndex(), 2);
        QCOMPARE(combo("comboBox_EOCheck")->currentIndex(), 1);
        QCOMPARE(m_model->rotate, 2);
        QCOMPARE(m_model->eoCheck, 1);

        m_dialog->retranslate();
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Project Setting"));
        QCOMPARE(combo("comboBox_Rotate")->itemText(1), QStringLiteral(" 90 Degree"));
    }

    void chineseTexts()
    {
        QTranslator cn;
        QVERIFY(cn.load(QStringLiteral(VANTILE_QM_DIR "/Translate_CN.qm")));
        QCoreApplication::installTranslator(&cn);
        m_dialog->retranslate();

        QStringList frames;
        for (QGroupBox *g : m_dialog->findChildren<QGroupBox *>())
            frames << g->title();
        QVERIFY(frames.contains(QStringLiteral("常规")));
        QVERIFY(frames.contains(QStringLiteral("TFT 屏参数")));
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("工程设置"));
        QCOMPARE(check("checkBox_ModbusM")->text(), QStringLiteral("主机模式"));
        QCOMPARE(combo("comboBox_EOCheck")->itemText(0), QStringLiteral("无校验"));

        // The resolution question speaks the same language.
        m_dialog->show();
        typeInto(edit("lineEdit_XSIZE"), QStringLiteral("1280"));
        m_answer = QMessageBox::Yes;
        m_dialog->close();
        QCoreApplication::removeTranslator(&cn);
        QCOMPARE(Prompts::recorded().size(), 1);
        QCOMPARE(Prompts::recorded().at(0).title, QStringLiteral("提示"));
        QCOMPARE(Prompts::recorded().at(0).text, QStringLiteral("修改分辨率可能导致页面变形，确定要修改吗？"));
    }
};

QTEST_MAIN(TestProjectSettingDialog)
#include "tst_project_setting_dialog.moc"
