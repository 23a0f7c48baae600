// The project settings dialog on the offscreen platform: the chip rules as the
// user meets them, and the way edits reach the settings model and its file.

#include "GuiTestSupport.h"
#include "editors/DialogProjectSetting.h"
#include "project/ProjectSettings.h"

using namespace gui;

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
        return qstrcmp(context, "vantile::DialogProjectSetting") ? QString() : "<" + QString::fromUtf8(sourceText) + ">";
    }
};

} // namespace

class TestProjectSettingDialog : public QObject
{
    Q_OBJECT

    ProjectSettings *m_model = nullptr;
    DialogProjectSetting *m_dialog = nullptr;
    Answers m_answers;

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
        int pos = 0; // a field without a validator takes anything
        return e->validator() ? e->validator()->validate(text, pos) : QValidator::Acceptable;
    }

    // What a field shows: a line's text, a combo's current text, a check as "1" or "0".
    static QString shown(QWidget *w)
    {
        if (auto *e = qobject_cast<QLineEdit *>(w))
            return e->text();
        if (auto *c = qobject_cast<QComboBox *>(w))
            return c->currentText();
        return qobject_cast<QCheckBox *>(w)->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    }
    QString shown(const char *name) { return shown(field<QWidget>(name)); }
    void expectShown(std::initializer_list<QPair<const char *, const char *>> fields)
    {
        QStringList got, want;
        for (const auto &f : fields) {
            got << QLatin1String(f.first) + QLatin1Char('=') + shown(f.first);
            want << QLatin1String(f.first) + QLatin1Char('=') + QString::fromUtf8(f.second);
        }
        QCOMPARE(got, want);
    }

private slots:
    void init()
    {
        m_model = new ProjectSettings;
        m_dialog = new DialogProjectSetting;
        m_dialog->setSettings(m_model);
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_answers.install();
    }

    void cleanup()
    {
        Prompts::removeResponder();
        delete m_dialog;
        delete m_model;
    }

    void chipListAndSupplierFields()
    {
        // The settings file stores the chip as its index in this list.
        QStringList chips;
        for (int i = 0; i < combo("comboBox_ICType")->count(); ++i)
            chips << combo("comboBox_ICType")->itemText(i);
        QCOMPARE(chips, QStringList({"VC210", "VC220C", "VC220D", "VC530", "VC540", "VC650", "VC110A", "VC110B(MCU)",
                                     "VC110B(RGB)", "VC110B(QSPI)", "VC110B+PSRAM(RGB)"}));
        // The supplier fields can't be typed into.
        QVERIFY(edit("lineEdit_VC_VER")->isReadOnly());
        QTest::keyClicks(edit("lineEdit_VC_KEY"), "12");
        QCOMPARE(m_model->supplierId, QStringLiteral("0x5E21B7C4"));
        QTest::keyClicks(edit("lineEdit_UserVER"), "V9");
        QCOMPARE(m_model->userVer, QString());
    }

    // What the chip rules decide, as one line: Byte Swap, Page Image Zip,
    // the RGB interface, the flash type, the rotation, the TFT fields.
    // "fixed" is a greyed field; the TFT fields are "kept" with the values
    // of a new project, or "cleared" (empty, unticked and greyed).
    QString chipState()
    {
        QCheckBox *zip = check("checkBox_PageImageZip");
        QComboBox *flash = combo("comboBox_FalshType");
        QStringList state;
        state << (check("checkBox_ByteSwap")->isEnabled() ? "swap" : "fixed swap");
        state << QStringLiteral("%1zip %2").arg(zip->isEnabled() ? "" : "fixed ", zip->isChecked() ? "on" : "off");
        state << combo("comboBox_RGBIF")->currentText();
        state << QStringLiteral("%1flash %2").arg(flash->isEnabled() ? "" : "fixed ",
                                                  flash->currentIndex() < 0 ? "blank" : flash->currentText());
        state << (combo("comboBox_Rotate")->isEnabled() ? "rotate" : "fixed rotate");
        QStringList tft;
        bool enabled = true, disabled = true;
        for (const char *n : kTftEdits) {
            tft << edit(n)->text();
            (edit(n)->isEnabled() ? disabled : enabled) = false;
        }
        for (const char *n : kTftChecks) {
            tft << shown(n);
            (check(n)->isEnabled() ? disabled : enabled) = false;
        }
        const QString t = tft.join(QLatin1Char(','));
        state << (enabled && t == QLatin1String("140,160,20,20,12,3,1,1,1,1,0")  ? "TFT kept"
                  : disabled && t == QLatin1String(",,,,,,0,0,0,0,0") ? "TFT cleared"
                                                                         : "TFT " + t);
        return state.join(QStringLiteral(", "));
    }

    // The user picks chip `to`, coming from chip `from`. Before the pick the
    // user set RGB888 (on chip 3), went to `from`, and ticked Byte Swap and
    // Page Image Zip where they could be ticked. Byte Swap is always unticked
    // by a pick; VC650 leaves zip, rotation, flash type and TFT fields as
    // the chip before had them.
    void chipDependency_data()
    {
        addColumns<int, int, QString>("from", "to", "state");
        const struct { int from, to; const char *state; } rows[] = {
            {9, 0, "swap, fixed zip off, RGB565, fixed flash blank, fixed rotate, TFT cleared"},
            {9, 1, "swap, fixed zip off, RGB565, fixed flash blank, fixed rotate, TFT cleared"},
            {9, 2, "swap, fixed zip off, RGB565, fixed flash blank, fixed rotate, TFT cleared"},
            {9, 3, "fixed swap, fixed zip off, RGB888, flash NorFlash, rotate, TFT kept"},
            {9, 4, "fixed swap, zip on, RGB888, fixed flash NorFlash, rotate, TFT kept"},
            {9, 5, "fixed swap, zip on, RGB888, flash blank, rotate, TFT kept"},
            {9, 6, "swap, zip on, RGB888, fixed flash blank, rotate, TFT cleared"},
            {9, 7, "swap, zip on, RGB888, fixed flash blank, rotate, TFT cleared"},
            {9, 8, "fixed swap, zip on, RGB888, fixed flash blank, rotate, TFT kept"},
            {6, 9, "swap, zip on, RGB888, fixed flash blank, rotate, TFT kept"},
            {9, 10, "fixed swap, zip on, RGB888, fixed flash blank, rotate, TFT kept"},
            {0, 5, "fixed swap, fixed zip off, RGB565, flash blank, fixed rotate, TFT cleared"},
            {4, 5, "fixed swap, zip on, RGB888, flash NorFlash, rotate, TFT kept"},
            {6, 5, "fixed swap, zip on, RGB888, flash blank, rotate, TFT cleared"},
            // back to VC530 from a chip that forced RGB565 and cleared the TFT fields
            {0, 3, "fixed swap, fixed zip off, RGB565, flash NorFlash, rotate, TFT kept"},
        };
        for (const auto &r : rows)
            QTest::addRow("%d->%d", r.from, r.to) << r.from << r.to << QString::fromLatin1(r.state);
    }

    void chipDependency()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QCOMPARE(combo("comboBox_ICType")->currentIndex(), 3);
        combo("comboBox_RGBIF")->setCurrentIndex(1);
        if (from != 3)
            chooseChip(from);
        for (const char *n : {"checkBox_ByteSwap", "checkBox_PageImageZip"})
            if (check(n)->isEnabled())
                check(n)->click();

        QSignalSpy icSpy(m_dialog, &DialogProjectSetting::ICType_change);
        chooseChip(to);
        QCOMPARE(icSpy.count(), 1);
        QCOMPARE(icSpy.at(0).at(0).toInt(), to);
        QTEST(chipState(), "state");
        QVERIFY(!check("checkBox_ByteSwap")->isChecked());
        // the model follows the form
        QCOMPARE(m_model->panelType, to);
        QCOMPARE(m_model->byteSwap, false);
        QCOMPARE(m_model->pageImageZip, check("checkBox_PageImageZip")->isChecked());
        QCOMPARE(m_model->colorDepth, combo("comboBox_RGBIF")->currentIndex());
        const int flash = combo("comboBox_FalshType")->currentIndex(); // 0 Nand, 1 Nor, blank
        QCOMPARE(m_model->flashTypeIndex, flash < 0 ? 2 : flash);
        QCOMPARE(m_model->tft.hbpd, edit("lineEdit_HBPD")->text());
        QCOMPARE(m_model->tft.pclk, check("checkBox_PCLK")->isChecked());
    }

    // The TFT fields a chip clears come back as the user left them when a
    // chip that uses them is picked again.
    void tftMemoryKeepsUserValues()
    {
        typeInto(edit("lineEdit_HBPD"), QStringLiteral("99"));
        QCOMPARE(m_model->tft.hbpd, QStringLiteral("99"));
        check("checkBox_PCLK")->click(); // PCLK off
        check("checkBox_BGR")->click();  // BGR on
        QCOMPARE(m_model->tft.pclk, false);
        chooseChip(6);
        QCOMPARE(edit("lineEdit_HBPD")->text(), QString());
        // A second clear must not stash the empty fields over the memory.
        chooseChip(7);
        chooseChip(3);
        expectShown({{"lineEdit_HBPD", "99"}, {"lineEdit_HFPD", "160"}, {"lineEdit_VSPW", "3"}, {"checkBox_PCLK", "0"},
                     {"checkBox_BGR", "1"}, {"checkBox_HSYNC", "1"}});
        QVERIFY(edit("lineEdit_HBPD")->isEnabled() && m_model->toIni().contains("\nHBPD: 99\n"));
    }

    // The flash type is remembered for VC530 across other chips, and written
    // as FlashType 1 for Nand, 0 for Nor, 2 for blank.
    void flashType()
    {
        QComboBox *flash = combo("comboBox_FalshType");
        flash->setCurrentIndex(0); // the user picks NandFlash on VC530
        QCOMPARE(m_model->flashTypeIndex, 0);
        QVERIFY(m_model->toIni().contains("\nFlashType: 1\n"));
        chooseChip(4); // VC540 shows its own Nor
        chooseChip(6); // blank on VC110A
        QVERIFY(m_model->toIni().contains("\nFlashType: 2\n"));
        chooseChip(3);
        QCOMPARE(flash->currentText(), QStringLiteral("NandFlash"));
        QVERIFY(flash->isEnabled() && m_model->toIni().contains("\nFlashType: 1\n"));

        // VC530 read with a blank flash type shows it blank, for the user to pick.
        m_model->readIni("\xEF\xBB\xBF[INFO]\nPanelType: 3\nFlashType: 2\n", 1);
        m_dialog->loadFromSettings();
        QCOMPARE(flash->currentIndex(), -1);
        QVERIFY(flash->isEnabled());
        flash->setCurrentIndex(1); // the user picks NorFlash
        QVERIFY(m_model->toIni().contains("\nFlashType: 0\n"));
        // VC110A shows blank and greyed whatever the file says.
        m_model->readIni("[INFO]\nPanelType: 6\nFlashType: 1\n", 1);
        m_dialog->loadFromSettings();
        QCOMPARE(flash->currentIndex(), -1);
        QVERIFY(!flash->isEnabled());
    }

    // Decimal fields take two digits at least (one can still be typed on
    // the way), and nothing but digits.
    void validators()
    {
        const auto I = QValidator::Invalid, M = QValidator::Intermediate, A = QValidator::Acceptable;
        const QPair<const char *, QValidator::State> decimal[] = {
            {"8", M}, {"", M}, {"80", A}, {"0480", A}, {"8a", I}, {"-8", I}, {"8 0", I}};
        for (const auto &c : decimal)
            QCOMPARE(validate(edit("lineEdit_XSIZE"), c.first), c.second);
        for (const char *n : {"lineEdit_HSPW", "lineEdit_HBPD", "lineEdit_HFPD", "lineEdit_YSIZE", "lineEdit_VSPW",
                              "lineEdit_VBPD", "lineEdit_VFPD", "lineEdit_GeData", "lineEdit_BLON", "lineEdit_BLSP",
                              "lineEdit_KPTM", "lineEdit_DevNum", "lineEdit_Volume"})
            QVERIFY2(validate(edit(n), "8a") == I && validate(edit(n), "80") == A, n);
        const struct {
            const char *field, *text;
            QValidator::State state;
        } cases[] = {
            {"lineEdit_LangueNum", "0", I},          {"lineEdit_LangueNum", "05", I},
            {"lineEdit_LangueNum", "1", A},          {"lineEdit_LangueNum", "12", A}, // one language can be typed
            {"lineEdit_LangueNum", "123456789", A},  {"lineEdit_LangueNum", "1234567890", I}, // 1 + 8 digits at most
            {"lineEdit_DevAddr", "0x1F", A},         {"lineEdit_DevAddr", "0XaB", A},
            {"lineEdit_DevAddr", "0x1G", I},         {"lineEdit_DevAddr", "0x01,0x02", I},
            {"lineEdit_StartBytes", "0x5A,0xA5", A}, {"lineEdit_StartBytes", "0x5A;0xA5", I},
            {"lineEdit_StartBytes", "0x5A, 0xA5", I},
        };
        for (const auto &c : cases)
            QVERIFY2(validate(edit(c.field), c.text) == c.state, c.text);

        // Typing: refused keys never reach the field or the model.
        const struct { const char *field, *typed, *result; QString ProjectSettings::*stored; } typing[] = {
            {"lineEdit_LangueNum", "0", "", &ProjectSettings::languageNum},
            {"lineEdit_LangueNum", "03", "3", &ProjectSettings::languageNum}, // "3" may start a number
            {"lineEdit_LangueNum", "a2x4", "24", &ProjectSettings::languageNum},
            {"lineEdit_XSIZE", "8a0 0", "800", &ProjectSettings::xsize},
            {"lineEdit_DevAddr", "0x1g2", "0x12", &ProjectSettings::devAddr}};
        for (const auto &t : typing) {
            typeInto(edit(t.field), QLatin1String(t.typed));
            QCOMPARE(edit(t.field)->text(), QLatin1String(t.result));
            QCOMPARE(m_model->*t.stored, QLatin1String(t.result));
        }
    }

    void hiddenChips()
    {
        QComboBox *ic = combo("comboBox_ICType");
        auto *view = qobject_cast<QListView *>(ic->view());
        QVERIFY(view);
        const bool hidden[] = {true, true, true, false, true, true, false, false, false, false, false};
        for (int row = 0; row < 11; ++row)
            QCOMPARE(view->isRowHidden(row), hidden[row]);

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
        QVERIFY(!combo("comboBox_Rotate")->isEnabled() && !edit("lineEdit_HBPD")->isEnabled());
    }

    void loadShowsTheModel()
    {
        m_model->readIni("\xEF\xBB\xBF[INFO]\nUserID: 0x1a2b\nBaudrate: 10\nEOCheck: 2\nModbus: 1\nNoCRC: 1\n"
                         "DevAddr: 0xA\nPanelType: 11\nXSIZE: 1024\nYSIZE: 600\nHBPD: 46\nDEPolarity: 0\n"
                         "ColorDepth: 1\nRotate: 2\nFlashSize: 5\nBLON:60\nKeyBeep: 1\nStartPage:2\nVolume:12\n"
                         "NDLDType:1\nLanguageNum:4\n",
                         3);
        m_dialog->setPageItems({"Page0000", "Page0001", "Page0002"});
        QSignalSpy icSpy(m_dialog, &DialogProjectSetting::ICType_change);
        m_dialog->loadFromSettings();
        QCOMPARE(icSpy.count(), 1);
        QCOMPARE(icSpy.at(0).at(0).toInt(), 3); // "PanelType: 11" opens as VC530

        // BAUD 10 is out of range; HSYNC is not in the file and keeps its default;
        // VC530 keeps RGB888.
        expectShown({{"lineEdit_USER_KEY", "0x1A2B"}, {"comboBox_BAUD", "115200"}, {"comboBox_EOCheck", "Odd"},
                     {"checkBox_ModbusM", "1"}, {"checkBox_NoCRC", "1"}, {"checkBox_NoFB", "0"},
                     {"lineEdit_DevAddr", "0x0A"}, {"comboBox_ICType", "VC530"}, {"lineEdit_XSIZE", "1024"},
                     {"lineEdit_YSIZE", "600"}, {"lineEdit_HBPD", "46"}, {"checkBox_DE", "0"},
                     {"checkBox_HSYNC", "1"}, {"comboBox_RGBIF", "RGB888"}, {"comboBox_Rotate", "180 Degree"},
                     {"comboBox_FlhSize", " 64MB"}, {"lineEdit_BLON", "60"}, {"checkBox_KeyBeep", "1"},
                     {"comboBox_SPage", "Page0002"}, {"lineEdit_Volume", "12"},
                     {"comboBox_NdlDType", "aRGB4444 Zip"}, {"lineEdit_LangueNum", "4"}});

        // Fewer pages: the start page falls back to the first one.
        m_dialog->setPageItems({"Page0000", "Page0001"});
        QCOMPARE(combo("comboBox_SPage")->currentIndex(), 0);
        QCOMPARE(m_model->startPage, 0);

        // Loading shows the file's values as they are; only the enabled states
        // follow the chip, except Page Image Zip, which the chip decides.
        m_model->panelType = 6; // VC110A clears the TFT fields when picked, not when loaded
        m_model->tft.hbpd = QStringLiteral("33");
        m_model->tftCleared = true;
        m_model->flashTypeIndex = 2;
        m_model->byteSwap = true;
        m_dialog->loadFromSettings();
        expectShown({{"lineEdit_HBPD", "33"}, {"checkBox_ByteSwap", "1"}});
        QVERIFY(!edit("lineEdit_HBPD")->isEnabled() && check("checkBox_ByteSwap")->isEnabled());
        QCOMPARE(m_model->tft.hbpd, QStringLiteral("33"));
        QVERIFY(m_model->byteSwap);
        QCOMPARE(m_model->panelType, 6);

        chooseChip(4); // Page Image Zip on
        QVERIFY(check("checkBox_PageImageZip")->isEnabled());
        // A VC650 project: the check is off and greyed whatever the dialog showed before.
        m_model->readIni("[INFO]\nPanelType: 5\nPIMGZip: 1\n", 1);
        m_dialog->loadFromSettings();
        QVERIFY(!check("checkBox_PageImageZip")->isChecked() && !check("checkBox_PageImageZip")->isEnabled());
        // A VC110B(RGB) project keeps it.
        m_model->readIni("[INFO]\nPanelType: 8\nPIMGZip: 1\n", 1);
        m_dialog->loadFromSettings();
        QVERIFY(check("checkBox_PageImageZip")->isChecked() && check("checkBox_PageImageZip")->isEnabled());
    }

    void editsReachTheModelAndTheFile()
    {
        const QPair<const char *, const char *> typed[] = {
            {"lineEdit_USER_KEY", "0x12AB"}, {"lineEdit_XSIZE", "480"}, {"lineEdit_YSIZE", "272"},
            {"lineEdit_StartBytes", "0x5A,0xA6"}, {"lineEdit_DevNum", "17"}, {"lineEdit_KPTM", "30"},
            {"lineEdit_GeData", "64"}};
        QStringList names = {"lineEdit_HBPD", "comboBox_ICType", "comboBox_FalshType", "checkBox_PCLK"}; // untouched
        for (const auto &t : typed) {
            typeInto(edit(t.first), QLatin1String(t.second));
            names << t.first;
        }
        const QPair<const char *, int> picked[] = {{"comboBox_BAUD", 6}, {"comboBox_EOCheck", 1},
                                                   {"comboBox_Rotate", 1}, {"comboBox_FlhSize", 7},
                                                   {"comboBox_SPage", 1}};
        for (const auto &p : picked) {
            combo(p.first)->setCurrentIndex(p.second);
            names << p.first;
        }
        for (const char *n : {"checkBox_NoFB", "checkBox_AutoBL", "checkBoxInitVar", "checkBox_GBKCode",
                              "checkBox_aRGB_Png", "checkBox_HSYNC" /* off */}) {
            check(n)->click();
            names << n;
        }

        const QByteArray ini = m_model->toIni();
        for (const char *line : {"\nUserID: 0x12AB\n", "\nXSIZE: 480\n", "\nYSIZE: 272\n", "\nStartByte: 0x5A,0xA6\n",
                                 "\nDevNum: 17\n", "\nKPTM:30\n", "\nGeData:64\n", "\nBaudrate: 6\n",
                                 "\nEOCheck: 1\n", "\nRotate: 1\n", "\nFlashSize: 7\n", "\nStartPage:1\n",
                                 "\nNoFeedBack: 1\n", "\nAutoBL: 1\n", "\nInitVar: 1\n", "\nGBKCode: 1\n",
                                 "\naRGB_Png: 1\n", "\nHSYNCPolarity: 0\n", "\nPCLKRISING: 1\n"})
            QVERIFY2(ini.contains(line), line);
        QCOMPARE(m_model->charTableBound(), 0x100); // GBK on
        // Rotation 1: the canvas is YSIZE wide and XSIZE high.
        QCOMPARE(m_model->canvasSize(), QSize(272, 480));

        // The file read into a second dialog shows the same fields.
        ProjectSettings again;
        again.readIni(ini, 2);
        DialogProjectSetting other;
        other.setSettings(&again);
        other.loadFromSettings();
        for (const QString &n : names)
            QCOMPARE(shown(other.findChild<QWidget *>(n)), shown(qPrintable(n)));
    }

    // Closing with a changed size asks; Yes keeps it, No puts the stored size
    // back, Cancel keeps the dialog open. Escape closes the same way.
    void resolutionQuestion_data()
    {
        addColumns<bool, bool, int, bool, QString>("changed", "escape", "answer", "stays", "xAfter");
        QTest::newRow("OK, Yes keeps") << true << false << int(QMessageBox::Yes) << false << "1024"_q;
        QTest::newRow("OK, No restores") << true << false << int(QMessageBox::No) << false << "800"_q;
        QTest::newRow("OK, Cancel stays open") << true << false << int(QMessageBox::Cancel) << true << "1024"_q;
        QTest::newRow("Escape, No restores") << true << true << int(QMessageBox::No) << false << "800"_q;
        QTest::newRow("Escape, Cancel stays open") << true << true << int(QMessageBox::Cancel) << true << "1024"_q;
        QTest::newRow("unchanged closes quietly") << false << false << int(QMessageBox::Cancel) << false << "800"_q;
    }

    void resolutionQuestion()
    {
        QFETCH(bool, changed);
        QFETCH(bool, escape);
        QFETCH(int, answer);
        QFETCH(bool, stays);
        QFETCH(QString, xAfter);

        m_model->xsize = QStringLiteral("800");
        m_model->ysize = QStringLiteral("480");
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_dialog->show();
        typeInto(edit(changed ? "lineEdit_XSIZE" : "lineEdit_Volume"), QString::fromLatin1(changed ? "1024" : "10"));

        QSignalSpy refresh(m_dialog, &DialogProjectSetting::Resolution_refres);
        QSignalSpy newClose(m_dialog, &DialogProjectSetting::new_prj_setting_close);
        m_answers.answer = QMessageBox::StandardButton(answer);
        if (escape) {
            QTest::keyClick(m_dialog, Qt::Key_Escape);
        } else {
            QPushButton *ok = m_dialog->findChild<QPushButton *>();
            QVERIFY(ok);
            ok->click();
        }

        QCOMPARE(Prompts::recorded().size(), changed ? 1 : 0);
        if (changed) {
            QCOMPARE(Prompts::recorded().at(0).kind, QStringLiteral("question"));
            QCOMPARE(Prompts::recorded().at(0).text, QStringLiteral("Modifying the resolution may cause the page to "
                                                                    "be distorted, are you sure to modify it?"));
        }
        QCOMPARE(m_dialog->isVisible(), stays);
        QCOMPARE(edit("lineEdit_XSIZE")->text(), xAfter);
        QCOMPARE(m_model->xsize, xAfter);
        QCOMPARE(edit("lineEdit_YSIZE")->text(), QStringLiteral("480"));
        QCOMPARE(refresh.count(), stays ? 0 : 1);
        QCOMPARE(newClose.count(), 0);

        // Closing once more: after Yes and No the size is the stored one and
        // nothing is asked; after Cancel the question comes again.
        Prompts::recorded().clear();
        m_answers.answer = QMessageBox::Yes;
        m_dialog->show();
        m_dialog->close();
        QCOMPARE(Prompts::recorded().size(), stays ? 1 : 0);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->storedXSize(), xAfter);
    }

    void newProjectModeSignalsClose()
    {
        m_dialog->setNewProjectMode(true);
        m_dialog->loadFromSettings();
        m_dialog->storeResolution();
        m_dialog->show();
        typeInto(edit("lineEdit_XSIZE"), QStringLiteral("320"));
        typeInto(edit("lineEdit_YSIZE"), QStringLiteral("240"));

        QStringList order; // each signal once, the refresh first
        connect(m_dialog, &DialogProjectSetting::Resolution_refres, this, [&] { order << "refresh"; });
        connect(m_dialog, &DialogProjectSetting::new_prj_setting_close, this, [&] { order << "new"; });
        m_dialog->close();
        QVERIFY(Prompts::recorded().isEmpty()); // no resolution question for a new project
        QVERIFY(!m_dialog->isVisible());
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
        QCOMPARE(combo("comboBox_Rotate")->currentIndex(), 2);
        QCOMPARE(m_model->rotate, 2);
        QCOMPARE(m_model->eoCheck, 1);

        m_dialog->retranslate();
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Project Setting"));
        QCOMPARE(combo("comboBox_Rotate")->itemText(1), QStringLiteral(" 90 Degree"));
    }
};

QTEST_MAIN(TestProjectSettingDialog)
#include "tst_project_setting_dialog.moc"
