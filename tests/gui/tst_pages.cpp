// Page operations and history in the designer, on real project folders.

#include "GuiTestSupport.h"

using namespace gui;

class TestPages : public QObject, Fixture
{
    Q_OBJECT

    // A project of n blank pages, opened; page r's file holds one widget line "button_r".
    void open(int n)
    {
        QVector<QStringList> pages;
        for (int r = 0; r < n; ++r)
            pages << QStringList{QStringLiteral("button_%1:1,2,3,4;").arg(r)};
        project(blankPages(n), pages, iniText(320, 240));
        QVERIFY(openWindow());
    }

    // An edit of the page's own attributes, as the parameter table makes it.
    void renamePage(const QString &name)
    {
        m_w->editPageAttributes().name = name;
        m_w->updatePageLine();
        m_w->setPageDirty(1);
    }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void init() { begin(QMessageBox::Yes); }
    void cleanup() { end(); }

    // Only the last page can be deleted, and never the only one.
    void pageMenuDeleteRule()
    {
        auto entries = [this](int row) {
            QScopedPointer<QMenu> menu(m_w->buildPageMenu(row));
            QStringList names;
            for (QAction *a : menu->actions())
                names << a->whatsThis();
            return names;
        };
        const QStringList keep{"NewPage", "ClonePage", "CleanPage"};
        open(1);
        QCOMPARE(entries(0), keep);
        open(3);
        QCOMPARE(entries(2), keep + QStringList{"DeletePage"});
        QCOMPARE(entries(1), keep);
        QCOMPARE(entries(0), keep);
    }

    void newCloneCleanDelete()
    {
        open(2);
        m_w->runPageMenuEntry(QStringLiteral("NewPage"));
        QCOMPARE(m_w->currentPageRow(), 2);
        QCOMPARE(cell(*m_w, "tableView_Page", 2), QStringLiteral("0002_RGBColor(0,0,0)"));
        QCOMPARE(m_w->pageInfoList().last(), PageList::blankLine(2));
        QVERIFY(QFile::exists(cfg(2)) && m_w->currentPageLines().isEmpty());
        // leaving page 0 for the new page took a step of page 0
        QVERIFY(QFile::exists(root() + "Plugin/Page0000.cfb1"));

        // clone page 1: its lines and its page-list fields come along
        clickPage(*m_w, 1);
        renamePage(QStringLiteral("Second"));
        m_w->runPageMenuEntry(QStringLiteral("ClonePage"));
        QCOMPARE(m_w->currentPageRow(), 3);
        QCOMPARE(m_w->pageInfoList().value(3), QStringLiteral("Page0003:RGBColor(0,0,0);Second;RGBColor(0,0,0);"));
        QVERIFY(m_w->currentPageLines().contains(QStringLiteral("button_1:1,2,3,4;")));
        QCOMPARE(TextFiles::readLines(cfg(3)), m_w->currentPageLines());

        // clean: emptied page written, page-list line back to black
        m_w->runPageMenuEntry(QStringLiteral("CleanPage"));
        QVERIFY(m_w->currentPageLines().isEmpty());
        QCOMPARE(TextFiles::readLines(cfg(3)), QStringList());
        QCOMPARE(m_w->pageInfoList().value(3), PageList::blankLine(3));

        // delete the last page: the row goes, its emptied .cfg stays; "No" to the question changes nothing
        m_w->runPageMenuEntry(QStringLiteral("DeletePage"));
        QCOMPARE(m_w->pageInfoList().size(), 3);
        QCOMPARE(table(*m_w, "tableView_Page")->model()->rowCount(), 3);
        QCOMPARE(m_w->currentPageRow(), 2);
        QVERIFY(QFile::exists(cfg(3)));
        m_answers.answer = QMessageBox::No;
        m_w->runPageMenuEntry(QStringLiteral("DeletePage"));
        QCOMPARE(m_w->pageInfoList().size(), 3);
    }

    void undoRedoPageEdits()
    {
        open(2);
        renamePage(QStringLiteral("A"));
        clickPage(*m_w, 1); // leaving a dirty page takes a step: step 1 holds "A"
        clickPage(*m_w, 0);
        renamePage(QStringLiteral("B"));
        clickPage(*m_w, 1);
        clickPage(*m_w, 0); // step 2 holds "B"
        QCOMPARE(m_w->history().step(0), 2);

        m_w->on_actionLastPageDesign_triggered();
        QCOMPARE(m_w->pageAttributes().name, QStringLiteral("A"));
        m_w->on_actionLastPageDesign_triggered(); // step 0: the saved page, no page line
        QCOMPARE(m_w->currentPageLines(), QStringList{QStringLiteral("button_0:1,2,3,4;")});
        m_w->on_actionLastPageDesign_triggered(); // round to the newest
        QCOMPARE(m_w->pageAttributes().name, QStringLiteral("B"));
        m_w->on_actionLoad_next_cfb_triggered(); // redo at the newest goes to the .cfg
        QCOMPARE(m_w->history().step(0), 0);
        m_w->on_actionLoad_next_cfb_triggered();
        QCOMPARE(m_w->pageAttributes().name, QStringLiteral("A"));

        // "Load latest page cfg" shows the .cfg and keeps the step
        m_w->on_actionLoad_default_cfg_triggered();
        QCOMPARE(m_w->history().step(0), 1);
        QCOMPARE(m_w->currentPageLines(), QStringList{QStringLiteral("button_0:1,2,3,4;")});
    }

    void saveAllFoldsStepsOfOtherPages()
    {
        open(2);
        renamePage(QStringLiteral("Folded"));
        clickPage(*m_w, 1);
        QCOMPARE(TextFiles::readLines(cfg(0)), QStringList{QStringLiteral("button_0:1,2,3,4;")});
        m_w->on_actionSave_All_triggered();
        const QStringList saved = TextFiles::readLines(cfg(0));
        QCOMPARE(saved.size(), 2);
        QVERIFY(saved.first().startsWith(QStringLiteral("Page:")));
        QVERIFY(saved.first().contains(QStringLiteral(";Folded;")));
        QCOMPARE(m_w->pageInfoList().value(0), QStringLiteral("Page0000:RGBColor(0,0,0);Folded;RGBColor(0,0,0);"));
        QVERIFY(TextFiles::readLines(root() + "p.uiprj").contains(m_w->pageInfoList().value(0)));
    }

    // Auto-save off takes no step of a changed page; on, it takes one
    // (idle ticks: tst_work_safety).
    void autoSaveOnlyWhenOn()
    {
        open(1);
        m_w->on_actionAutoSaveClose_triggered();
        renamePage(QStringLiteral("X"));
        m_w->Auto_save();
        QCOMPARE(m_w->history().step(0), 0);
        m_w->on_actionAutoSaveOpen_triggered();
        m_w->Auto_save();
        QCOMPARE(m_w->history().step(0), 1);
        QVERIFY(m_w->logView()->toPlainText().contains(QStringLiteral("Auto Save ")));
    }

    // A session that dies with unsaved steps of both pages; the next open
    // asks, and No drops the steps (Yes: tst_work_safety).
    void recoveryRefusedDropsTheSteps()
    {
        open(2);
        renamePage(QStringLiteral("Unsaved0"));
        clickPage(*m_w, 1);
        renamePage(QStringLiteral("Unsaved1"));
        clickPage(*m_w, 0); // step of page 1; page 0 shown again
        closeWindow();      // killed: backup.txt stays behind
        QVERIFY(QFile::exists(root() + "backup.txt") && QFile::exists(root() + "Plugin/Page0001.cfb1"));

        m_answers.answer = QMessageBox::No;
        QVERIFY(openWindow());
        QCOMPARE(lastPrompt(), QStringLiteral("Last abnormal exit, need to restore the last state?    "));
        QVERIFY(!m_w->recoveryMode());
        clickPage(*m_w, 1);
        QCOMPARE(m_w->currentPageLines(), QStringList{QStringLiteral("button_1:1,2,3,4;")});
        QVERIFY(!QFile::exists(root() + "Plugin/Page0001.cfb1") && !QFile::exists(root() + "Plugin/Page0000.cfb1"));
        QCOMPARE(TextFiles::readLines(cfg(1)), QStringList{QStringLiteral("button_1:1,2,3,4;")});
    }

    void pageRowsEditedThroughTheirEditors()
    {
        open(2);
        QAbstractItemModel *model = table(*m_w, "tableView_Para")->model();
        QCOMPARE(model->rowCount(), 19);
        // a dismissed menu changes nothing
        m_w->on_tableView_Para_doubleClicked(model->index(15, 1));
        QCOMPARE(m_w->pageDirty(), 0);
        QCOMPARE(m_w->currentPageLines().size(), 1);

        m_answers.word = QStringLiteral("Enable");
        m_w->on_tableView_Para_doubleClicked(model->index(15, 1));
        QCOMPARE(m_w->pageDirty(), 1);
        QVERIFY(m_w->currentPageLines().first().startsWith(QStringLiteral("Page:")));
        m_answers.word = QStringLiteral("Page0001");
        m_w->on_tableView_Para_doubleClicked(model->index(7, 1)); // replaces the page line, not a second one

        m_answers.color = QColor(10, 20, 30);
        m_w->on_tableView_Para_doubleClicked(model->index(6, 1));
        QCOMPARE(model->index(6, 1).data().toString(), QStringLiteral("RGBColor(10,20,30)"));
        QCOMPARE(QColor(m_canvas->pixmap()->toImage().pixel(3, 3)), QColor(10, 20, 30));

        // letters in a number row give 0, a hexadecimal value without "x" gives 0x0000
        typeIntoPara(*m_w, 16, QStringLiteral("abc"));
        typeIntoPara(*m_w, 8, QStringLiteral("12"));
        typeIntoPara(*m_w, 10, QStringLiteral("0x7b"));
        typeIntoPara(*m_w, 0, QStringLiteral("Start"));

        m_w->on_actionSave_current_pgae_triggered();
        QCOMPARE(TextFiles::readLines(cfg(0)),
                 QStringList({"Page:Page0001,0x0000,,0x007B,,0x0000,,0x0000,;RGBColor(10,20,30);Start;Enable;0;0;"
                              "Disable;",
                              "button_0:1,2,3,4;"}));
        QCOMPARE(m_w->pageInfoList().first(), QStringLiteral("Page0000:RGBColor(10,20,30);Start;RGBColor(10,20,30);"));
        QCOMPARE(cell(*m_w, "tableView_Page", 0), QStringLiteral("Start"));
    }

    void backupsRotateAtOpen()
    {
        open(1);
        m_answers.answer = QMessageBox::Discard;
        QVERIFY(m_w->close() && QFile::exists(cfg(0) + ".bak1"));
        QVERIFY(!QFile::exists(root() + "backup.txt") && openWindow() && QFile::exists(cfg(0) + ".bak"));
    }
};

QTEST_MAIN(TestPages)
#include "tst_pages.moc"
