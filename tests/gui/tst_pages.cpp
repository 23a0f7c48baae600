// Page operations and history in the designer, on real project folders:
// new / clone / clean / delete, the page menu, undo and redo of page edits,
// Save All folding steps, and recovery after a session that did not end.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "project/AppPaths.h"
#include "project/PageList.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

using namespace vantile;

class TestPages : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr;
    QMessageBox::StandardButton m_answer = QMessageBox::Yes;

    QString root() const { return m_dir->path() + QLatin1Char('/'); }
    QString cfg(int row) const { return root() + QStringLiteral("Plugin/Page") + PageList::pageId(row) + QStringLiteral(".cfg"); }

    // A project of n blank pages; page r's file holds one widget line "button_r".
    QString makeProject(int n)
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        QStringList pages;
        for (int r = 0; r < n; ++r) {
            pages << PageList::blankLine(r);
            TextFiles::writeAtomically(cfg(r), TextFiles::encodePlain({QStringLiteral("button_%1:1,2,3,4;").arg(r)}));
        }
        TextFiles::writeAtomically(root() + QStringLiteral("p.uiprj"), TextFiles::encodePlain(pages));
        TextFiles::writeAtomically(root() + QStringLiteral("p.ini"),
                                   "[INFO]\nSupplierVer: V3.20\nXSIZE: 320\nYSIZE: 240\n");
        return root() + QStringLiteral("p.uiprj");
    }

    // An edit of the page's own attributes, as the parameter table makes it.
    void renamePage(MainWindow &w, const QString &name)
    {
        w.editPageAttributes().name = name;
        w.updatePageLine();
        w.setPageDirty(1);
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
        QFile::copy(QStringLiteral(VANTILE_QM_DIR "/Translate_EN.qm"), m_appDir.path() + QStringLiteral("/Translate_EN.qm"));
    }

    void init()
    {
        m_dir = new QTemporaryDir;
        m_answer = QMessageBox::Yes;
        Prompts::Responder r;
        r.answer = [this](const PromptRecord &) { return m_answer; };
        Prompts::installResponder(r);
    }

    void cleanup()
    {
        Prompts::removeResponder();
        delete m_dir;
    }

    // Only the last page can be deleted, and never the only one.
    void pageMenuDeleteRule()
    {
        auto entries = [](MainWindow &w, int row) {
            QScopedPointer<QMenu> menu(w.buildPageMenu(row));
            QStringList names;
            for (QAction *a : menu->actions())
                names << a->whatsThis();
            return names;
        };
        MainWindow one;
        QVERIFY(one.openProjectFile(makeProject(1)));
        QCOMPARE(entries(one, 0), QStringList({"NewPage", "ClonePage", "CleanPage"}));
        MainWindow three;
        QVERIFY(three.openProjectFile(makeProject(3)));
        QCOMPARE(entries(three, 2), QStringList({"NewPage", "ClonePage", "CleanPage", "DeletePage"}));
        QCOMPARE(entries(three, 1), entries(one, 0));
        QCOMPARE(entries(three, 0), entries(one, 0));
    }

    void newCloneCleanDelete()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject(2)));
        auto *table = w.findChild<QTableView *>(QStringLiteral("tableView_Page"));

        w.runPageMenuEntry(QStringLiteral("NewPage"));
        QCOMPARE(w.currentPageRow(), 2);
        QCOMPARE(table->model()->rowCount(), 3);
        QCOMPARE(table->model()->index(2, 1).data().toString(), QStringLiteral("0002_RGBColor(0,0,0)"));
        QCOMPARE(w.pageInfoList().last(), PageList::blankLine(2));
        QVERIFY(QFile::exists(cfg(2)));
        QVERIFY(w.currentPageLines().isEmpty());
        // leaving page 0 for the new page took a step of page 0
        QVERIFY(QFile::exists(root() + QStringLiteral("Plugin/Page0000.cfb1")));

        // clone page 1: its lines and its page-list fields come along
        clickPage(w, 1);
        renamePage(w, QStringLiteral("Second"));
        w.runPageMenuEntry(QStringLiteral("ClonePage"));
        QCOMPARE(w.currentPageRow(), 3);
        QCOMPARE(w.pageInfoList().value(3), QStringLiteral("Page0003:RGBColor(0,0,0);Second;RGBColor(0,0,0);"));
        QVERIFY(w.currentPageLines().contains(QStringLiteral("button_1:1,2,3,4;")));
        QCOMPARE(TextFiles::readLines(cfg(3)), w.currentPageLines());
        QCOMPARE(w.pageAttributes().name, QStringLiteral("Second"));

        // clean: emptied page written, page-list line back to black
        w.runPageMenuEntry(QStringLiteral("CleanPage"));
        QVERIFY(w.currentPageLines().isEmpty());
        QCOMPARE(TextFiles::readLines(cfg(3)), QStringList());
        QCOMPARE(w.pageInfoList().value(3), PageList::blankLine(3));
        QCOMPARE(w.pageDirty(), 1);

        // delete the last page: the row goes, its emptied .cfg stays
        w.runPageMenuEntry(QStringLiteral("DeletePage"));
        QCOMPARE(w.pageInfoList().size(), 3);
        QCOMPARE(table->model()->rowCount(), 3);
        QCOMPARE(w.currentPageRow(), 2);
        QVERIFY(QFile::exists(cfg(3)));

        // "No" to the question changes nothing
        m_answer = QMessageBox::No;
        w.runPageMenuEntry(QStringLiteral("DeletePage"));
        QCOMPARE(w.pageInfoList().size(), 3);
    }

    void undoRedoPageEdits()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject(2)));
        renamePage(w, QStringLiteral("A"));
        clickPage(w, 1); // leaving a dirty page takes a step: step 1 holds "A"
        clickPage(w, 0);
        QCOMPARE(w.pageAttributes().name, QStringLiteral("A"));
        renamePage(w, QStringLiteral("B"));
        clickPage(w, 1);
        clickPage(w, 0); // step 2 holds "B"
        QCOMPARE(w.history().step(0), 2);

        w.on_actionLastPageDesign_triggered();
        QCOMPARE(w.pageAttributes().name, QStringLiteral("A"));
        w.on_actionLastPageDesign_triggered(); // step 0: the saved page, no page line
        QCOMPARE(w.currentPageLines(), QStringList{QStringLiteral("button_0:1,2,3,4;")});
        w.on_actionLastPageDesign_triggered(); // round to the newest
        QCOMPARE(w.pageAttributes().name, QStringLiteral("B"));
        w.on_actionLoad_next_cfb_triggered(); // redo at the newest goes to the .cfg
        QCOMPARE(w.history().step(0), 0);
        w.on_actionLoad_next_cfb_triggered();
        QCOMPARE(w.pageAttributes().name, QStringLiteral("A"));

        // "Load latest page cfg" shows the .cfg and keeps the step
        w.on_actionLoad_default_cfg_triggered();
        QCOMPARE(w.history().step(0), 1);
        QCOMPARE(w.currentPageLines(), QStringList{QStringLiteral("button_0:1,2,3,4;")});
    }

    void saveAllFoldsStepsOfOtherPages()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject(2)));
        renamePage(w, QStringLiteral("Folded"));
        clickPage(w, 1);
        QCOMPARE(TextFiles::readLines(cfg(0)), QStringList{QStringLiteral("button_0:1,2,3,4;")});
        w.on_actionSave_All_triggered();
        const QStringList saved = TextFiles::readLines(cfg(0));
        QCOMPARE(saved.size(), 2);
        QVERIFY(saved.first().startsWith(QStringLiteral("Page:")));
        QVERIFY(saved.first().contains(QStringLiteral(";Folded;")));
        QCOMPARE(w.pageInfoList().value(0), QStringLiteral("Page0000:RGBColor(0,0,0);Folded;RGBColor(0,0,0);"));
        QVERIFY(TextFiles::readLines(root() + QStringLiteral("p.uiprj")).contains(w.pageInfoList().value(0)));
    }

    void autoSaveTakesStepOnlyWhenOnAndChanged()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject(1)));
        w.on_actionAutoSaveClose_triggered();
        renamePage(w, QStringLiteral("X"));
        w.Auto_save();
        QCOMPARE(w.history().step(0), 0);
        w.on_actionAutoSaveOpen_triggered();
        w.Auto_save();
        QCOMPARE(w.history().step(0), 1);
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Auto Save ")));
        w.Auto_save(); // nothing changed since the step
        QCOMPARE(w.history().step(0), 1);
    }

    void recoveryAfterCrash_data()
    {
        QTest::addColumn<bool>("restore");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void recoveryAfterCrash()
    {
        QFETCH(bool, restore);
        const QString uiprj = makeProject(2);
        {
            MainWindow w;
            QVERIFY(w.openProjectFile(uiprj));
            renamePage(w, QStringLiteral("Unsaved0"));
            clickPage(w, 1);
            renamePage(w, QStringLiteral("Unsaved1"));
            clickPage(w, 0); // step of page 1; page 0 shown again
            // the session dies here: no close event, backup.txt stays behind
        }
        QVERIFY(QFile::exists(root() + QStringLiteral("backup.txt")));
        QVERIFY(QFile::exists(root() + QStringLiteral("Plugin/Page0001.cfb1")));

        m_answer = restore ? QMessageBox::Yes : QMessageBox::No;
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        QCOMPARE(Prompts::recorded().last().text, QStringLiteral("Last abnormal exit, need to restore the last state?    "));
        QCOMPARE(w.recoveryMode(), restore);
        clickPage(w, 1);
        if (restore) {
            QCOMPARE(w.pageAttributes().name, QStringLiteral("Unsaved1"));
            QVERIFY(QFile::exists(root() + QStringLiteral("Plugin/Page0001.cfb1")));
            clickPage(w, 0);
            QCOMPARE(w.pageAttributes().name, QStringLiteral("Unsaved0"));
        } else {
            QCOMPARE(w.currentPageLines(), QStringList{QStringLiteral("button_1:1,2,3,4;")});
            QVERIFY(!QFile::exists(root() + QStringLiteral("Plugin/Page0001.cfb1")));
            QVERIFY(!QFile::exists(root() + QStringLiteral("Plugin/Page0000.cfb1")));
        }
        // the .cfg files are untouched until a Save All
        QCOMPARE(TextFiles::readLines(cfg(1)), QStringList{QStringLiteral("button_1:1,2,3,4;")});
    }

    void pageRowsEditedThroughTheirEditors()
    {
        MainWindow w;
        w.show();
        QVERIFY(w.openProjectFile(makeProject(2)));
        auto *para = w.findChild<QTableView *>(QStringLiteral("tableView_Para"));
        QAbstractItemModel *model = para->model();
        QCOMPARE(model->rowCount(), 19);

        // a dismissed menu changes nothing
        QString word;
        QColor color;
        Prompts::Responder r;
        r.answer = [](const PromptRecord &) { return QMessageBox::Yes; };
        r.word = [&](const QStringList &) { return word; };
        r.color = [&](const QColor &) { return color; };
        Prompts::installResponder(r);
        w.on_tableView_Para_doubleClicked(model->index(15, 1));
        QCOMPARE(w.pageDirty(), 0);
        QVERIFY(w.currentPageLines().size() == 1);

        word = QStringLiteral("Enable");
        w.on_tableView_Para_doubleClicked(model->index(15, 1));
        QCOMPARE(w.pageAttributes().slideEffect, QStringLiteral("Enable"));
        QCOMPARE(w.pageDirty(), 1);
        QVERIFY(w.currentPageLines().first().startsWith(QStringLiteral("Page:")));
        word = QStringLiteral("Page0001");
        w.on_tableView_Para_doubleClicked(model->index(7, 1)); // replaces the page line, not a second one

        color = QColor(10, 20, 30);
        w.on_tableView_Para_doubleClicked(model->index(6, 1));
        QCOMPARE(model->index(6, 1).data().toString(), QStringLiteral("RGBColor(10,20,30)"));
        auto *canvas = w.findChild<QLabel *>(QStringLiteral("label_Show"));
        QCOMPARE(QColor(canvas->pixmap()->toImage().pixel(3, 3)), QColor(10, 20, 30));

        // typing into the inline editors: letters in a number row give 0,
        // a hexadecimal value without "x" gives 0x0000
        auto type = [&](int row, const QString &text) {
            w.on_tableView_Para_doubleClicked(model->index(row, 1));
            auto *editor = para->viewport()->findChild<QLineEdit *>();
            QVERIFY(editor);
            editor->selectAll();
            QTest::keyClicks(editor, text);
            QTest::keyClick(editor, Qt::Key_Return);
            // Return commits and closes through a queued call; the closed
            // editor then goes on the next deferred delete
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCOMPARE(para->viewport()->findChildren<QLineEdit *>().size(), 0);
        };
        type(16, QStringLiteral("abc"));
        type(8, QStringLiteral("12"));
        type(10, QStringLiteral("0x7b"));
        type(0, QStringLiteral("Start"));

        w.on_actionSave_current_pgae_triggered();
        QCOMPARE(TextFiles::readLines(cfg(0)),
                 QStringList({"Page:Page0001,0x0000,,0x007B,,0x0000,,0x0000,;RGBColor(10,20,30);Start;Enable;0;0;"
                              "Disable;",
                              "button_0:1,2,3,4;"}));
        QCOMPARE(w.pageInfoList().first(), QStringLiteral("Page0000:RGBColor(10,20,30);Start;RGBColor(10,20,30);"));
        auto *pages = w.findChild<QTableView *>(QStringLiteral("tableView_Page"));
        QCOMPARE(pages->model()->index(0, 1).data().toString(), QStringLiteral("Start"));
    }

    void backupsRotateAtOpen()
    {
        const QString uiprj = makeProject(1);
        {
            MainWindow w;
            QVERIFY(w.openProjectFile(uiprj));
            m_answer = QMessageBox::Discard;
            QVERIFY(w.close());
        }
        QVERIFY(QFile::exists(cfg(0) + QStringLiteral(".bak1")));
        QVERIFY(!QFile::exists(root() + QStringLiteral("backup.txt")));
        MainWindow again;
        QVERIFY(again.openProjectFile(uiprj));
        QVERIFY(QFile::exists(cfg(0) + QStringLiteral(".bak")));
    }
};

QTEST_MAIN(TestPages)
#include "tst_pages.moc"
