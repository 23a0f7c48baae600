// The OTA address dialog and the build timestamp dialog as the user meets
// them: Enter recomputes the blocks behind a field, OK writes Addr_Info.txt
// (a failed write keeps the dialog open), and a fixed timestamp reaches the
// image of the designer's build and of a build from the saved project alike.

#include "GuiTestSupport.h"
#include "build/MakeBin.h"

using namespace gui;

class TestMaterialDialogs : public QObject, public Fixture
{
    Q_OBJECT

    QDialog *dialog(const char *name) { return m_w->findChild<QDialog *>(QLatin1String(name)); }
    QLineEdit *edit(const QString &name) { return dialog("Dialogmaterialaddr")->findChild<QLineEdit *>(name); }
    void typeInto(const QString &name, const QString &text, bool enter = true)
    {
        edit(name)->selectAll();
        QTest::keyClicks(edit(name), text);
        if (enter)
            QTest::keyClick(edit(name), Qt::Key_Return);
    }
    void ok(const char *name) { dialog(name)->findChild<QPushButton *>("pushButton_OK")->click(); }
    QByteArray stamp() { return readAll(root() + "Morvane_Flash.bin").mid(0x80, 6); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(); }
    void cleanup() { end(); }

    void enterRecomputes_data()
    {
        addColumns<QString, QString, QString, QString, QString>("field", "typed", "watched", "after", "status");
        // The file as a build without reserves left it: Font at 0x20000 holding
        // 1000 bytes, end round(0x203E8) = 0x40000 (262144); MultiLanguage
        // empty there; WAV 0x40000 + 300000 (0x493E0) = 0x893E0, end 0xA0000
        // (655360); the rest empty at 0xA0000.
        // Font 0x203E8 + 256 KB = 0x603E8, up to 0x80000 (524288): all later ends move.
        QTest::newRow("font reserve") << "Font_ReserveLength" << "256" << "MultiLanguage_StartAddr" << "524288"
                                      << "move: Font, MultiLanguage, WAV, GIF, Image, Icon, Text.";
        // WAV 0x893E0 + 100 KB (0x19000) = 0xA23E0, up to 0xC0000 (786432); Font and MultiLanguage stay.
        QTest::newRow("wav reserve") << "WAV_ReserveLength" << "100" << "GIF_StartAddr" << "786432"
                                     << "move: WAV, GIF, Image, Icon, Text.";
        // Text 0xA0000 + 64 KB = 0xB0000, up to 0xC0000: only its own end moves.
        QTest::newRow("last block") << "Text_ReserveLength" << "64" << "Text_StartAddr" << "655360"
                                    << "move: Text.";
    }
    void enterRecomputes()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, watched);
        QFETCH(QString, status);
        project({PageList::blankLine(0)}, {{}});
        writeFile(root() + "Addr_Info.txt", "[INFO]\nisChecked:true\nFont_StartAddr:131072\n"
                                            "MultiLanguage_StartAddr:262144\nWAV_StartAddr:262144\n"
                                            "GIF_StartAddr:655360\nImage_StartAddr:655360\nIcon_StartAddr:655360\n"
                                            "Text_StartAddr:655360\nFont_EndAddr:262144\n"
                                            "MultiLanguage_EndAddr:262144\nWAV_EndAddr:655360\n"
                                            "GIF_EndAddr:655360\nImage_EndAddr:655360\nIcon_EndAddr:655360\n"
                                            "Text_EndAddr:655360\nFont_CurrentSize:1000\nWAV_CurrentSize:300000\n");
        QVERIFY(openWindow());
        trigger("actionAddr_Setting");
        QVERIFY(dialog("Dialogmaterialaddr")->isVisible());
        auto *label = dialog("Dialogmaterialaddr")->findChild<QLabel *>("label_Status");
        QVERIFY2(label->text().isEmpty(), qPrintable(label->text())); // opened as built: nothing moves
        const QString before = edit("lineEdit_" + watched)->text();
        typeInto("lineEdit_" + field, typed, false);
        QCOMPARE(edit("lineEdit_" + watched)->text(), before); // nothing moves before Enter
        QTest::keyClick(edit("lineEdit_" + field), Qt::Key_Return);
        QTEST(edit("lineEdit_" + watched)->text(), "after");
        QVERIFY2(label->text().endsWith(status), qPrintable(label->text()));
        QVERIFY(dialog("Dialogmaterialaddr")->isVisible()); // Enter never closes it
    }

    // OK writes the reserves; the build places the blocks by them and the
    // dialog opens on what the build wrote, in the file's key order.
    void saveBuildAndReopen()
    {
        project({PageList::blankLine(0)}, {{}});
        QVERIFY(openWindow());
        trigger("actionAddr_Setting");
        auto *box = dialog("Dialogmaterialaddr")->findChild<QCheckBox *>("checkBox");
        QVERIFY(!box->isChecked() && edit("lineEdit_Font_StartAddr")->text().isEmpty()); // no file yet
        QVERIFY(edit("lineEdit_Font_StartAddr")->isReadOnly()); // the build sets it
        box->setChecked(true);
        typeInto("lineEdit_Font_ReserveLength", "128");
        QVERIFY(dialog("Dialogmaterialaddr")->findChild<QLabel *>("label_Status")->text().contains("not known"));
        typeInto("lineEdit_WAV_ReserveLength", "64", false); // OK takes it without Enter
        ok("Dialogmaterialaddr");
        QVERIFY(!dialog("Dialogmaterialaddr")->isVisible());
        QVERIFY(readAll(root() + "Addr_Info.txt").contains("\nFont_ReserveLength:128\nMultiLanguage_ReserveLength:\n"
                                                            "WAV_ReserveLength:64\n"));

        // The page blocks end below 0x20000: Font at 0x20000 (131072), empty,
        // + 128 KB = 0x40000 (262144) = MultiLanguage (empty, no reserve) =
        // WAV; WAV + 64 KB = 0x50000, up to 0x60000 (393216) for GIF.
        trigger("actionMake_bin");
        const QByteArray text = readAll(root() + "Addr_Info.txt");
        QVERIFY2(text.startsWith("[INFO]\nisChecked:true\nFont_StartAddr:131072\nMultiLanguage_StartAddr:"
                                 "262144\nWAV_StartAddr:262144\nGIF_StartAddr:393216\n"),
                 text.constData());
        trigger("actionAddr_Setting");
        QCOMPARE(QStringList({edit("lineEdit_GIF_StartAddr")->text(), edit("lineEdit_WAV_ReserveLength")->text()}),
                 QStringList({"393216", "64"}));
        dialog("Dialogmaterialaddr")->findChild<QPushButton *>("pushButton_Cancel")->click();

        // A file that can't be written: told, and the dialog stays.
        QFile::remove(root() + "Addr_Info.txt");
        QDir(root()).mkdir("Addr_Info.txt");
        trigger("actionAddr_Setting");
        ok("Dialogmaterialaddr");
        const PromptRecord told = prompts("message").last();
        QCOMPARE(told.title + "|" + told.text, QString("Warning|Fail to create"));
        QVERIFY(dialog("Dialogmaterialaddr")->isVisible());
    }

    void fixedTimestampStampsBuilds()
    {
        project({PageList::blankLine(0)}, {{}});
        QVERIFY(openWindow());
        trigger("actionFile_Timestamp");
        QDialog *d = dialog("DialogTime");
        QVERIFY(d->isVisible() && !d->findChild<QDateTimeEdit *>("dateTimeEdit")->isEnabled());
        d->findChild<QCheckBox *>("checkBox_Time")->setChecked(true);
        d->findChild<QDateTimeEdit *>("dateTimeEdit")->setDateTime(QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9)));
        ok("DialogTime");
        QVERIFY(!d->isVisible());
        const QByteArray ini = readAll(root() + "p.ini");
        QVERIFY(ini.contains("Compilation_Time_Index: 1\n") && ini.contains("compileDateTime:2024-05-06 07:08:09\n"));

        // year 2024 - 2023 = 1, month 5, day 6, 7 * 3600 + 8 * 60 + 9 =
        // 25689 = 0x006459 seconds, little-endian
        const QByteArray expected = QByteArray::fromHex("010506596400");
        trigger("actionMake_bin");
        QCOMPARE(stamp(), expected);
        QFile::remove(root() + "Morvane_Flash.bin");
        MakeBin headless; // what vantile-build does without --time
        QVERIFY(headless.run(loadProject(root() + "p.uiprj").input).imageWritten);
        QCOMPARE(stamp(), expected);
    }
};

QTEST_MAIN(TestMaterialDialogs)
#include "tst_material_dialogs.moc"
