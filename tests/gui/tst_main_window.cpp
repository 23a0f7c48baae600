// The main window on the offscreen platform: form, language switch,
// user settings, and the New / Save All / Open flows on real directories.

#include "GuiTestSupport.h"
#include "build/MakeBin.h"
#include "editors/DialogProjectSetting.h"

using namespace gui;

namespace {

QString header(QTableView *view, int section) { return view->model()->headerData(section, Qt::Horizontal).toString(); }

// A minimal settings file of the given version and size.
QByteArray iniText(const char *version, int rotate = 0)
{
    return QStringLiteral("\xEF\xBB\xBF[INFO]\nSupplierVer: %1\nPanelType: 3\nXSIZE: 800\nYSIZE: 480\nRotate: %2\n")
        .arg(QLatin1String(version)).arg(rotate).toUtf8();
}

} // namespace

class TestMainWindow : public QObject, Fixture
{
    Q_OBJECT

private slots:
    void init()
    {
        useAppDir(m_appDir.path(), {"Translate_CN.qm", "Translate_EN.qm"});
        QFile::remove(AppPaths::editorConfigPath());
        begin();
    }
    void cleanup() { end(); }

    // Text under the icons: a frame of tool buttons stands in for the edit
    // actions; icons only: the edit actions stand in the tool bar themselves.
    void toolBarTextModes()
    {
        MainWindow w;
        auto *toolBar = w.findChild<QToolBar *>(QStringLiteral("toolBar"));
        auto *frame = w.findChild<QFrame *>(QStringLiteral("frame"));
        auto visibleActions = [&] {
            int visible = 0;
            for (QAction *a : toolBar->actions())
                visible += a->isVisible() && !a->isSeparator() ? 1 : 0;
            return visible;
        };
        QCOMPARE(w.toolBarTextIndex(), 0);
        QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        QVERIFY(!frame->isHidden());
        const int withText = visibleActions();
        w.on_actionClose_triggered();
        QCOMPARE(w.toolBarTextIndex(), 1);
        QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QVERIFY(frame->isHidden());
        QCOMPARE(visibleActions(), withText + 20); // align 7, layout 2, zoom 3, clone/copy/paste/delete, undo/redo, lock/unlock
        QVERIFY(w.action(QStringLiteral("actionLeft_Align"))->isVisible());
        w.on_actionOpen_triggered();
        QVERIFY(!frame->isHidden());
        QCOMPARE(visibleActions(), withText);
        // Only chip 10 can add a video.
        w.ICType_Change(10);
        QVERIFY(w.action(QStringLiteral("actionAddVideo"))->isVisible());
        w.ICType_Change(5);
        QVERIFY(!w.action(QStringLiteral("actionAddVideo"))->isVisible());
    }

    void languageSwitch()
    {
        MainWindow w;
        auto *ready = w.findChild<QLabel *>(QStringLiteral("statusLabel_Ready"));
        auto texts = [&] {
            return QStringList{header(table(w, "tableView_Page"), 0), header(table(w, "tableView_Para"), 1),
                               w.action(QStringLiteral("actionSave_All"))->text(), ready->text()};
        };
        const QStringList english{"Page", "Data", "Save All", "  Ready :"};
        QCOMPARE(texts(), english);
        w.on_actionChinese_triggered();
        QCOMPARE(w.languageIndex(), 1);
        QCOMPARE(texts(), (QStringList{"页面", "数据", "全部保存", "就绪 :"}));
        // The kinds' icon texts stay Chinese-and-English, with a real line feed.
        QCOMPARE(w.action(QStringLiteral("AddButton"))->iconText(), QStringLiteral("按键\nButton"));
        w.on_actionEnglish_triggered();
        QCOMPARE(texts(), english);
        QCOMPARE(w.action(QStringLiteral("AddButton"))->iconText(), QStringLiteral("按键\nButton"));
        // Without its translation file Chinese is refused: logged, English stays.
        QFile::remove(m_appDir.path() + QStringLiteral("/Translate_CN.qm"));
        w.on_actionChinese_triggered();
        QCOMPARE(w.languageIndex(), 0);
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Translate_CN.qm is lost！")));
        QCOMPARE(texts(), english);
        QVERIFY(w.action(QStringLiteral("actionEnglish"))->isChecked());
    }

    // Out-of-range indices in the user settings are read as the nearest
    // valid ones and written back so; other keys are kept.
    void editorConfigReadAndWritten()
    {
        const struct { const char *key; int written, read; } keys[] = {
            {"/set/LanguageIndex", 5, 1}, {"/set/ToolBarTextIndex", 3, 1}, {"/set/Auto_Save_index", 1, 1},
            {"/set/Header_file_index", 7, 7}};
        {
            QSettings s(AppPaths::editorConfigPath(), QSettings::IniFormat);
            for (const auto &k : keys)
                s.setValue(QLatin1String(k.key), k.written);
        }
        {
            MainWindow w;
            QCOMPARE(w.languageIndex(), 1);
            QCOMPARE(w.toolBarTextIndex(), 1);
            QCOMPARE(w.autoSaveIndex(), 1);
            QCOMPARE(header(table(w, "tableView_Wdg"), 0), QStringLiteral("控件"));
        }
        QSettings s(AppPaths::editorConfigPath(), QSettings::IniFormat);
        for (const auto &k : keys)
            QCOMPARE(s.value(QLatin1String(k.key)).toInt(), k.read);
    }

    void closeWithoutProjectAsksToQuit()
    {
        writeFile(root() + "backup.txt", "x");
        MainWindow w;
        m_answers.answer = QMessageBox::No;
        QVERIFY(!w.close());
        QCOMPARE(lastPrompt(), QStringLiteral("Do you want to quit?    "));
        m_answers.answer = QMessageBox::Yes;
        QVERIFY(w.close() && QFile::exists(root() + "backup.txt"));
    }

    void openShowsPagesAndBackground()
    {
        const QString uiprj = project({"Page0000:0000_a.png;Home;RGBColor(0,0,0);",
                                       "Page0001:RGBColor(255,0,0);;RGBColor(255,0,0);"},
                                      {}, iniText("V3.20"));
        look::solid(root() + "Picture/0000_a.png", {800, 480}, qRgb(10, 200, 30));
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.currentPageRow(), 0);
        QCOMPARE(w.windowTitle(), QStringLiteral("Vantile V3.20A   uiprj name: ") + uiprj);
        QCOMPARE(table(w, "tableView_Page")->model()->rowCount(), 2);
        QCOMPARE(cell(w, "tableView_Page", 0, 0), QStringLiteral("0000"));
        QCOMPARE(cell(w, "tableView_Page", 0), QStringLiteral("Home"));
        QCOMPARE(cell(w, "tableView_Page", 1), QStringLiteral("RGBColor(255,0,0)")); // empty name: the first field
        const QImage shown = canvasOf(w)->pixmap()->toImage();
        QCOMPARE(shown.size(), QSize(800, 480));
        QCOMPARE(QColor(shown.pixel(400, 240)), QColor(10, 200, 30));
        // missing page files are created empty
        QVERIFY(QFile::exists(root() + "Plugin/Page0001.cfg") && QFile::exists(root() + "backup.txt"));
        QVERIFY(QDir(root()).exists(QStringLiteral("MultiLanguage")));
        QCOMPARE(AppPaths::readOneLine(AppPaths::uiprjPathFile()), root());
        auto *combo = w.projectSettingDialog()->findChild<QComboBox *>(QStringLiteral("comboBox_SPage"));
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->itemText(1), QStringLiteral("Page0001"));

        // the second page is a plain colour
        clickPage(w, 1);
        QCOMPARE(w.currentPageRow(), 1);
        QCOMPARE(QColor(canvasOf(w)->pixmap()->toImage().pixel(5, 5)), QColor(255, 0, 0));
        QCOMPARE(readAll(root() + "Plugin/LastPage.txt"), QByteArray("1"));
    }

    void versionGate()
    {
        const QString uiprj = project({PageList::blankLine(0)}, {}, iniText("V3.21"));
        MainWindow w;
        QVERIFY(!w.openProjectFile(uiprj));
        QCOMPARE(w.currentPageRow(), -1);
        // the gate compares with 320 while the text names V3.10, in either language
        QCOMPARE(lastPrompt(), QStringLiteral("The compiled version(V3.21) of this project is larger than the current "
                                              "software version(V3.10), so it cannot be opened. Replace the software of "
                                              "the corresponding version."));
        w.on_actionChinese_triggered();
        QVERIFY(!w.openProjectFile(uiprj));
        QCOMPARE(lastPrompt(), QStringLiteral("此工程编译版本（V3.21）大于当前软件版本（V3.10），无法打开，请更换对应版本软件。"));

        // Fixed, the project opens; turned by 90 degrees the canvas is YSIZE wide.
        writeFile(root() + "p.ini", iniText("V3.20", 1));
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.canvasSize(), QSize(480, 800));
        QCOMPARE(canvasOf(w)->pixmap()->size(), QSize(480, 800));

        QFile::remove(root() + "p.ini");
        MainWindow w2;
        QVERIFY(!w2.openProjectFile(uiprj));
        QVERIFY(w2.logView()->toPlainText().contains(QStringLiteral("Can't open this file: ")));
    }

    void unreadablePageIdIsDroppedOthersLoad()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(project(
            {PageList::blankLine(0), "PageXXXX:RGBColor(1,1,1);bad;", PageList::blankLine(1)}, {}, iniText("V3.20"))));
        QCOMPARE(w.pageInfoList().size(), 2);
        QVERIFY(wasTold(QStringLiteral("Error page ID ")));
    }

    void newFromPictureFolderSaveCloseOpen()
    {
        const QString proj = root() + "proj/";
        QDir().mkpath(proj + "Picture");
        QImage pic(320, 240, QImage::Format_RGB32);
        pic.fill(Qt::white);
        for (const char *name : {"0000_home.png", "0002_x.jpg", "0004.bmp", "00031.png", "abc.png"})
            QVERIFY(pic.save(proj + "Picture/" + QLatin1String(name)));

        const QString uiprj = proj + "made.uiprj";
        {
            MainWindow w;
            w.settings().xsize = QStringLiteral("320");
            w.settings().ysize = QStringLiteral("240");
            w.settings().baudrate = 7;
            m_answers.files = QStringList{uiprj, proj + "Picture/0000_home.png"};
            w.on_actionNew_project_triggered();
            QVERIFY(w.projectSettingDialog()->newProjectMode());
            w.projectSettingDialog()->close(); // the settings dialog's close starts the project
            QCOMPARE(w.currentPageRow(), 0);
            QCOMPARE(w.uiprjPath(), uiprj);
            // pages 0..4: pictures for 0, 2, 4 and blanks for the gaps; 00031 and abc are no page pictures
            const QStringList expected = {
                PageList::pictureLine(0, "0000_home.png"), PageList::blankLine(1), PageList::pictureLine(2, "0002_x.jpg"),
                PageList::blankLine(3), PageList::pictureLine(4, "0004.bmp")};
            QCOMPARE(w.pageInfoList(), expected);
            QCOMPARE(TextFiles::readLines(uiprj), expected);
            for (const char *d : {"Picture", "FontBin", "Gif", "Icon", "Music", "Plugin", "Video", "WavBin",
                                  "MultiLanguage"})
                QVERIFY2(QDir(proj).exists(QLatin1String(d)), d);
            QVERIFY(QFile::exists(proj + "backup.txt") && readAll(proj + "made.ini").contains("Baudrate: 7\n"));

            // Save All, then close with "Save && Quit"
            w.settings().volume = QStringLiteral("12");
            w.on_actionSave_All_triggered();
            m_answers.answer = QMessageBox::Save;
            QVERIFY(w.close() && !QFile::exists(proj + "backup.txt"));
        }
        const QByteArray savedIni = readAll(proj + "made.ini");
        QVERIFY(savedIni.contains("Volume:12\n"));

        MainWindow again;
        QVERIFY(again.openProjectFile(uiprj));
        QCOMPARE(again.pageInfoList().size(), 5);
        QCOMPARE(cell(again, "tableView_Page", 2), QStringLiteral("0002_x.jpg"));
        QCOMPARE(again.settings().baudrate, 7);
        QCOMPARE(again.settings().toIni(), savedIni);
    }

    void newWithoutPictureGivesOneBlankPage()
    {
        const QString uiprj = root() + "blank.uiprj";
        MainWindow w;
        w.settings().xsize = QStringLiteral("0");
        w.settings().ysize = QStringLiteral("0");
        m_answers.files = QStringList{uiprj}; // the picture dialog is cancelled
        w.on_actionNew_project_triggered();
        w.projectSettingDialog()->close();
        QCOMPARE(w.pageInfoList(), QStringList{PageList::blankLine(0)});
        QVERIFY(wasTold(QStringLiteral("TFT_XSIZE or TFT_YSIZE is zero!")));
        QCOMPARE(canvasOf(w)->pixmap()->size(), QSize(800, 480));
        QVERIFY(QFile::exists(root() + "Plugin/Page0000.cfg"));
    }

    void newCancelledAtFileDialogChangesNothing()
    {
        MainWindow w;
        m_answers.files = QStringList{QStringLiteral("/tmp/not-a-project.txt")};
        w.on_actionNew_project_triggered();
        QVERIFY(!w.projectSettingDialog()->isVisible());
        QCOMPARE(w.currentPageRow(), -1);
    }

    void buildFromTheDesignerWritesTheImage()
    {
        // a copy of the bundled demo, built as the Build action does
        copyDemo(root() + "a");
        copyDemo(root() + "b");
        MainWindow w;
        QVERIFY(w.openProjectFile(root() + "a/demo.uiprj"));
        const QDateTime stamp(QDate(2026, 1, 2), QTime(3, 4, 5));
        w.settings().compilationTimeFixed = true;
        w.settings().compileDateTime = stamp;
        w.action(QStringLiteral("actionMake_bin"))->trigger();
        const QByteArray image = readAll(root() + "a/Morvane_Flash.bin");
        // the same bytes as the headless build of the same project at that time
        const ProjectLoad headless = loadProject(root() + "b/demo.uiprj");
        QVERIFY(headless.ok);
        MakeBin driver;
        installStandardBuild(driver);
        BuildOptions options;
        options.fixedTime = stamp;
        QVERIFY(driver.run(headless.input, options).imageWritten);
        QCOMPARE(readAll(root() + "b/Morvane_Flash.bin"), image);
        QVERIFY(image.size() > 0x10180);
        // the stamped size at 0x174 is the file's own
        const quint32 stamped = quint8(image[0x174]) | quint8(image[0x175]) << 8 | quint8(image[0x176]) << 16
                                | quint32(quint8(image[0x177])) << 24;
        QCOMPARE(stamped, quint32(image.size()));
        QVERIFY(wasTold(QStringLiteral("Morvane_Flash.bin is ready!")) && w.lastBuild().imageWritten);
        QVERIFY(QFile::exists(root() + "a/Make_info.txt"));
        w.action(QStringLiteral("actionClearPrj"))->trigger();
        QVERIFY(!QFile::exists(root() + "a/Morvane_Flash.bin"));
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Clean project - Done")));
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
