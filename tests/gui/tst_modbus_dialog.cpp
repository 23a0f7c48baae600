// The Modbus command list dialog through the designer: rows inserted,
// deleted and moved by its menus and buttons, the value menus, save and
// reload, the close question, the automatic save of a build, and a
// damaged command.list that is shown but left as it is.

#include "GuiTestSupport.h"
#include "editors/DialogModbus.h"

#include <QContextMenuEvent>

using namespace gui;

namespace {

const QByteArray kThree = "1,0x01,0x03,0x0001,0,1,0x00,0,0,100,0x00;\n"
                          "1,0x01,0x03,0x0002,0,1,0x00,0,0,100,0x00;\n"
                          "0,0x01,0x03,0x0003,0,1,0x00,0,0,100,0x00;\n";

} // namespace

class TestModbusDialog : public QObject, public Fixture
{
    Q_OBJECT

    DialogModbus *dialog() { return m_w->modbusDialog(); }
    QTableWidget *t() { return dialog()->table(); }
    QString column(int c)
    {
        QStringList out;
        for (int r = 0; r < t()->rowCount(); ++r)
            out << t()->item(r, c)->text();
        return out.join('|');
    }
    QPushButton *button(const QString &name) { return dialog()->findChild<QPushButton *>("pushButton_" + name); }
    void rightClick(int row, int col, const QString &word)
    {
        m_answers.word = word;
        const QPoint at = t()->visualRect(t()->model()->index(row, col)).center();
        QContextMenuEvent e(QContextMenuEvent::Mouse, at, t()->viewport()->mapToGlobal(at));
        QApplication::sendEvent(t()->viewport(), &e);
    }
    void openList(const QByteArray &file, const QByteArray &ini = iniText())
    {
        project({PageList::blankLine(0)}, {{}}, ini);
        writeFile(root() + "command.list", file);
        QVERIFY(openWindow());
        trigger("actionModbus");
        QVERIFY(dialog()->isVisible());
    }

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void rowOperations_data()
    {
        // ops: "<word or button> <row>"
        addColumns<QStringList, QString, QString>("ops", "registers", "told");
        QTest::newRow("insert") << QStringList{"insert 0"} << "0x0001||0x0002|0x0003" << QString();
        QTest::newRow("delete") << QStringList{"delete 1"} << "0x0001|0x0003" << QString();
        QTest::newRow("down") << QStringList{"Down 0"} << "0x0002|0x0001|0x0003" << QString();
        QTest::newRow("up") << QStringList{"Up 2"} << "0x0001|0x0003|0x0002" << QString();
        QTest::newRow("top") << QStringList{"Up 0"} << "0x0001|0x0002|0x0003" << "Has reached the top!";
        QTest::newRow("bottom") << QStringList{"Down 2"} << "0x0001|0x0002|0x0003" << "Has reached the bottom!";
        QTest::newRow("last row") << QStringList{"delete 0", "delete 0", "delete 0"} << "0x0003"
                                  << "Keep at least one line!";
    }
    void rowOperations()
    {
        QFETCH(QStringList, ops);
        QFETCH(QString, registers);
        openList(kThree);
        for (const QString &op : ops) {
            const QString word = op.section(' ', 0, 0);
            const int row = op.section(' ', 1).toInt();
            t()->setCurrentCell(row, DialogModbus::Register);
            if (word == "Up" || word == "Down")
                button(word)->click();
            else
                rightClick(row, DialogModbus::Register, word);
        }
        QCOMPARE(column(DialogModbus::Register), registers);
        QCOMPARE(column(DialogModbus::Item), QStringLiteral("1|2|3|4").left(registers.count('|') * 2 + 1));
        QTEST(prompts("message").isEmpty() ? QString() : lastPrompt(), "told");
        QCOMPARE(dialog()->isChanged(), registers != "0x0001|0x0002|0x0003");
    }

    // Menus fill Function and Operation; Save writes the file the user
    // picks; closing then asks nothing, and the list opens again as saved.
    void saveAndReload()
    {
        openList(kThree);
        rightClick(0, DialogModbus::Function, "0x10");
        QCOMPARE(m_answers.menus.last(), QStringLiteral("0x03|0x04|0x06|0x10|0x01|0x02|0x05|0x0F"));
        rightClick(2, DialogModbus::Operation, "0x02");
        t()->item(1, DialogModbus::Address)->setText("");
        t()->item(1, DialogModbus::Description)->setText("pump");
        m_answers.files << root() + "command.list";
        button("SaveCommand")->click();
        // the empty Address goes out as 0xA5
        QCOMPARE(readAll(root() + "command.list"), QByteArray("1,0x01,0x10,0x0001,0,1,0x00,0,0,100,0x00;\n"
                                                              "1,0xA5,0x03,0x0002,0,1,0x00,0,0,100,0x00;pump\n"
                                                              "0,0x01,0x03,0x0003,0,1,0x02,0,0,100,0x00;\n"));
        dialog()->close();
        QVERIFY(!dialog()->isVisible() && prompts("question").isEmpty());
        trigger("actionModbus");
        QCOMPARE(column(DialogModbus::Address), QStringLiteral("0x01|0xA5|0x01"));
        QCOMPARE(t()->item(2, DialogModbus::Select)->checkState(), Qt::Unchecked);
    }

    void closeQuestion_data()
    {
        QTest::addColumn<int>("answer"); // Yes saves and closes, No closes, Cancel keeps the dialog
        QTest::addColumn<bool>("window"); // the main window is closed rather than the dialog
        QTest::newRow("yes") << int(QMessageBox::Yes) << false;
        QTest::newRow("no") << int(QMessageBox::No) << false;
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << false;
        QTest::newRow("window closed, yes") << int(QMessageBox::Yes) << true;
        QTest::newRow("window closed, cancel") << int(QMessageBox::Cancel) << true;
    }
    void closeQuestion()
    {
        QFETCH(int, answer);
        QFETCH(bool, window);
        openList(kThree);
        rightClick(0, DialogModbus::Register, "delete");
        m_answers.answer = QMessageBox::StandardButton(answer);
        if (window) {
            m_w->close();
            if (answer == QMessageBox::Cancel)
                QVERIFY(m_w->isVisible()); // the unsaved rows keep the window open
        } else {
            dialog()->close();
        }
        QVERIFY(!prompts("question").isEmpty());
        QCOMPARE(prompts("question")[0].title + ": " + prompts("question")[0].text,
                 QStringLiteral("Quit: Do you need to save command.list?"));
        if (window) {
            QCOMPARE(readAll(root() + "command.list"),
                     answer == QMessageBox::Yes ? kThree.mid(kThree.indexOf('\n') + 1) : kThree);
            return;
        }
        QCOMPARE(prompts("question").size(), 1);
        QCOMPARE(prompts("question")[0].title + ": " + lastPrompt(), QStringLiteral("Quit: Do you need to save command.list?"));
        QCOMPARE(dialog()->isVisible(), answer == QMessageBox::Cancel);
        QCOMPARE(readAll(root() + "command.list"), answer == QMessageBox::Yes ? kThree.mid(kThree.indexOf('\n') + 1) : kThree);
    }

    // A build in master mode writes unsaved rows first and reads them.
    void buildSavesUnsavedRows()
    {
        openList(kThree, iniText() + "Modbus: 1\n");
        rightClick(0, DialogModbus::Function, "0x0F");
        trigger("actionMake_bin");
        QVERIFY(readAll(root() + "command.list").startsWith("1,0x01,0x0F,0x0001,") && !dialog()->isChanged());
        const QByteArray image = readAll(root() + "Morvane_Flash.bin");
        QCOMPARE(image.mid(0xC180, 3), QByteArray("\xA5\x01\x0F"));
    }

    // A damaged file is told and shown; nobody saved, so it stays as it is.
    void damagedFileKept()
    {
        const QByteArray damaged = kThree + "1,0x01,0x03";
        openList(damaged, iniText() + "Modbus: 1\n");
        QVERIFY(wasTold("incomplete") && prompts("message").last().detail.endsWith("Line 4: 1,0x01,0x03"));
        QCOMPARE(t()->rowCount(), 4);
        trigger("actionMake_bin");
        dialog()->close();
        QCOMPARE(readAll(root() + "command.list"), damaged);
    }
};

QTEST_MAIN(TestModbusDialog)
#include "tst_modbus_dialog.moc"
