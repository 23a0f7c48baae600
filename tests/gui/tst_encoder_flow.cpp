// The encoder's action list from the parameter table: a double click on an
// item row opens the list on that entry, OK puts the edited entry back into
// the encoder's line, in the line's own field order.

#include "GuiTestSupport.h"
#include "editors/DialogList.h"

#include <QComboBox>
#include <QStandardItemModel>

using namespace gui;

class TestEncoderFlow : public QObject, public Fixture
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void itemRowEditsTheEntry()
    {
        const QString nulls = QStringLiteral("NULL,").repeated(14); // items 3 to 16
        const QString line = "encoder_0:0x0005,10,10,40,40,enc,NULL,3,Enable,0x0010,0,10,1;," + nulls.left(nulls.size() - 1) + ",1;";
        project(blankPages(1), {{PageList::blankLine(0), line}});
        QVERIFY(openWindow());
        m_w->selectByName("encoder_0");
        QCOMPARE(m_w->editBuffer().kind(), WidgetKind::Encoder);

        // row 7 is item 2: the list opens on it, the report switch last
        QTableView *para = table(*m_w, "tableView_Para");
        m_w->on_tableView_Para_doubleClicked(para->model()->index(7, 1));
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

        const QString expected = "encoder_0:0x0005,10,10,40,40,enc,NULL,3,Enable,0x0042,0,10,1;,"
                                 + nulls.left(nulls.size() - 1) + ",1;";
        QVERIFY2(m_w->currentPageLines().contains(expected), qPrintable(m_w->currentPageLines().join('\n')));
        QCOMPARE(cell(*m_w, "tableView_Para", 7), QString("3,Enable,0x0042,0,10,1;"));
        QCOMPARE(cell(*m_w, "tableView_Para", 6), QString("NULL")); // item 1 untouched
    }
};

QTEST_MAIN(TestEncoderFlow)
#include "tst_encoder_flow.moc"
