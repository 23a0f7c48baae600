// Widgets of a page in the designer: lines loaded unharmed, and edits through
// the parameter table and the encoder's action list.

#include "GuiTestSupport.h"
#include "designer/CanvasWidgets.h"
#include "editors/DialogList.h"

using namespace gui;

namespace {

const QString kButton = button(0, 100, 50, 120, 40, 1, "button_0");
const char *const kPageLine = "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);P;Disable;0;0;Disable;";
const char *const kKey = "kbkey_3:5,5,20,20,0x0041,,key,Disable,1;";

// One line of each kind; the widget fields past the rectangle don't matter here.
QStringList everyKind()
{
    QStringList lines;
    for (const QString &word : core::kindWords())
        if (word != "button" && word != "kbkey" && word != "popbox") // full lines of their own in the test
            lines << QStringLiteral("%1_0:10,10,30,30,abc,0x0001;").arg(word);
    return lines;
}

} // namespace

class TestWidgetEditing : public QObject, Fixture
{
    Q_OBJECT

    // A 400 x 300 project of two pages, opened; the first holds the given lines.
    void open(const QStringList &page0)
    {
        project(blankPages(2), {page0});
        QVERIFY(openWindow());
    }

    void selectWidget(const QString &name)
    {
        QTableView *wdg = table(*m_w, "tableView_Wdg");
        for (int r = 0; r < wdg->model()->rowCount(); ++r) {
            if (wdg->model()->index(r, 0).data().toString() == name) {
                m_w->on_tableView_Wdg_clicked(wdg->model()->index(r, 0));
                return;
            }
        }
        QFAIL("no such widget row");
    }
    QString para(int row, int col = 1) const { return cell(*m_w, "tableView_Para", row, col); }
    void doubleClickPara(int row) { m_w->on_tableView_Para_doubleClicked(table(*m_w, "tableView_Para")->model()->index(row, 1)); }
    QRect geometryOf(const char *name) const { return m_w->canvasWidgets()->find(QLatin1String(name))->geometry(); }

private slots:
    void initTestCase() { useAppDir(m_appDir.path(), {"Translate_EN.qm", "Translate_CN.qm"}); }
    void init() { begin(QMessageBox::Yes); }
    void cleanup() { end(); }

    void everyKindLoadsAndSavesBackUnharmed()
    {
        QStringList lines = {kPageLine, kButton, "popbox_0:10,20,100,50,0x0001,,,Page0001,0,0,dim,box,Disable,Disable,"
                                                 "Disable,0x0000,,1;", kKey};
        lines << everyKind();
        open(lines);
        QCOMPARE(m_w->currentPageLines(), lines);
        // every line is a widget on the canvas
        QCOMPARE(m_w->canvasWidgets()->count(), lines.size() - 1);
        QCOMPARE(geometryOf("button_0"), QRect(100, 50, 120, 40));
        QVERIFY(m_w->canvasWidgets()->find(QStringLiteral("kbkey_3")));
        // the widget list: Page first, then every line in order
        QCOMPARE(table(*m_w, "tableView_Wdg")->model()->rowCount(), lines.size());
        QCOMPARE(cell(*m_w, "tableView_Wdg", 2), QStringLiteral("box"));
        // an old "dim" shows as "Enable" in the table, while the line stays as it was
        selectWidget(QStringLiteral("popbox_0"));
        QCOMPARE(para(11), QStringLiteral("Enable"));
        m_w->on_actionSave_current_pgae_triggered();
        QCOMPARE(readAll(cfg(0)), TextFiles::encodePlain(lines));
    }

    void indexBeyondTheTableIsLogged()
    {
        open({"button_127:0,0,10,10;", "button_128:0,0,10,10;"});
        QVERIFY(m_w->canvasWidgets()->find(QStringLiteral("button_127")));
        QVERIFY(m_w->logView()->toPlainText().contains(QStringLiteral("Error button index:128")));
        QCOMPARE(m_w->currentPageLines().size(), 2); // the line itself stays
    }

    // A timer's write pairs show only while their address is set; their
    // rows keep their place, so an edit still reaches the right field.
    void timerPairsShowWhileSet()
    {
        EditBuffer timer = WidgetLine::createNew(WidgetKind::UITimer, 0, QRect(10, 10, 80, 30));
        const int pair2 = timer.definition()->indexOf("writeAddr2");
        timer.setValue(pair2, WidgetLine::readLineText(timer.definition()->fields[pair2], "0x0100"));
        open({WidgetLine::write(timer), kButton});
        selectWidget(QStringLiteral("uitimer_0"));
        QTableView *para = table(*m_w, "tableView_Para");
        const int row2 = timer.definition()->fields[pair2].row;
        QStringList hidden;
        for (int r = 0; r < para->model()->rowCount(); ++r)
            if (para->isRowHidden(r))
                hidden << para->model()->index(r, 0).data().toString();
        // eight pairs of two rows; only pair 2 (its address and its value) shows
        QCOMPARE(hidden.size(), 14);
        QVERIFY(!para->isRowHidden(row2) && !para->isRowHidden(row2 + 1));
        selectWidget(QStringLiteral("button_0"));
        for (int r = 0; r < para->model()->rowCount(); ++r)
            QVERIFY(!para->isRowHidden(r));
    }

    void editingAButtonThroughItsRows()
    {
        open({kButton});
        selectWidget(QStringLiteral("button_0"));
        QCOMPARE(m_w->selectedName(), QStringLiteral("button_0"));
        QCOMPARE(table(*m_w, "tableView_Para")->model()->rowCount(), 12);
        // the row labels follow the language
        m_w->on_actionChinese_triggered();
        QCOMPARE(para(6, 0), QStringLiteral("未按图标"));
        m_w->on_actionEnglish_triggered();
        QCOMPARE(para(6, 0), QStringLiteral("unpressedIcon"));

        typeIntoPara(*m_w, 1, QStringLiteral("abc")); // X: letters read as 0
        typeIntoPara(*m_w, 5, QStringLiteral("12"));  // hexadecimal without "x" reads as 0
        QCOMPARE(para(5), QStringLiteral("0x0000"));
        typeIntoPara(*m_w, 11, QStringLiteral("0x1b"));
        typeIntoPara(*m_w, 0, QStringLiteral("Start"));
        typeIntoPara(*m_w, 3, QStringLiteral("900")); // wider than the 400-pixel page: cut to it
        QCOMPARE(para(3), QStringLiteral("400"));

        const QStringList beforeMenu = m_w->currentPageLines();
        doubleClickPara(9); // a dismissed menu changes nothing
        QCOMPARE(m_w->currentPageLines(), beforeMenu);
        m_answers.word = QStringLiteral("Enable");
        doubleClickPara(9);
        m_answers.word = QStringLiteral("Page0001");
        doubleClickPara(8);

        const QStringList expected{"button_0:0,50,400,40,0x0000,,,Page0001,Start,Enable,Disable,0x001B,0xFFFF,1;"};
        QCOMPARE(m_w->currentPageLines(), expected);
        QCOMPARE(geometryOf("button_0"), QRect(0, 50, 400, 40));
        QVERIFY(m_w->history().step(0) > 0); // each edit takes a step
        m_w->on_actionSave_current_pgae_triggered();
        QCOMPARE(TextFiles::readLines(cfg(0)), expected);
        QCOMPARE(cell(*m_w, "tableView_Wdg", 1), QStringLiteral("Start"));
    }

    void lockedButtonKeepsItsGeometry()
    {
        open({button(1, 10, 10, 50, 20, 2)});
        selectWidget(QStringLiteral("button_1"));
        typeIntoPara(*m_w, 3, QStringLiteral("99"));
        typeIntoPara(*m_w, 0, QStringLiteral("renamed"));
        QCOMPARE(m_w->currentPageLines(), QStringList{button(1, 10, 10, 50, 20, 2, "renamed")});
    }

    void adjustDialogAndWidgetListRows()
    {
        open({kPageLine, kButton, kKey});
        // geometry from the adjust dialog's text
        m_w->Update_from_Dialog(QStringLiteral("button_0:7,8,30,25"));
        const QString moved = button(0, 7, 8, 30, 25, 1, "button_0");
        QCOMPARE(m_w->currentPageLines().value(1), moved);
        QCOMPARE(geometryOf("button_0"), QRect(7, 8, 30, 25));
        m_w->Update_from_Dialog(QStringLiteral("button_9:1,1,1,1")); // no such widget: nothing changes
        QCOMPARE(m_w->currentPageLines(), (QStringList{kPageLine, moved, kKey}));
        // dragging the key's row (2) onto the button's row (1) puts its line first
        m_w->UpdatePageWdgList_from_TableView(2, 1);
        QCOMPARE(m_w->currentPageLines(), (QStringList{kPageLine, kKey, moved}));
        QCOMPARE(cell(*m_w, "tableView_Wdg", 1, 0), QStringLiteral("kbkey_3"));
        QCOMPARE(m_w->pageDirty(), 1);
        m_w->UpdatePageWdgList_from_TableView(0, 2); // the page row never moves
        QCOMPARE(m_w->currentPageLines().value(0), QLatin1String(kPageLine));
    }

    void iconPictureSetsTheSize()
    {
        project(blankPages(2), {{kButton}});
        look::solid(root() + "Icon/0003_on.png", {64, 32}, look::kRed);
        QVERIFY(openWindow());
        selectWidget(QStringLiteral("button_0"));
        m_answers.files = QStringList{root() + "Icon/0003_on.png"};
        doubleClickPara(6);
        QCOMPARE(m_w->currentPageLines(),
                 QStringList{"button_0:100,50,64,32,0x0020,0003_on.png,,,button_0,Disable,Disable,0x0000,0xFFFF,1;"});
        QCOMPARE(m_w->canvasWidgets()->find(QStringLiteral("button_0"))->size(), QSize(64, 32));
    }

    // A double click on an encoder's item row opens the action list on that
    // entry; OK puts the edited entry back into the line, in the line's own
    // field order (the list shows the report switch second, the line last).
    void encoderItemRowEditsTheEntry()
    {
        const QString nulls = QStringLiteral(",NULL").repeated(14); // items 3 to 16
        open({"encoder_0:0x0005,10,10,40,40,enc,NULL,3,Enable,0x0010,0,10,1;" + nulls + ",1;"});
        m_w->selectByName("encoder_0");
        QCOMPARE(m_w->editBuffer().kind(), WidgetKind::Encoder);
        doubleClickPara(7); // item 2
        DialogList *list = m_w->listDialog();
        QVERIFY(list->isVisible());
        QCOMPARE(list->target(), QString("encoder_0"));
        QCOMPARE(list->tableMode(), 3);
        auto *rows = list->findChild<QTableView *>("tableView")->model();
        QCOMPARE(rows->index(1, 1).data().toString(), QString("Enable")); // reportToHost row
        QCOMPARE(rows->index(4, 1).data().toString(), QString("10"));     // maxValue row
        rows->setData(rows->index(2, 1), "0x0042");
        list->on_pushButton_OK_clicked();
        QVERIFY(!list->isVisible());
        QCOMPARE(m_w->currentPageLines(),
                 QStringList{"encoder_0:0x0005,10,10,40,40,enc,NULL,3,Enable,0x0042,0,10,1;" + nulls + ",1;"});
        QCOMPARE(para(7), QString("3,Enable,0x0042,0,10,1;"));
        QCOMPARE(para(6), QString("NULL")); // item 1 untouched
    }
};

QTEST_MAIN(TestWidgetEditing)
#include "tst_widget_editing.moc"
