// The designer never loses a line: recovery, auto-save, failed writes,
// changes made on disk by others, New into a missing folder.

#include "GuiTestSupport.h"
#include "editors/DialogProjectSetting.h"
#include "project/PageFile.h"

using namespace gui;

namespace {

bool hasButton(const QStringList &lines)
{
    for (const QString &l : lines)
        if (l.startsWith(QLatin1String("button_")))
            return true;
    return false;
}

} // namespace

class TestWorkSafety : public QObject, Fixture
{
    Q_OBJECT

    QStringList onDisk(int row) const { return PageFile::read(cfg(row), 0x5E21B7C4u).lines; }
    void makeProject(int pages) { project(blankPages(pages), QVector<QStringList>(pages)); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(QMessageBox::Yes); }
    void cleanup() { end(); }

    // A widget on page 0, a switch to page 1, a widget there, and the
    // process dies. Restoring brings both pages back, Save All writes both,
    // and the next ordinary open still has them.
    void recoveryKeepsEveryPageThroughSaveAll()
    {
        makeProject(2);
        QVERIFY(openWindow());
        drawButton(QPoint(20, 20));
        clickPage(*m_w, 1);
        drawButton(QPoint(100, 100));
        closeWindow(); // killed: no close, backup.txt stays
        QVERIFY(QFile::exists(root() + "backup.txt") && !hasButton(onDisk(0)) && !hasButton(onDisk(1)));

        m_answers.answer = QMessageBox::Yes; // restore
        QVERIFY(openWindow());
        QCOMPARE(lastPrompt(), QStringLiteral("Last abnormal exit, need to restore the last state?    "));
        QVERIFY(m_w->recoveryMode());
        QCOMPARE(m_w->currentPageRow(), 1);
        QVERIFY(hasButton(m_w->currentPageLines()));
        clickPage(*m_w, 0);
        QVERIFY(hasButton(m_w->currentPageLines()));
        QVERIFY(!hasButton(onDisk(0)) && !hasButton(onDisk(1))); // the files wait for Save All
        m_w->on_actionSave_All_triggered();
        QVERIFY(hasButton(onDisk(0)) && hasButton(onDisk(1)));
        m_answers.answer = QMessageBox::Discard; // close with "Quit"
        m_w->close();
        closeWindow();
        QVERIFY(!QFile::exists(root() + "backup.txt"));

        QVERIFY(openWindow() && !m_w->recoveryMode());
        clickPage(*m_w, 0);
        QVERIFY(hasButton(m_w->currentPageLines()));
    }

    // With auto-save on, ticks with nothing changed write no step, whatever
    // the page file's encoding; a change writes exactly one.
    void idleAutoSavesWriteNoStep()
    {
        makeProject(1);
        writeFile(cfg(0), TextFiles::encodePlain({button(0, 1, 2, 30, 40)}));
        QVERIFY(openWindow());
        m_w->on_actionAutoSaveOpen_triggered();
        for (int i = 0; i < 5; ++i)
            m_w->Auto_save();
        QCOMPARE(m_w->history().highestStep(0), 0);
        drawButton(QPoint(100, 100));
        const int afterDraw = m_w->history().highestStep(0);
        QVERIFY(afterDraw >= 1);
        for (int i = 0; i < 5; ++i)
            m_w->Auto_save();
        QCOMPARE(m_w->history().highestStep(0), afterDraw);
    }

    // A write that fails names the file and the reason. When backup.txt
    // can't be written the user is told once that crash recovery is off, and
    // the status bar keeps saying so, not a box every five seconds.
    void failedWritesNameTheFileAndAreToldOnce()
    {
        makeProject(1);
        QVERIFY(openWindow());
        m_w->on_actionAutoSaveOpen_triggered();
        // root can write anywhere: a folder where the file should be fails for anyone
        QVERIFY(QFile::remove(root() + "backup.txt") && QDir().mkpath(root() + "backup.txt"));
        Prompts::recorded().clear();
        for (int i = 0; i < 3; ++i) {
            drawButton(QPoint(20 + 60 * i, 20));
            m_w->Auto_save();
        }
        const QList<PromptRecord> boxes = prompts("message");
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes[0].text, QStringLiteral("Fail to open this file"));
        QVERIFY(boxes[0].detail.startsWith(root() + "backup.txt\n"));
        QVERIFY(boxes[0].detail.contains(QStringLiteral("Crash recovery is off")));
        QVERIFY(m_w->statusBar()->currentMessage().contains(root() + "backup.txt"));

        // a page file that can't be written: the box names it
        QVERIFY(QFile::remove(cfg(0)) && QDir().mkpath(cfg(0)));
        Prompts::recorded().clear();
        m_answers.answer = QMessageBox::Save; // it changed on disk: keep mine
        m_w->on_actionSave_current_pgae_triggered();
        QCOMPARE(prompts("message").size(), 1);
        QVERIFY(prompts("message")[0].detail.startsWith(cfg(0)));
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
        QVERIFY(openWindow());
        drawButton(QPoint(20, 20));
        const QStringList mine = m_w->currentPageLines();
        const QStringList theirs = {button(7, 5, 5, 50, 50, 1, "theirs")};
        writeFile(cfg(0), TextFiles::encodePlain(theirs));
        const QByteArray theirIni = iniText() + "BAUD: 3\n";
        writeFile(root() + "p.ini", theirIni);

        m_answers.answer = QMessageBox::StandardButton(answer);
        Prompts::recorded().clear();
        m_w->on_actionSave_All_triggered();
        const QList<PromptRecord> asked = prompts("question");
        QCOMPARE(asked.size(), answer == QMessageBox::Cancel ? 1 : 2); // cancel stops at the first
        QCOMPARE(asked[0].detail, cfg(0));
        if (answer != QMessageBox::Cancel)
            QCOMPARE(asked[1].detail, root() + "p.ini");

        const QByteArray iniNow = readAll(root() + "p.ini");
        if (answer == QMessageBox::Save) {
            QCOMPARE(onDisk(0), mine);
            QVERIFY(iniNow != theirIni);
        } else {
            QCOMPARE(onDisk(0), theirs);
            QCOMPARE(iniNow, theirIni);
        }
        if (answer == QMessageBox::Discard)
            QCOMPARE(m_w->currentPageLines(), theirs);
        else
            QCOMPARE(m_w->currentPageLines(), mine);
        // once settled, the next Save All asks nothing
        if (answer != QMessageBox::Cancel) {
            Prompts::recorded().clear();
            m_w->on_actionSave_All_triggered();
            QVERIFY(prompts("question").isEmpty());
        }
    }

    // New into a folder that does not exist makes it; New where no folder
    // can be made refuses before the open project changes.
    void newProjectIntoAMissingFolder()
    {
        MainWindow w;
        const QString made = root() + "a/b/new.uiprj", refused = root() + "plain.txt/sub/other.uiprj";
        m_answers.files = QStringList{made};
        w.on_actionNew_project_triggered();
        w.projectSettingDialog()->close();
        QCOMPARE(w.uiprjPath(), made);
        QVERIFY(QFile::exists(made) && QFile::exists(root() + "a/b/new.ini"));
        QVERIFY(QFile::exists(root() + "a/b/Plugin/Page0000.cfg"));

        writeFile(root() + "plain.txt", "x");
        m_answers.files = QStringList{refused};
        Prompts::recorded().clear();
        w.on_actionNew_project_triggered();
        w.projectSettingDialog()->close();
        QCOMPARE(w.uiprjPath(), made);
        QCOMPARE(w.currentPageRow(), 0);
        QCOMPARE(prompts("message").size(), 1);
        QCOMPARE(prompts("message")[0].text, QStringLiteral("Fail to create ") + refused);
        QVERIFY(!QFile::exists(refused));
    }
};

QTEST_MAIN(TestWorkSafety)
#include "tst_work_safety.moc"
