// The main window on the offscreen platform: form, language switch,
// user settings, and the New / Save All / Open flows on real directories.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "build/MakeBin.h"
#include "editors/DialogProjectSetting.h"
#include "project/AppPaths.h"
#include "project/TextFiles.h"

#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QFile>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QToolBar>
#include <QtTest>

using namespace vantile;

namespace {

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

bool copyTree(const QString &src, const QString &dst)
{
    QDirIterator it(src, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString from = it.next();
        const QString to = dst + from.mid(src.size());
        QDir().mkpath(QFileInfo(to).path());
        if (!QFile::copy(from, to))
            return false;
    }
    return true;
}

QTableView *table(const QWidget &w, const char *name)
{
    return w.findChild<QTableView *>(QLatin1String(name));
}

QString header(QTableView *view, int section)
{
    return view->model()->headerData(section, Qt::Horizontal).toString();
}

QString cell(QTableView *view, int row, int col)
{
    return view->model()->index(row, col).data().toString();
}

// A minimal settings file of the given version and size.
QByteArray iniText(const char *version, int rotate = 0)
{
    return QStringLiteral("\xEF\xBB\xBF[INFO]\nSupplierVer: %1\nPanelType: 3\nXSIZE: 800\nYSIZE: 480\nRotate: %2\n")
        .arg(QLatin1String(version)).arg(rotate).toUtf8();
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;

    // Answers for the prompts of the next flow.
    QMessageBox::StandardButton m_answer = QMessageBox::NoButton;
    QStringList m_files; // returned by file dialogs, in order

    void copyQm(const QString &name)
    {
        const QString dst = m_appDir.path() + QLatin1Char('/') + name;
        QFile::remove(dst);
        QVERIFY(QFile::copy(QStringLiteral(VANTILE_QM_DIR "/") + name, dst));
    }

    bool recordedMessage(const QString &text)
    {
        for (const PromptRecord &r : Prompts::recorded())
            if (r.text.contains(text))
                return true;
        return false;
    }

    // A project directory with a page list, settings and pictures.
    QString makeProject(const QString &root, const QStringList &pageLines, const QByteArray &ini)
    {
        QDir(root).mkpath(QStringLiteral("Picture"));
        QDir(root).mkpath(QStringLiteral("Plugin"));
        writeFile(root + QStringLiteral("/p.uiprj"), TextFiles::encodePlain(pageLines));
        writeFile(root + QStringLiteral("/p.ini"), ini);
        return root + QStringLiteral("/p.uiprj");
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_appDir.isValid());
        AppPaths::setAppDirOverride(m_appDir.path());
    }

    void init()
    {
        copyQm(QStringLiteral("Translate_CN.qm"));
        copyQm(QStringLiteral("Translate_EN.qm"));
        QFile::remove(AppPaths::editorConfigPath());
        m_answer = QMessageBox::NoButton;
        m_files.clear();
        Prompts::Responder r;
        r.answer = [this](const PromptRecord &) { return m_answer; };
        r.file = [this](const PromptRecord &) { return m_files.isEmpty() ? QString() : m_files.takeFirst(); };
        Prompts::installResponder(r);
    }

    void cleanup() { Prompts::removeResponder(); }

    void defaultsAndToolBarTextModes()
    {
        MainWindow w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Vantile V3.20A"));
        QCOMPARE(w.currentPageRow(), -1);
        QCOMPARE(w.languageIndex(), 0);
        QCOMPARE(w.autoSaveIndex(), 0);
        QVERIFY(w.action(QStringLiteral("actionEnglish"))->isChecked());
        QVERIFY(w.action(QStringLiteral("actionOpen"))->isChecked());
        QVERIFY(w.action(QStringLiteral("actionAutoSaveClose"))->isChecked());
        for (const char *name : {"tableView_Page", "tableView_Wdg", "tableView_Para"})
            QCOMPARE(table(w, name)->editTriggers(), QAbstractItemView::NoEditTriggers);

        // Text under the icons: the frame of tool buttons stands in for the edit actions.
        auto *toolBar = w.findChild<QToolBar *>(QStringLiteral("toolBar"));
        auto *frame = w.findChild<QFrame *>(QStringLiteral("frame"));
        const char *const editActions[] = {
            "actionLeft_Align", "actionRight_Align", "actionTop_Align", "actionBottom_Align", "actionWidth_Align",
            "actionHeight_Align", "actionShape_Align", "actionLevel_layout", "actionVertical_layout", "actionZoomin",
            "actionZoomout", "actionOriginal", "actionWidget_Clone", "actionWidget_Copy", "actionWidget_Paste",
            "actionDelete", "actionLastPageDesign", "actionLoad_next_cfb", "actionLock", "actionUnlock"};
        auto visibleEditActions = [&] { // shown in the tool bar
            int visible = 0;
            for (const char *n : editActions) {
                QAction *a = w.action(QLatin1String(n));
                visible += toolBar->actions().contains(a) && a->isVisible() ? 1 : 0;
            }
            return visible;
        };
        QCOMPARE(w.toolBarTextIndex(), 0);
        QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        QVERIFY(!frame->isHidden());
        QCOMPARE(visibleEditActions(), 0);
        // Icons only: the edit actions stand in the tool bar themselves.
        w.on_actionClose_triggered();
        QCOMPARE(w.toolBarTextIndex(), 1);
        QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QVERIFY(frame->isHidden());
        QCOMPARE(visibleEditActions(), 20);
        w.on_actionOpen_triggered();
        QCOMPARE(w.toolBarTextIndex(), 0);
        QVERIFY(!frame->isHidden());
        QCOMPARE(visibleEditActions(), 0);
        QVERIFY(w.action(QStringLiteral("AddButton"))->isVisible()); // kinds stay
        // Only chip 10 can add a video.
        w.ICType_Change(10);
        QVERIFY(w.action(QStringLiteral("actionAddVideo"))->isVisible());
        w.ICType_Change(5);
        QVERIFY(!w.action(QStringLiteral("actionAddVideo"))->isVisible());
    }

    void shortcuts()
    {
        MainWindow w;
        const QPair<const char *, const char *> keys[] = {
            {"actionInput_uiprj", "Ctrl+O"},        {"actionNew_project", "Ctrl+N"},  {"actionMake_bin", "Ctrl+B"},
            {"actionSave_All", "Ctrl+S"},           {"actionWriteAddr", "Ctrl+A"},    {"actionZoomin", "Ctrl+I"},
            {"actionZoomout", "Ctrl+U"},            {"actionOriginal", "Ctrl+Q"},     {"actionWidget_Copy", "Ctrl+C"},
            {"actionWidget_Paste", "Ctrl+V"},       {"actionLastPageDesign", "Ctrl+Z"},
            {"actionLoad_next_cfb", "Ctrl+Y"},      {"actionProject_Setting", ""},    {"actionLeft_Align", ""}};
        for (const auto &k : keys) {
            QAction *a = w.action(QLatin1String(k.first));
            QVERIFY2(a, k.first);
            QCOMPARE(a->shortcut(), QKeySequence(QLatin1String(k.second)));
        }
    }

    void languageSwitch()
    {
        MainWindow w;
        QTableView *page = table(w, "tableView_Page"), *wdg = table(w, "tableView_Wdg");
        QTableView *para = table(w, "tableView_Para");
        auto *ready = w.findChild<QLabel *>(QStringLiteral("statusLabel_Ready"));
        auto headers = [&] {
            return QStringList{header(page, 0), header(page, 1), header(wdg, 0), header(wdg, 1), header(para, 0),
                               header(para, 1), w.action(QStringLiteral("actionSave_All"))->text(), ready->text()};
        };
        const QStringList english{"Page", "Name", "Widget", "Name", "Parameter", "Data", "Save All", "  Ready :"};
        QCOMPARE(headers(), english);
        w.on_actionChinese_triggered();
        QCOMPARE(w.languageIndex(), 1);
        QCOMPARE(headers(), (QStringList{"页面", "名称", "控件", "名称", "参数", "数据", "全部保存", "就绪 :"}));
        QVERIFY(w.logView()->toPlainText().endsWith(QStringLiteral("中文")));
        // The kinds' icon texts stay Chinese-and-English, with a real line feed.
        QCOMPARE(w.action(QStringLiteral("AddButton"))->iconText(), QStringLiteral("按键\nButton"));
        QCOMPARE(w.action(QStringLiteral("AddEN_KeyBooard"))->iconText(), QStringLiteral("英文键盘\nEN_KeyBoard"));
        w.on_actionEnglish_triggered();
        QCOMPARE(w.languageIndex(), 0);
        QCOMPARE(headers(), english);
        QCOMPARE(w.action(QStringLiteral("AddButton"))->iconText(), QStringLiteral("按键\nButton"));
        // Without its translation file Chinese is refused: logged, English stays.
        QFile::remove(m_appDir.path() + QStringLiteral("/Translate_CN.qm"));
        w.on_actionChinese_triggered();
        QCOMPARE(w.languageIndex(), 0);
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Translate_CN.qm is lost！")));
        QCOMPARE(headers(), english);
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
        QTemporaryDir dir;
        writeFile(dir.path() + QStringLiteral("/backup.txt"), "x");
        MainWindow w;
        m_answer = QMessageBox::No;
        QVERIFY(!w.close());
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Do you want to quit?    "));
        m_answer = QMessageBox::Yes;
        QVERIFY(w.close());
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/backup.txt")));
    }

    void openShowsPagesAndBackground()
    {
        QTemporaryDir dir;
        QImage pic(800, 480, QImage::Format_RGB32);
        pic.fill(QColor(10, 200, 30));
        const QString uiprj = makeProject(dir.path(),
                                          {QStringLiteral("Page0000:0000_a.png;Home;RGBColor(0,0,0);"),
                                           QStringLiteral("Page0001:RGBColor(255,0,0);;RGBColor(255,0,0);")},
                                          iniText("V3.20"));
        QVERIFY(pic.save(dir.path() + QStringLiteral("/Picture/0000_a.png")));
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.currentPageRow(), 0);
        QCOMPARE(w.projectDir(), dir.path() + QLatin1Char('/'));
        QCOMPARE(w.windowTitle(), QStringLiteral("Vantile V3.20A   uiprj name: ") + uiprj);
        auto *pages = table(w, "tableView_Page");
        QCOMPARE(pages->model()->rowCount(), 2);
        QCOMPARE(cell(pages, 0, 0), QStringLiteral("0000"));
        QCOMPARE(cell(pages, 0, 1), QStringLiteral("Home"));
        QCOMPARE(cell(pages, 1, 1), QStringLiteral("RGBColor(255,0,0)")); // empty name: the first field
        auto *canvas = w.findChild<QLabel *>(QStringLiteral("label_Show"));
        const QImage shown = canvas->pixmap()->toImage();
        QCOMPARE(shown.size(), QSize(800, 480));
        QCOMPARE(QColor(shown.pixel(400, 240)), QColor(10, 200, 30));
        // missing page files are created empty
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/Plugin/Page0001.cfg")));
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/backup.txt")));
        QVERIFY(QDir(dir.path()).exists(QStringLiteral("MultiLanguage")));
        QCOMPARE(AppPaths::readOneLine(AppPaths::uiprjPathFile()), dir.path() + QLatin1Char('/'));
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Load uiprj .... page number is 2")));
        auto *combo = w.projectSettingDialog()->findChild<QComboBox *>(QStringLiteral("comboBox_SPage"));
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->itemText(1), QStringLiteral("Page0001"));

        // the second page is a plain colour
        w.on_tableView_Page_clicked(pages->model()->index(1, 0));
        QCOMPARE(w.currentPageRow(), 1);
        QCOMPARE(QColor(canvas->pixmap()->toImage().pixel(5, 5)), QColor(255, 0, 0));
        QCOMPARE(readAll(dir.path() + QStringLiteral("/Plugin/LastPage.txt")), QByteArray("1"));
    }

    void versionGate()
    {
        QTemporaryDir dir;
        const QString uiprj = makeProject(dir.path(), {PageList::blankLine(0)}, iniText("V3.21"));
        MainWindow w;
        QVERIFY(!w.openProjectFile(uiprj));
        QCOMPARE(w.currentPageRow(), -1);
        QVERIFY(recordedMessage(QStringLiteral("The compiled version(V3.21) of this project is larger than the "
                                               "current software version(V3.10)")));
        w.on_actionChinese_triggered();
        QVERIFY(!w.openProjectFile(uiprj));
        QVERIFY(recordedMessage(QStringLiteral("此工程编译版本（V3.21）大于当前软件版本（V3.10）")));

        // Fixed, the project opens; turned by 90 degrees the canvas is YSIZE wide.
        writeFile(dir.path() + QStringLiteral("/p.ini"), iniText("V3.20", 1));
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.canvasSize(), QSize(480, 800));
        QCOMPARE(w.findChild<QLabel *>(QStringLiteral("label_Show"))->pixmap()->size(), QSize(480, 800));

        QFile::remove(dir.path() + QStringLiteral("/p.ini"));
        MainWindow w2;
        QVERIFY(!w2.openProjectFile(uiprj));
        QVERIFY(w2.logView()->toPlainText().contains(QStringLiteral("Can't open this file: ")));
    }

    void unreadablePageIdIsDroppedOthersLoad()
    {
        QTemporaryDir dir;
        const QString uiprj = makeProject(dir.path(),
                                          {PageList::blankLine(0), QStringLiteral("PageXXXX:RGBColor(1,1,1);bad;"),
                                           PageList::blankLine(1)},
                                          iniText("V3.20"));
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.pageInfoList().size(), 2);
        QVERIFY(recordedMessage(QStringLiteral("Error page ID ")));
    }

    void newFromPictureFolderSaveCloseOpen()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + QStringLiteral("/proj");
        QDir().mkpath(root + QStringLiteral("/Picture"));
        QImage pic(320, 240, QImage::Format_RGB32);
        pic.fill(Qt::white);
        for (const char *name : {"0000_home.png", "0002_x.jpg", "0004.bmp", "00031.png", "abc.png"})
            QVERIFY(pic.save(root + QStringLiteral("/Picture/") + QLatin1String(name)));

        const QString uiprj = root + QStringLiteral("/made.uiprj");
        {
            MainWindow w;
            w.settings().xsize = QStringLiteral("320");
            w.settings().ysize = QStringLiteral("240");
            w.settings().baudrate = 7;
            m_files = QStringList{uiprj, root + QStringLiteral("/Picture/0000_home.png")};
            w.on_actionNew_project_triggered();
            QVERIFY(w.projectSettingDialog()->newProjectMode());
            w.projectSettingDialog()->close(); // the settings dialog's close starts the project
            QCOMPARE(w.currentPageRow(), 0);
            QCOMPARE(w.uiprjPath(), uiprj);
            // pages 0..4: pictures for 0, 2, 4 and blanks for the gaps; 00031 and abc are no page pictures
            const QStringList expected = {
                QStringLiteral("Page0000:0000_home.png;0000_home.png;0000_home.png;"),
                QStringLiteral("Page0001:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);"),
                QStringLiteral("Page0002:0002_x.jpg;0002_x.jpg;0002_x.jpg;"),
                QStringLiteral("Page0003:RGBColor(0,0,0);RGBColor(0,0,0);RGBColor(0,0,0);"),
                QStringLiteral("Page0004:0004.bmp;0004.bmp;0004.bmp;"),
            };
            QCOMPARE(w.pageInfoList(), expected);
            QCOMPARE(TextFiles::readLines(uiprj), expected);
            for (const char *d : {"Picture", "FontBin", "Gif", "Icon", "Music", "Plugin", "Video", "WavBin",
                                  "MultiLanguage"})
                QVERIFY2(QDir(root).exists(QLatin1String(d)), d);
            QVERIFY(QFile::exists(root + QStringLiteral("/backup.txt")));
            QVERIFY(readAll(root + QStringLiteral("/made.ini")).contains("Baudrate: 7\n"));

            // Save All, then close with "Save && Quit"
            w.settings().volume = QStringLiteral("12");
            w.on_actionSave_All_triggered();
            m_answer = QMessageBox::Save;
            QVERIFY(w.close());
            QVERIFY(!QFile::exists(root + QStringLiteral("/backup.txt")));
        }
        const QByteArray savedIni = readAll(root + QStringLiteral("/made.ini"));
        QVERIFY(savedIni.contains("Volume:12\n"));

        MainWindow again;
        QVERIFY(again.openProjectFile(uiprj));
        QCOMPARE(again.pageInfoList().size(), 5);
        auto *pages = table(again, "tableView_Page");
        QCOMPARE(cell(pages, 2, 1), QStringLiteral("0002_x.jpg"));
        QCOMPARE(again.settings().baudrate, 7);
        QCOMPARE(again.settings().volume, QStringLiteral("12"));
        QCOMPARE(again.settings().toIni(), savedIni);
    }

    void newWithoutPictureGivesOneBlankPage()
    {
        QTemporaryDir dir;
        const QString uiprj = dir.path() + QStringLiteral("/blank.uiprj");
        MainWindow w;
        w.settings().xsize = QStringLiteral("0");
        w.settings().ysize = QStringLiteral("0");
        m_files = QStringList{uiprj}; // the picture dialog is cancelled
        w.on_actionNew_project_triggered();
        w.projectSettingDialog()->close();
        QCOMPARE(w.pageInfoList(), QStringList{PageList::blankLine(0)});
        QVERIFY(recordedMessage(QStringLiteral("TFT_XSIZE or TFT_YSIZE is zero!")));
        QCOMPARE(w.findChild<QLabel *>(QStringLiteral("label_Show"))->pixmap()->size(), QSize(800, 480));
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/Plugin/Page0000.cfg")));
    }

    void buildFromTheDesignerWritesTheImage()
    {
        QTemporaryDir dir;
        // a copy of the bundled demo, built as the Build action does
        const QString src = QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo");
        QVERIFY(copyTree(src, dir.path()));
        QTemporaryDir second;
        QVERIFY(copyTree(src, second.path()));
        MainWindow w;
        QVERIFY(w.openProjectFile(dir.path() + QStringLiteral("/demo.uiprj")));
        const QDateTime stamp(QDate(2026, 1, 2), QTime(3, 4, 5));
        w.settings().compilationTimeFixed = true;
        w.settings().compileDateTime = stamp;
        w.action(QStringLiteral("actionMake_bin"))->trigger();
        const QByteArray image = readAll(dir.path() + QStringLiteral("/Morvane_Flash.bin"));
        // the same bytes as the headless build of the same project at that time
        const ProjectLoad headless = loadProject(second.path() + QStringLiteral("/demo.uiprj"));
        QVERIFY(headless.ok);
        MakeBin driver;
        installStandardBuild(driver);
        BuildOptions options;
        options.fixedTime = stamp;
        QVERIFY(driver.run(headless.input, options).imageWritten);
        QCOMPARE(readAll(second.path() + QStringLiteral("/Morvane_Flash.bin")), image);
        QVERIFY(image.size() > 0x10180);
        // the stamped size at 0x174 is the file's own
        const quint32 stamped = quint8(image[0x174]) | quint8(image[0x175]) << 8 | quint8(image[0x176]) << 16
                                | quint32(quint8(image[0x177])) << 24;
        QCOMPARE(stamped, quint32(image.size()));
        QVERIFY(recordedMessage(QStringLiteral("Morvane_Flash.bin is ready!")));
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Make Morvane_Flash.bin")));
        QVERIFY(w.lastBuild().imageWritten);
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/Make_info.txt")));
        w.action(QStringLiteral("actionClearPrj"))->trigger();
        QVERIFY(!QFile::exists(dir.path() + QStringLiteral("/Morvane_Flash.bin")));
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Clean project - Done")));
    }

    void newCancelledAtFileDialogChangesNothing()
    {
        MainWindow w;
        m_files = QStringList{QStringLiteral("/tmp/not-a-project.txt")};
        w.on_actionNew_project_triggered();
        QVERIFY(!w.projectSettingDialog()->isVisible());
        QCOMPARE(w.currentPageRow(), -1);
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
