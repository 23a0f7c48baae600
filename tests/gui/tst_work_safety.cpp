// The designer never loses a line: recovery after a killed session keeps
// every page through Save All, idle auto-saves write no steps, failed writes
// name their file (and a failing auto-save says so once), an outside change
// is not overwritten without asking, and New into a missing folder works.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "editors/DialogProjectSetting.h"
#include "project/AppPaths.h"
#include "project/PageFile.h"
#include "project/PageList.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QLabel>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY2(f.open(QIODevice::WriteOnly), qPrintable(path));
    f.write(bytes);
}

QList<PromptRecord> prompts(const QString &kind)
{
    QList<PromptRecord> out;
    for (const PromptRecord &r : Prompts::recorded())
        if (r.kind == kind)
            out << r;
    return out;
}

bool hasButton(const QStringList &lines)
{
    for (const QString &l : lines)
        if (l.startsWith(QLatin1String("button_")))
            return true;
    return false;
}

} // namespace

class TestWorkSafety : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr;
    QMessageBox::StandardButton m_answer = QMessageBox::Yes;
    QString m_savePath;

    QString root() const { return m_dir->path() + QLatin1Char('/'); }
    QString cfg(int row) const { return root() + "Plugin/Page" + PageList::pageId(row) + ".cfg"; }
    QStringList onDisk(int row) const { return PageFile::read(cfg(row), 0x5E21B7C4u).lines; }

    QString makeProject(int pages)
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        QStringList list;
        for (int r = 0; r < pages; ++r) {
            list << PageList::blankLine(r);
            writeFile(cfg(r), TextFiles::encodePlain({}));
        }
        writeFile(root() + "p.uiprj", TextFiles::encodePlain(list));
        writeFile(root() + "p.ini", "[INFO]\nSupplierVer: V3.20\nXSIZE: 400\nYSIZE: 300\n");
        return root() + "p.uiprj";
    }

    MainWindow *openWindow()
    {
        auto *w = new MainWindow;
        w->show();
        if (!QTest::qWaitForWindowExposed(w) || !w->openProjectFile(root() + "p.uiprj")) {
            delete w;
            return nullptr;
        }
        return w;
    }

    // Draws a button with the Add action, as the user does.
    void drawButton(MainWindow &w, const QPoint &at)
    {
        auto *canvas = w.findChild<QLabel *>(QStringLiteral("label_Show"));
        w.action(QStringLiteral("AddButton"))->trigger();
        QTest::mousePress(canvas, Qt::LeftButton, {}, at);
        QTest::mouseRelease(canvas, Qt::LeftButton, {}, at + QPoint(60, 30));
        QTest::mouseClick(canvas, Qt::RightButton, {}, QPoint(390, 290)); // ends the tool
    }

    void clickPage(MainWindow &w, int row)
    {
        auto *table = w.findChild<QTableView *>(QStringLiteral("tableView_Page"));
        w.on_tableView_Page_clicked(table->model()->index(row, 0));
    }

private slots:
    void initTestCase()
    {
        AppPaths::setAppDirOverride(m_appDir.path());
        QFile::copy(QStringLiteral(VANTILE_QM_DIR "/Translate_EN.qm"), m_appDir.path() + "/Translate_EN.qm");
    }

    void init()
    {
        m_dir = new QTemporaryDir;
        m_answer = QMessageBox::Yes;
        m_savePath.clear();
        Prompts::Responder r;
        r.answer = [this](const PromptRecord &) { return m_answer; };
        r.file = [this](const PromptRecord &rec) { return rec.kind == "save" ? m_savePath : QString(); };
        Prompts::installResponder(r);
    }

    void cleanup()
    {
        Prompts::removeResponder();
        delete m_dir;
    }

    // A widget on page 0, a switch to page 1, a widget there, and the
    // process dies. Restoring brings both pages back, Save All writes both,
    // and the next ordinary open still has them.
    void recoveryKeepsEveryPageThroughSaveAll()
    {
        makeProject(2);
        MainWindow *w = openWindow();
        QVERIFY(w);
        drawButton(*w, QPoint(20, 20));
        clickPage(*w, 1);
        drawButton(*w, QPoint(100, 100));
        delete w; // killed: no close, backup.txt stays
        QVERIFY(QFile::exists(root() + "backup.txt"));
        QVERIFY(!hasButton(onDisk(0)) && !hasButton(onDisk(1)));

        m_answer = QMessageBox::Yes; // restore
        w = openWindow();
        QVERIFY(w);
        QVERIFY(w->recoveryMode());
        QCOMPARE(w->currentPageRow(), 1);
        QVERIFY(hasButton(w->currentPageLines()));
        w->on_actionSave_All_triggered();
        QVERIFY(hasButton(onDisk(0)));
        QVERIFY(hasButton(onDisk(1)));
        m_answer = QMessageBox::Discard; // close with "Quit"
        w->close();
        delete w;
        QVERIFY(!QFile::exists(root() + "backup.txt"));

        w = openWindow();
        QVERIFY(w);
        QVERIFY(!w->recoveryMode());
        clickPage(*w, 0);
        QVERIFY(hasButton(w->currentPageLines()));
        delete w;
    }

    // With auto-save on, ticks with nothing changed write no step, whatever
    // the page file's encoding; a change writes exactly one.
    void idleAutoSavesWriteNoStep()
    {
        makeProject(1);
        writeFile(cfg(0), TextFiles::encodePlain({QStringLiteral("button_0:1,2,30,40,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,1;")}));
        MainWindow *w = openWindow();
        QVERIFY(w);
        w->on_actionAutoSaveOpen_triggered();
        for (int i = 0; i < 5; ++i)
            w->Auto_save();
        QCOMPARE(w->history().highestStep(0), 0);
        drawButton(*w, QPoint(100, 100));
        const int afterDraw = w->history().highestStep(0);
        QVERIFY(afterDraw >= 1);
        for (int i = 0; i < 5; ++i)
            w->Auto_save();
        QCOMPARE(w->history().highestStep(0), afterDraw);
        delete w;
    }

    // A write that fails names the file and the reason. When backup.txt
    // can't be written the user is told once that crash recovery is off, and
    // the status bar keeps saying so, not a box every five seconds.
    void failedWritesNameTheFileAndAreToldOnce()
    {
        makeProject(1);
        MainWindow *w = openWindow();
        QVERIFY(w);
        w->on_actionAutoSaveOpen_triggered();
        // root can write anywhere: a folder where the file should be fails for anyone
        QVERIFY(QFile::remove(root() + "backup.txt"));
        QVERIFY(QDir().mkpath(root() + "backup.txt"));
        Prompts::recorded().clear();
        for (int i = 0; i < 3; ++i) {
            drawButton(*w, QPoint(20 + 60 * i, 20));
            w->Auto_save();
        }
        const QList<PromptRecord> boxes = prompts("message");
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes[0].text, QStringLiteral("Fail to open this file"));
        QVERIFY(boxes[0].detail.startsWith(root() + "backup.txt\n"));
        QVERIFY(boxes[0].detail.contains(QStringLiteral("Crash recovery is off")));
        QVERIFY(w->statusBar()->currentMessage().contains(root() + "backup.txt"));

        // a page file that can't be written: the box names it
        QVERIFY(QFile::remove(cfg(0)));
        QVERIFY(QDir().mkpath(cfg(0)));
        Prompts::recorded().clear();
        m_answer = QMessageBox::Save; // it changed on disk: keep mine
        w->on_actionSave_current_pgae_triggered();
        QCOMPARE(prompts("message").size(), 1);
        QVERIFY(prompts("message")[0].detail.startsWith(cfg(0)));
        delete w;
    }

    // Save All when the open page's file, or the settings, changed on disk
    // since they were read: keep mine, take theirs, or cancel everything.
    void outsideChangesAreNotOverwrittenSilently_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("cancel") << int(QMessageBox::Cancel);
        QTest::newRow("keep mine") << int(QMessageBox::Save);
        QTest::newRow("take theirs") << int(QMessageBox::Discard);
    }
    void outsideChangesAreNotOverwrittenSilently()
    {
        QFETCH(int, answer);
        makeProject(1);
        MainWindow *w = openWindow();
        QVERIFY(w);
        drawButton(*w, QPoint(20, 20));
        const QStringList mine = w->currentPageLines();
        const QStringList theirs = {QStringLiteral("button_7:5,5,50,50,0x0020,,,,theirs,Disable,Disable,0x0000,0xFFFF,1;")};
        writeFile(cfg(0), TextFiles::encodePlain(theirs));
        const QByteArray theirIni = "[INFO]\nSupplierVer: V3.20\nXSIZE: 400\nYSIZE: 300\nBAUD: 3\n";
        writeFile(root() + "p.ini", theirIni);

        m_answer = QMessageBox::StandardButton(answer);
        Prompts::recorded().clear();
        w->on_actionSave_All_triggered();
        const QList<PromptRecord> asked = prompts("question");
        QCOMPARE(asked.size(), answer == QMessageBox::Cancel ? 1 : 2); // cancel stops at the first
        QCOMPARE(asked[0].detail, cfg(0));
        if (answer != QMessageBox::Cancel)
            QCOMPARE(asked[1].detail, root() + "p.ini");

        QFile ini(root() + "p.ini");
        QVERIFY(ini.open(QIODevice::ReadOnly));
        const QByteArray iniNow = ini.readAll();
        if (answer == QMessageBox::Save) {
            QCOMPARE(onDisk(0), mine);
            QVERIFY(iniNow != theirIni);
        } else {
            QCOMPARE(onDisk(0), theirs);
            QCOMPARE(iniNow, theirIni);
        }
        if (answer == QMessageBox::Discard)
            QCOMPARE(w->currentPageLines(), theirs);
        else
            QCOMPARE(w->currentPageLines(), mine);
        // once settled, the next Save All asks nothing
        if (answer != QMessageBox::Cancel) {
            Prompts::recorded().clear();
            w->on_actionSave_All_triggered();
            QVERIFY(prompts("question").isEmpty());
        }
        delete w;
    }

    // New into a folder that does not exist makes it; New where no folder
    // can be made refuses before the open project changes.
    void newProjectIntoAMissingFolder()
    {
        MainWindow w;
        m_savePath = root() + "a/b/new.uiprj";
        w.on_actionNew_project_triggered();
        w.projectSettingDialog()->close();
        QCOMPARE(w.uiprjPath(), m_savePath);
        QVERIFY(QFile::exists(m_savePath));
        QVERIFY(QFile::exists(root() + "a/b/new.ini"));
        QVERIFY(QFile::exists(root() + "a/b/Plugin/Page0000.cfg"));

        writeFile(root() + "plain.txt", "x");
        m_savePath = root() + "plain.txt/sub/other.uiprj";
        Prompts::recorded().clear();
        w.on_actionNew_project_triggered();
        w.projectSettingDialog()->close();
        QCOMPARE(w.uiprjPath(), root() + "a/b/new.uiprj");
        QCOMPARE(w.currentPageRow(), 0);
        QCOMPARE(prompts("message").size(), 1);
        QCOMPARE(prompts("message")[0].text, QStringLiteral("Fail to create ") + m_savePath);
        QVERIFY(!QFile::exists(m_savePath));
    }
};

QTEST_MAIN(TestWorkSafety)
#include "tst_work_safety.moc"
