// The encoder's action list dialog on the offscreen platform. Every expected
// entry is written out by hand from the entry layout: fields separated by ",",
// the last one closed by ";"; modes 2 and 3 carry their report switch last.

#include "GuiTestSupport.h"
#include "editors/DialogList.h"

using namespace gui;

namespace {

const char *const kMode3 = "encoder_1:3,0x0010,0,10,1,Enable;";

} // namespace

class TestDialogList : public QObject
{
    Q_OBJECT

    DialogList *m_dialog = nullptr;
    Answers m_answers; // word: what the next pop-up menu answers

    QTableView *table() { return m_dialog->findChild<QTableView *>(QStringLiteral("tableView")); }
    QPushButton *button(const char *name) { return m_dialog->findChild<QPushButton *>(QLatin1String(name)); }
    QAbstractItemModel *model() { return table()->model(); }
    QLineEdit *inlineEditor() { return table()->viewport()->findChild<QLineEdit *>(); }

    QStringList column(int c)
    {
        QStringList out;
        for (int r = 0; r < model()->rowCount(); ++r)
            out << model()->index(r, c).data().toString();
        return out;
    }
    QStringList values() { return column(1); }
    QStringList labels() { return column(0); }

    // A real double click on a cell.
    void doubleClickCell(int row, int col = 1)
    {
        const QModelIndex index = model()->index(row, col);
        table()->scrollTo(index);
        const QPoint at = table()->visualRect(index).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }

    // Double-clicks a cell, types into the inline editor and presses Enter.
    void typeIntoCell(int row, const QString &text)
    {
        doubleClickCell(row);
        QLineEdit *editor = inlineEditor();
        QVERIFY2(editor, "no inline editor opened");
        editor->selectAll();
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!inlineEditor() || !inlineEditor()->isVisible());
    }

    QString pressOk()
    {
        QSignalSpy spy(m_dialog, &DialogList::List_Update_to_MainWindow);
        button("pushButton_OK")->click();
        if (spy.count() != 1)
            return QStringLiteral("<%1 signals>").arg(spy.count());
        return spy.at(0).at(0).toString();
    }

    void open(const QString &text)
    {
        m_dialog->List_Update_from_MainWindow(text);
        Prompts::recorded().clear();
    }

    void pressNew(int mode)
    {
        m_dialog->findChild<QComboBox *>(QStringLiteral("comboBox_Mode"))->setCurrentIndex(mode - 1);
        button("pushButton_New")->click();
    }

private slots:
    void init()
    {
        m_dialog = new DialogList;
        m_answers.install();
    }

    void cleanup()
    {
        Prompts::removeResponder();
        delete m_dialog;
        m_dialog = nullptr;
    }

    // What the dialog shows and sends for an opened text and the user's steps
    // on it: "new N" (the mode in the combo, then New), "clear", "set R=T"
    // (a cell set behind the editor's back), "type R=T" (typed into the inline
    // editor, Enter), "menu R=W" (a double click answered with W; empty W
    // dismisses the menu). Texts not starting with "encoder" are ignored; an
    // encoder text of no known mode asks for one and leaves the dialog open.
    // Cells are cleaned to the entry's rules: an address without "0x" becomes
    // 0x0000, an empty one 0xFFFF; numbers stay; typed separators never split
    // the entry. Typed cells are cleaned when Enter commits, the others when
    // OK builds the entry.
    void entries_data()
    {
        // shown: the data column joined by ","; sent: what OK sends, empty when the text was ignored;
        // menus: the words of each menu shown, menus parted by " / "
        addColumns<QString, QString, bool, QString, QString, QString>(
            "opened", "steps", "asks", "shown", "sent", "menus");
        auto row = [](const char *name, const QString &opened, const char *steps, bool asks, const QString &shown,
                      const QString &sent, const char *menus = "") {
            QTest::newRow(name) << opened << QString(steps) << asks << shown << sent << QString(menus);
        };
        const QString m1 = "encoder_2:1,Enable,Page0003,0x1000,0x0001,0x1002,0x0002,0x1004,0x0003,0x1006,0x0004,"
                           "0x1008,0x0005,0x100A,0x0006,0x100C,0x0007,0x100E,0x0008;"_q;
        const QString m2 = "encoder_0:2,0x2000,5,50,2,-,Disable,Enable;"_q;
        const QString m3 = QLatin1String(kMode3);
        const QString m4 = "encoder_3:4,Page0001,Enable,0x0100,0x0001,Page0002,8,Disable,0x0101,0x0002,,30,Enable,"
                           "0x0102,0x0003;"_q;
        const QString null = "encoder_0:NULL"_q;
        const QString f12 = QStringLiteral("0xFFFF,").repeated(12).chopped(1);
        // Opened and sent back unchanged; modes 1 and 4 show the fields in entry order,
        // modes 2 and 3 show the report switch second.
        row("mode 1", m1, "", false, m1.mid(10).chopped(1), m1);
        row("mode 2", m2, "", false, "2,Enable,0x2000,5,50,2,-,Disable", m2);
        row("mode 3", m3, "", false, "3,Enable,0x0010,0,10,1", m3);
        row("mode 4", m4, "", false, m4.mid(10).chopped(1), m4);
        // a mode 3 entry cut off after the address: the rest are the defaults
        row("short entry", "encoder_4:3,0x0022;", "", false, "3,Disable,0x0022,0,100,1",
            "encoder_4:3,0x0022,0,100,1,Disable;");
        // ignored texts
        row("button", "button_0:1,Disable,,0xFFFF,0xFFFF;", "", false, "", "");
        row("empty text", "", "", false, "", "");
        row("capital", "Encoder_0:3,0xFFFF,0,100,1,Disable;", "", false, "", "");
        // no mode: asked for, then New with each mode's defaults
        row("mode 0, new 3", "encoder_0:0,Disable;", "new 3", true, "3,Disable,0xFFFF,0,100,1",
            "encoder_0:3,0xFFFF,0,100,1,Disable;");
        row("new 1", null, "new 1", true, "1,Disable,,0xFFFF,0xFFFF,0xFFFF,0xFFFF," + f12,
            "encoder_0:1,Disable,,0xFFFF,0xFFFF,0xFFFF,0xFFFF," + f12 + ";");
        row("new 2", null, "new 2", true, "2,Disable,0xFFFF,0,100,1,+,Enable",
            "encoder_0:2,0xFFFF,0,100,1,+,Enable,Disable;");
        row("new 4", null, "new 4", true, "4,,Disable,0xFFFF,0xFFFF,,10,Disable,0xFFFF,0xFFFF,,20,Disable,0xFFFF,0xFFFF",
            "encoder_0:4,,Disable,0xFFFF,0xFFFF,,10,Disable,0xFFFF,0xFFFF,,20,Disable,0xFFFF,0xFFFF;");
        // New replaces an opened entry and keeps its target
        row("new over an entry", "encoder_5:3,0x0010,0,10,1,Enable;", "new 2", false,
            "2,Disable,0xFFFF,0,100,1,+,Enable", "encoder_5:2,0xFFFF,0,100,1,+,Enable,Disable;");
        // an empty table and Clear send NULL; Clear marks the first row only
        row("empty table", null, "", true, "", null);
        row("clear empty table", null, "clear", true, "NULL", null);
        row("clear an entry", m3, "clear", false, "NULL,Enable,0x0010,0,10,1", "encoder_1:NULL");
        // cells
        const char *decimal = "encoder_1:3,0x0000,0,10,1,Enable;", *empty = "encoder_1:3,0xFFFF,0,10,1,Enable;";
        row("set decimal address", m3, "set 2=12", false, "3,Enable,12,0,10,1", decimal);
        row("typed decimal address", m3, "type 2=12", false, "3,Enable,0x0000,0,10,1", decimal);
        row("set empty address", m3, "set 2=", false, "3,Enable,,0,10,1", empty);
        row("typed empty address", m3, "type 2=", false, "3,Enable,0xFFFF,0,10,1", empty);
        row("typed hex address", m3, "type 2=0x0abc", false, "3,Enable,0x0abc,0,10,1",
            "encoder_1:3,0x0abc,0,10,1,Enable;");
        row("set capital X", m3, "set 2=0X12ab", false, "3,Enable,0X12ab,0,10,1", "encoder_1:3,0X12ab,0,10,1,Enable;");
        row("numbers", m3, "set 3=12; type 5=; type 4=250", false, "3,Enable,0x0010,12,250,",
            "encoder_1:3,0x0010,12,250,,Enable;");
        row("typed separators", m3, "type 3=5,; type 5=2;", false, "3,Enable,0x0010,5,10,2",
            "encoder_1:3,0x0010,5,10,2,Enable;");
        row("mode 1 pairs", m3, "new 1; set 3=0x0200; set 4=7; type 5=; type 18=0x0009", false,
            "1,Disable,,0x0200,7,0xFFFF," + f12 + ",0x0009",
            "encoder_1:1,Disable,,0x0200,0x0000,0xFFFF," + f12 + ",0x0009;");
        // menus of switch and page cells
        row("switch menus", null, "new 2; menu 1=; menu 1=Enable; menu 7=Disable; type 3=3; type 6=-", true,
            "2,Enable,0xFFFF,3,100,1,-,Disable", "encoder_0:2,0xFFFF,3,100,1,-,Disable,Enable;",
            "Enable|Disable / Enable|Disable / Enable|Disable");
        // doubleClickTimeGap(50ms) in row 6 is a number, not an address
        row("page menus", null, "new 4; menu 1=Page0002; menu 12=Enable; menu 10=Page0000; type 6=12; type 13=0x0300",
            true, "4,Page0002,Disable,0xFFFF,0xFFFF,,12,Disable,0xFFFF,0xFFFF,Page0000,20,Enable,0x0300,0xFFFF",
            "encoder_0:4,Page0002,Disable,0xFFFF,0xFFFF,,12,Disable,0xFFFF,0xFFFF,Page0000,20,Enable,0x0300,0xFFFF;",
            "Page0000|Page0001|Page0002 / Enable|Disable / Page0000|Page0001|Page0002");
    }

    void entries()
    {
        QFETCH(QString, opened);
        QFETCH(QString, steps);
        QFETCH(bool, asks);
        QFETCH(QString, shown);
        QFETCH(QString, sent);
        QFETCH(QString, menus);
        m_dialog->setPages({"Page0000", "Page0001", "Page0002"});
        QSignalSpy list(m_dialog, &DialogList::List_Update_to_MainWindow);
        QSignalSpy mask(m_dialog, &DialogList::Background_mask_Close_Signal_list);
        m_dialog->List_Update_from_MainWindow(opened);
        QCOMPARE(Prompts::recorded().size(), asks ? 1 : 0);
        if (asks) {
            QCOMPARE(Prompts::recorded().at(0).title, QStringLiteral("Message"));
            QCOMPARE(Prompts::recorded().at(0).text, QStringLiteral("Please select the control mode"));
        }
        QCOMPARE(m_dialog->isVisible(), !sent.isEmpty());
        QCOMPARE(list.count() + mask.count(), 0);
        if (sent.isEmpty()) {
            QCOMPARE(model()->rowCount(), 0);
            QVERIFY(m_dialog->target().isEmpty());
            return;
        }
        QCOMPARE(m_dialog->target(), opened.section(QLatin1Char(':'), 0, 0));
        for (const QString &step : steps.split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
            const QString verb = step.section(QLatin1Char(' '), 0, 0), arg = step.section(QLatin1Char(' '), 1);
            const int r = arg.section(QLatin1Char('='), 0, 0).toInt();
            const QString text = arg.section(QLatin1Char('='), 1);
            if (verb == QLatin1String("new")) {
                pressNew(arg.toInt());
            } else if (verb == QLatin1String("clear")) {
                button("pushButton_Clear")->click();
            } else if (verb == QLatin1String("set")) {
                model()->setData(model()->index(r, 1), text);
            } else if (verb == QLatin1String("type")) {
                typeIntoCell(r, text);
            } else {
                m_answers.word = text;
                doubleClickCell(r);
            }
        }
        QCOMPARE(m_answers.menus.join(QStringLiteral(" / ")), menus);
        QCOMPARE(values().join(QLatin1Char(',')), shown);
        const int mode = shown.section(QLatin1Char(','), 0, 0).toInt(); // 0 for NULL or an empty table
        if (mode > 0) {
            QCOMPARE(m_dialog->tableMode(), mode);
            QCOMPARE(m_dialog->findChild<QComboBox *>(QStringLiteral("comboBox_Mode"))->currentText(),
                     QStringLiteral("Mode%1").arg(mode));
        }
        QCOMPARE(pressOk(), sent);
        QCOMPARE(mask.count(), 1);
        QVERIFY(!m_dialog->isVisible());
    }

    void modeAndLabelCellsDoNotEdit()
    {
        open(QLatin1String(kMode3));
        doubleClickCell(0); // the mode
        QVERIFY(!inlineEditor());
        doubleClickCell(2, 0); // a label
        QVERIFY(!inlineEditor() && m_answers.menus.isEmpty());
        QCOMPARE(values().value(0), QStringLiteral("3"));
        QCOMPARE(labels().value(2), QStringLiteral("writeAddr"));
        // The same gesture on the switch of the row below does open its menu.
        m_answers.word = QStringLiteral("Disable");
        doubleClickCell(1);
        QCOMPARE(m_answers.menus, QStringList{"Enable|Disable"});
        QCOMPARE(values().value(1), QStringLiteral("Disable"));
    }

    void cancelAndEscapeSendNothing()
    {
        for (bool escape : {false, true}) {
            open(QStringLiteral("encoder_0:2,0x2000,5,50,2,-,Disable,Enable;"));
            model()->setData(model()->index(2, 1), QStringLiteral("0x3000"));
            QSignalSpy list(m_dialog, &DialogList::List_Update_to_MainWindow);
            QSignalSpy mask(m_dialog, &DialogList::Background_mask_Close_Signal_list);
            if (escape)
                QTest::keyClick(m_dialog, Qt::Key_Escape);
            else
                button("pushButton_Cel")->click();
            QCOMPARE(list.count(), 0);
            QCOMPARE(mask.count(), 1);
            QVERIFY(!m_dialog->isVisible());
        }
    }

    // The row labels follow the dialog's language, its other texts the
    // installed translation.
    void languages()
    {
        m_dialog->setLanguage(1);
        open(QStringLiteral("encoder_3:4,,Disable,0xFFFF,0xFFFF,,10,Disable,0xFFFF,0xFFFF,,20,Disable,0xFFFF,0xFFFF;"));
        QCOMPARE(labels().mid(0, 3), (QStringList{"功能名称", "单击跳转页面", "单击串口返回使能"}));
        QCOMPARE(labels().value(6), QStringLiteral("双击触发的有效时间(50ms)"));
        m_dialog->setLanguage(0); // relabels the rows shown
        QCOMPARE(labels().mid(5, 3),
                 (QStringList{"doubleClickPageGoto", "doubleClickTimeGap(50ms)", "doubleClickReport"}));
        m_dialog->setLanguage(1);
        pressNew(2);
        QCOMPARE(labels().value(2), QStringLiteral("变量地址"));

        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(VANTILE_QM_DIR "/Translate_CN.qm")));
        QCoreApplication::installTranslator(&translator);
        m_dialog->retranslate();
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("动作列表"));
        QCOMPARE(button("pushButton_New")->text(), QStringLiteral("新建"));
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:9;"));
        QCOMPARE(lastPrompt(), QStringLiteral("请选择控制模式"));
        QCoreApplication::removeTranslator(&translator);
        m_dialog->retranslate();
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Action list"));
        QCOMPARE(model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Data"));
    }
};

QTEST_MAIN(TestDialogList)
#include "tst_dialog_list.moc"
