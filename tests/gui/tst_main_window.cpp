// The main window on the offscreen platform: form, language switch,
// user settings, and the New / Save All / Open flows on real directories.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "build/MakeBin.h"
#include "editors/DialogProjectSetting.h"
#include "project/AppPaths.h"
#include "project/TextFiles.h"

#include <QAbstractItemModel>
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

QString header(QTableView *view, int section)
{
    return view->model()->headerData(section, Qt::Horizontal).toString();
}

QString cell(QTableView *view, int row, int col)
{
    return view->model()->index(row, col).data().toString();
}

// A minimal settings file of the given version and size.
QByteArray iniText(const QString &version, int x, int y, int rotate = 0)
{
    return QStringLiteral("\xEF\xBB\xBF[INFO]\nSupplierVer: %1\nPanelType: 3\nXSIZE: %2\nYSIZE: %3\nRotate: %4\n")
        .arg(version)
        .arg(x)
        .arg(y)
        .arg(rotate)
        .toUtf8();
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;

    // Answers for the prompts of the next flow.
    QMessageBox::StandardButton m_answer = QMessageBox::NoButton;
    QStringList m_files; // returned by file dialogs, in order

    void installResponder()
    {
        Prompts::Responder r;
        r.answer = [this](const PromptRecord &) { return m_answer; };
        r.file = [this](const PromptRecord &) { return m_files.isEmpty() ? QString() : m_files.takeFirst(); };
        Prompts::installResponder(r);
    }

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
        installResponder();
    }

    void cleanup() { Prompts::removeResponder(); }

    void firstStartDefaults()
    {
        MainWindow w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Vantile V3.20A"));
        QCOMPARE(w.currentPageRow(), -1);
        QCOMPARE(w.languageIndex(), 0);
        QCOMPARE(w.toolBarTextIndex(), 0);
        QCOMPARE(w.autoSaveIndex(), 0);
        QVERIFY(w.action(QStringLiteral("actionEnglish"))->isChecked());
        QVERIFY(w.action(QStringLiteral("actionOpen"))->isChecked());
        QVERIFY(w.action(QStringLiteral("actionAutoSaveClose"))->isChecked());
        auto *toolBar = w.findChild<QToolBar *>(QStringLiteral("toolBar"));
        QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
        // text mode: the frame of tool buttons stands in for the edit actions
        QVERIFY(!w.action(QStringLiteral("actionLeft_Align"))->isVisible());
        QVERIFY(!w.findChild<QFrame *>(QStringLiteral("frame"))->isHidden());
        QCOMPARE(header(w.findChild<QTableView *>(QStringLiteral("tableView_Page")), 0), QStringLiteral("Page"));
        QCOMPARE(header(w.findChild<QTableView *>(QStringLiteral("tableView_Wdg")), 0), QStringLiteral("Widget"));
        QCOMPARE(header(w.findChild<QTableView *>(QStringLiteral("tableView_Para")), 1), QStringLiteral("Data"));
        for (const char *name : {"tableView_Page", "tableView_Wdg", "tableView_Para"})
            QCOMPARE(w.findChild<QTableView *>(QLatin1String(name))->editTriggers(),
                     QAbstractItemView::NoEditTriggers);
    }

    void actionsAndShortcuts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shortcut");
        const char *rows[][3] = {
            {"actionInput_uiprj", "Open project", "Ctrl+O"},
            {"actionNew_project", "New project", "Ctrl+N"},
            {"actionProject_Setting", "Project Setting", ""},
            {"actionAddr_Setting", "OTA Update Addr Setting", ""},
            {"actionMake_bin", "Build project", "Ctrl+B"},
            {"actionClearPrj", "Clear project", ""},
            {"actionLoad_default_cfg", "Load latest page cfg", ""},
            {"actionSave_current_pgae", "Save current page cfg", ""},
            {"actionSave_All", "Save All", "Ctrl+S"},
            {"actionExit", "Exit", ""},
            {"actionExport_variable", "Export variable", ""},
            {"actionModbus", "Modbus", ""},
            {"actionConstant_Label", "Static Text", ""},
            {"actionUartDebug", "Vantile Debug", ""},
            {"actionFont_tool", "Font tool", ""},
            {"actionImageNumber", "Numbering", ""},
            {"actionToneForge", "ToneForge", ""},
            {"actionEmulator", "Emulator", ""},
            {"actionWriteAddr", "WriteAddr", "Ctrl+A"},
            {"actionFile_Timestamp", "File Timestamp", ""},
            {"actionEnglish", "English", ""},
            {"actionOpen", "Open", ""},
            {"actionClose", "Close", ""},
            {"actionAutoSaveOpen", "Open", ""},
            {"actionAutoSaveClose", "Close", ""},
            {"actionDirections_for_use", "Directions for use", ""},
            {"actionCheckProject", "Check Project", ""},
            {"actionAbout", "About", ""},
            {"actionZoomin", "Zoomin", "Ctrl+I"},
            {"actionZoomout", "Zoomout", "Ctrl+U"},
            {"actionOriginal", "Original", "Ctrl+Q"},
            {"actionWidget_Copy", "Widget_Copy", "Ctrl+C"},
            {"actionWidget_Paste", "Widget_Paste", "Ctrl+V"},
            {"actionLastPageDesign", "Load previous step", "Ctrl+Z"},
            {"actionLoad_next_cfb", "Load next step", "Ctrl+Y"},
            {"actionLeft_Align", "Left_Align", ""},
            {"actionVertical_layout", "Vertical_layout", ""},
            {"actionWidget_Clone", "Widget_Clone", ""},
            {"actionLock", "Lock", ""},
            {"actionUnlock", "Unlock", ""},
        };
        for (const auto &r : rows)
            QTest::newRow(r[0]) << QString::fromLatin1(r[0]) << QString::fromLatin1(r[1]) << QString::fromLatin1(r[2]);
    }

    void actionsAndShortcuts()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(QString, shortcut);
        MainWindow w;
        QAction *a = w.action(name);
        QVERIFY2(a, qPrintable(name));
        QCOMPARE(a->text(), text);
        QCOMPARE(a->shortcut(), QKeySequence(shortcut));
    }

    void toolBarIconTexts()
    {
        MainWindow w;
        // the tool bar's order and its two-language icon texts with a real line feed
        auto *toolBar = w.findChild<QToolBar *>(QStringLiteral("toolBar"));
        const QList<QAction *> acts = toolBar->actions();
        QCOMPARE(acts.first()->objectName(), QStringLiteral("AddButton"));
        QCOMPARE(acts.first()->iconText(), QStringLiteral("按键\nButton"));
        QCOMPARE(acts.at(1)->objectName(), QStringLiteral("AddSlideMemu"));
        QVERIFY(acts.at(12)->isSeparator()); // after the twelve touch kinds
        QCOMPARE(acts.at(13)->objectName(), QStringLiteral("AddLabel"));
        QCOMPARE(w.action(QStringLiteral("AddLabel_2"))->iconText(), QStringLiteral("静态文本\nStatic Text"));
        QCOMPARE(w.action(QStringLiteral("actionNeedle"))->iconText(), QStringLiteral("指针\nNeedle"));
        QCOMPARE(w.action(QStringLiteral("AddClcok"))->text(), QStringLiteral("Clock"));
        QCOMPARE(w.action(QStringLiteral("AddEN_KeyBooard"))->iconText(), QStringLiteral("英文键盘\nEN_KeyBoard"));
        // the text stays English-and-Chinese in either language
        w.on_actionChinese_triggered();
        QCOMPARE(w.action(QStringLiteral("AddButton"))->iconText(), QStringLiteral("按键\nButton"));
    }

    void toolBarTextModes()
    {
        MainWindow w;
        auto *toolBar = w.findChild<QToolBar *>(QStringLiteral("toolBar"));
        auto *frame = w.findChild<QFrame *>(QStringLiteral("frame"));
        w.on_actionClose_triggered();
        QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonIconOnly);
        QVERIFY(frame->isHidden());
        int visible = 0;
        for (const char *n : {"actionLeft_Align", "actionRight_Align", "actionTop_Align", "actionBottom_Align",
                              "actionWidth_Align", "actionHeight_Align", "actionShape_Align", "actionLevel_layout",
                              "actionVertical_layout", "actionZoomin", "actionZoomout", "actionOriginal",
                              "actionWidget_Clone", "actionWidget_Copy", "actionWidget_Paste", "actionDelete",
                              "actionLastPageDesign", "actionLoad_next_cfb", "actionLock", "actionUnlock"})
            visible += w.action(QLatin1String(n))->isVisible() ? 1 : 0;
        QCOMPARE(visible, 20);
        QCOMPARE(w.toolBarTextIndex(), 1);
        w.on_actionOpen_triggered();
        QVERIFY(!frame->isHidden());
        QVERIFY(!w.action(QStringLiteral("actionUnlock"))->isVisible());
        QVERIFY(w.action(QStringLiteral("AddButton"))->isVisible()); // kinds stay
        QCOMPARE(w.toolBarTextIndex(), 0);
    }

    void languageSwitchChangesHeadersAndBack()
    {
        MainWindow w;
        auto *page = w.findChild<QTableView *>(QStringLiteral("tableView_Page"));
        auto *wdg = w.findChild<QTableView *>(QStringLiteral("tableView_Wdg"));
        auto *para = w.findChild<QTableView *>(QStringLiteral("tableView_Para"));
        w.on_actionChinese_triggered();
        QCOMPARE(w.languageIndex(), 1);
        QCOMPARE(header(page, 0), QStringLiteral("页面"));
        QCOMPARE(header(page, 1), QStringLiteral("名称"));
        QCOMPARE(header(wdg, 0), QStringLiteral("控件"));
        QCOMPARE(header(para, 0), QStringLiteral("参数"));
        QCOMPARE(header(para, 1), QStringLiteral("数据"));
        QCOMPARE(w.action(QStringLiteral("actionSave_All"))->text(), QStringLiteral("全部保存"));
        QVERIFY(w.logView()->toPlainText().endsWith(QStringLiteral("中文")));
        auto *ready = w.findChild<QLabel *>(QStringLiteral("statusLabel_Ready"));
        QCOMPARE(ready->text(), QStringLiteral("就绪 :"));
        w.on_actionEnglish_triggered();
        QCOMPARE(w.languageIndex(), 0);
        QCOMPARE(header(page, 0), QStringLiteral("Page"));
        QCOMPARE(header(wdg, 1), QStringLiteral("Name"));
        QCOMPARE(header(para, 0), QStringLiteral("Parameter"));
        QCOMPARE(w.action(QStringLiteral("actionSave_All"))->text(), QStringLiteral("Save All"));
        QCOMPARE(ready->text(), QStringLiteral("  Ready :"));
    }

    void missingQmKeepsLanguage()
    {
        QFile::remove(m_appDir.path() + QStringLiteral("/Translate_CN.qm"));
        MainWindow w;
        w.on_actionChinese_triggered();
        QCOMPARE(w.languageIndex(), 0);
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Translate_CN.qm is lost！")));
        QCOMPARE(header(w.findChild<QTableView *>(QStringLiteral("tableView_Page")), 0), QStringLiteral("Page"));
        QVERIFY(w.action(QStringLiteral("actionEnglish"))->isChecked());
    }

    void editorConfigReadAndWritten()
    {
        {
            QSettings s(AppPaths::editorConfigPath(), QSettings::IniFormat);
            s.setValue(QStringLiteral("/set/LanguageIndex"), 5);
            s.setValue(QStringLiteral("/set/ToolBarTextIndex"), 3);
            s.setValue(QStringLiteral("/set/Auto_Save_index"), 1);
            s.setValue(QStringLiteral("/set/Header_file_index"), 7);
        }
        {
            MainWindow w;
            QCOMPARE(w.languageIndex(), 1);
            QCOMPARE(w.toolBarTextIndex(), 1);
            QCOMPARE(w.autoSaveIndex(), 1);
            QCOMPARE(header(w.findChild<QTableView *>(QStringLiteral("tableView_Wdg")), 0), QStringLiteral("控件"));
        }
        QSettings s(AppPaths::editorConfigPath(), QSettings::IniFormat);
        QCOMPARE(s.value(QStringLiteral("/set/LanguageIndex")).toInt(), 1);
        QCOMPARE(s.value(QStringLiteral("/set/ToolBarTextIndex")).toInt(), 1);
        QCOMPARE(s.value(QStringLiteral("/set/Auto_Save_index")).toInt(), 1);
        QCOMPARE(s.value(QStringLiteral("/set/Header_file_index")).toInt(), 7);
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

    void videoActionOnlyForChipTen()
    {
        MainWindow w;
        w.ICType_Change(10);
        QVERIFY(w.action(QStringLiteral("actionAddVideo"))->isVisible());
        w.ICType_Change(5);
        QVERIFY(!w.action(QStringLiteral("actionAddVideo"))->isVisible());
    }

    void openShowsPagesAndBackground()
    {
        QTemporaryDir dir;
        QImage pic(800, 480, QImage::Format_RGB32);
        pic.fill(QColor(10, 200, 30));
        const QString uiprj = makeProject(dir.path(),
                                          {QStringLiteral("Page0000:0000_a.png;Home;RGBColor(0,0,0);"),
                                           QStringLiteral("Page0001:RGBColor(255,0,0);;RGBColor(255,0,0);")},
                                          iniText(QStringLiteral("V3.20"), 800, 480));
        QVERIFY(pic.save(dir.path() + QStringLiteral("/Picture/0000_a.png")));
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.currentPageRow(), 0);
        QCOMPARE(w.projectDir(), dir.path() + QLatin1Char('/'));
        QCOMPARE(w.windowTitle(), QStringLiteral("Vantile V3.20A   uiprj name: ") + uiprj);
        auto *pages = w.findChild<QTableView *>(QStringLiteral("tableView_Page"));
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

    void rotatedCanvas()
    {
        QTemporaryDir dir;
        const QString uiprj = makeProject(dir.path(), {QStringLiteral("Page0000:RGBColor(0,0,255);Blue;RGBColor(0,0,255);")},
                                          iniText(QStringLiteral("V3.20"), 800, 480, 1));
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(w.canvasSize(), QSize(480, 800));
        QCOMPARE(w.findChild<QLabel *>(QStringLiteral("label_Show"))->pixmap()->size(), QSize(480, 800));
    }

    void versionGate()
    {
        QTemporaryDir dir;
        const QString uiprj = makeProject(dir.path(), {PageList::blankLine(0)}, iniText(QStringLiteral("V3.21"), 800, 480));
        MainWindow w;
        QVERIFY(!w.openProjectFile(uiprj));
        QCOMPARE(w.currentPageRow(), -1);
        QVERIFY(recordedMessage(QStringLiteral("The compiled version(V3.21) of this project is larger than the "
                                               "current software version(V3.10)")));
        w.on_actionChinese_triggered();
        QVERIFY(!w.openProjectFile(uiprj));
        QVERIFY(recordedMessage(QStringLiteral("此工程编译版本（V3.21）大于当前软件版本（V3.10）")));

        writeFile(dir.path() + QStringLiteral("/p.ini"), iniText(QStringLiteral("V3.20"), 800, 480));
        QVERIFY(w.openProjectFile(uiprj));

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
                                          iniText(QStringLiteral("V3.20"), 800, 480));
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
        auto *pages = again.findChild<QTableView *>(QStringLiteral("tableView_Page"));
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
