// The encoder's action list dialog on the offscreen platform: opening with an
// entry of each mode, the defaults of New, the text OK sends, Clear, the
// clean-up of address cells, the menus of switch and page cells, inline
// edits, Cancel, and texts that are refused.
//
// Every expected entry below is written out by hand from the entry layout:
// fields separated by ",", the last one closed by ";"; modes 2 and 3 carry
// their report switch as the last field.

#include "app/Prompts.h"
#include "editors/DialogList.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTranslator>
#include <QtTest>

using namespace vantile;

class TestDialogList : public QObject
{
    Q_OBJECT

    DialogList *m_dialog = nullptr;
    QString m_word;           // the word the next pop-up menu answers
    QStringList m_menusShown; // the words of every menu that was shown

    QTableView *table() { return m_dialog->findChild<QTableView *>(QStringLiteral("tableView")); }
    QComboBox *combo() { return m_dialog->findChild<QComboBox *>(QStringLiteral("comboBox_Mode")); }
    QPushButton *button(const char *name) { return m_dialog->findChild<QPushButton *>(QLatin1String(name)); }
    QAbstractItemModel *model() { return table()->model(); }

    QStringList column(int c)
    {
        QStringList out;
        for (int r = 0; r < model()->rowCount(); ++r)
            out << model()->index(r, c).data().toString();
        return out;
    }
    QStringList values() { return column(1); }
    QStringList labels() { return column(0); }

    void setCell(int row, const QString &text) { model()->setData(model()->index(row, 1), text); }

    // A real double click on a cell of the data column.
    void doubleClickCell(int row)
    {
        QTableView *t = table();
        const QModelIndex index = model()->index(row, 1);
        t->scrollTo(index);
        const QPoint at = t->visualRect(index).center();
        QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }

    // Double-clicks a cell, types into the inline editor and presses Enter.
    void typeIntoCell(int row, const QString &text)
    {
        doubleClickCell(row);
        auto *editor = table()->viewport()->findChild<QLineEdit *>();
        QVERIFY2(editor, "no inline editor opened");
        editor->selectAll();
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(table()->viewport()->findChild<QLineEdit *>() == nullptr
                    || !table()->viewport()->findChild<QLineEdit *>()->isVisible());
    }

    QString pressOk()
    {
        QSignalSpy spy(m_dialog, &DialogList::List_Update_to_MainWindow);
        button("pushButton_OK")->click();
        if (spy.count() != 1)
            return QStringLiteral("<%1 signals>").arg(spy.count());
        return spy.at(0).at(0).toString();
    }

    void openEmpty()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:NULL"));
        Prompts::recorded().clear();
    }

    void pressNew(int mode)
    {
        combo()->setCurrentIndex(mode - 1);
        button("pushButton_New")->click();
    }

private slots:
    void initTestCase()
    {
        Prompts::Responder r;
        r.word = [this](const QStringList &words) {
            m_menusShown << words.join(QLatin1Char('|'));
            return m_word;
        };
        Prompts::installResponder(r);
    }

    void init()
    {
        m_dialog = new DialogList;
        m_word.clear();
        m_menusShown.clear();
        Prompts::recorded().clear();
    }

    void cleanup()
    {
        delete m_dialog;
        m_dialog = nullptr;
    }

    void form()
    {
        QVERIFY(table());
        QCOMPARE(model()->columnCount(), 2);
        QCOMPARE(model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Parameter"));
        QCOMPARE(model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Data"));
        QCOMPARE(combo()->count(), 4);
        QCOMPARE(combo()->itemText(0), QStringLiteral("Mode1"));
        QCOMPARE(combo()->itemText(3), QStringLiteral("Mode4"));
        QCOMPARE(button("pushButton_New")->text(), QStringLiteral("New"));
        QCOMPARE(button("pushButton_OK")->text(), QStringLiteral("OK"));
        QCOMPARE(button("pushButton_Cel")->text(), QStringLiteral("Cancel"));
        QCOMPARE(button("pushButton_Clear")->text(), QStringLiteral("Clear"));
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Action list"));
        QVERIFY(!m_dialog->isVisible());
    }

    // --- opening with an entry ------------------------------------------------------

    void openMode1()
    {
        const QString text = QStringLiteral(
            "encoder_2:1,Enable,Page0003,0x1000,0x0001,0x1002,0x0002,0x1004,0x0003,0x1006,0x0004,"
            "0x1008,0x0005,0x100A,0x0006,0x100C,0x0007,0x100E,0x0008;");
        m_dialog->List_Update_from_MainWindow(text);
        QVERIFY(m_dialog->isVisible());
        QVERIFY(Prompts::recorded().isEmpty());
        QCOMPARE(m_dialog->target(), QStringLiteral("encoder_2"));
        QCOMPARE(combo()->currentText(), QStringLiteral("Mode1"));
        QCOMPARE(model()->rowCount(), 19);
        const QStringList expected{"1",      "Enable", "Page0003", "0x1000", "0x0001", "0x1002", "0x0002",
                                   "0x1004", "0x0003", "0x1006",   "0x0004", "0x1008", "0x0005", "0x100A",
                                   "0x0006", "0x100C", "0x0007",   "0x100E", "0x0008"};
        QCOMPARE(values(), expected);
        const QStringList l = labels();
        QCOMPARE(l.mid(0, 5), (QStringList{"controlMode", "reportToHost", "pageGoto", "writeAddr-", "writeAddr_value"}));
        QCOMPARE(l.at(17), QStringLiteral("writeAddr-"));
        QCOMPARE(l.at(18), QStringLiteral("writeAddr_value"));
        // Nothing changed: OK sends the same entry back.
        QCOMPARE(pressOk(), text);
    }

    void openMode2()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:2,0x2000,5,50,2,-,Disable,Enable;"));
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(combo()->currentText(), QStringLiteral("Mode2"));
        QCOMPARE(labels(), (QStringList{"controlMode", "reportToHost", "writeAddr", "minValue", "maxValue", "adjStep",
                                        "gradation", "loop"}));
        // The report switch closes the entry but stands second in the table.
        QCOMPARE(values(), (QStringList{"2", "Enable", "0x2000", "5", "50", "2", "-", "Disable"}));
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:2,0x2000,5,50,2,-,Disable,Enable;"));
    }

    void openMode3()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        QCOMPARE(combo()->currentText(), QStringLiteral("Mode3"));
        QCOMPARE(labels(), (QStringList{"controlMode", "reportToHost", "writeAddr", "minValue", "maxValue", "adjStep"}));
        QCOMPARE(values(), (QStringList{"3", "Enable", "0x0010", "0", "10", "1"}));
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
    }

    void openMode4()
    {
        const QString text = QStringLiteral("encoder_3:4,Page0001,Enable,0x0100,0x0001,Page0002,8,Disable,"
                                            "0x0101,0x0002,,30,Enable,0x0102,0x0003;");
        m_dialog->List_Update_from_MainWindow(text);
        QCOMPARE(combo()->currentText(), QStringLiteral("Mode4"));
        QCOMPARE(model()->rowCount(), 15);
        QCOMPARE(labels(), (QStringList{"controlMode", "singleClickPageGoto", "singleClickReport", "singleClick_Addr",
                                        "singleClick_Addr_value", "doubleClickPageGoto", "doubleClickTimeGap(50ms)",
                                        "doubleClickReport", "doubleClick_Addr", "doubleClick_Addr_value",
                                        "longPressPageGoto", "longPressDuration(50ms)", "longPressReport",
                                        "longPress_Addr", "longPress_Addr_value"}));
        QCOMPARE(values(), (QStringList{"4", "Page0001", "Enable", "0x0100", "0x0001", "Page0002", "8", "Disable",
                                        "0x0101", "0x0002", "", "30", "Enable", "0x0102", "0x0003"}));
        QCOMPARE(pressOk(), text);
    }

    void shortEntryTakesDefaults()
    {
        // A mode 3 entry cut off after the address: the rest are the defaults.
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_4:3,0x0022;"));
        QCOMPARE(values(), (QStringList{"3", "Disable", "0x0022", "0", "100", "1"}));
        QCOMPARE(pressOk(), QStringLiteral("encoder_4:3,0x0022,0,100,1,Disable;"));
    }

    // --- texts the dialog refuses -----------------------------------------------------

    void notAnEncoderShowsNothing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("button") << QStringLiteral("button_0:1,Disable,,0xFFFF,0xFFFF;");
        QTest::newRow("empty") << QString();
        QTest::newRow("capital") << QStringLiteral("Encoder_0:3,0xFFFF,0,100,1,Disable;");
    }

    void notAnEncoderShowsNothing()
    {
        QFETCH(QString, text);
        QSignalSpy list(m_dialog, &DialogList::List_Update_to_MainWindow);
        QSignalSpy mask(m_dialog, &DialogList::Background_mask_Close_Signal_list);
        m_dialog->List_Update_from_MainWindow(text);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(model()->rowCount(), 0);
        QVERIFY(m_dialog->target().isEmpty());
        QVERIFY(Prompts::recorded().isEmpty());
        QCOMPARE(list.count(), 0);
        QCOMPARE(mask.count(), 0);
    }

    void otherModeAsks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("mode 7") << QStringLiteral("encoder_0:7,Disable,0xFFFF;");
        QTest::newRow("mode 0") << QStringLiteral("encoder_0:0,Disable;");
        QTest::newRow("empty item") << QStringLiteral("encoder_0:NULL");
    }

    void otherModeAsks()
    {
        QFETCH(QString, text);
        m_dialog->List_Update_from_MainWindow(text);
        QCOMPARE(Prompts::recorded().size(), 1);
        QCOMPARE(Prompts::recorded().at(0).title, QStringLiteral("Message"));
        QCOMPARE(Prompts::recorded().at(0).text, QStringLiteral("Please select the control mode"));
        QCOMPARE(model()->rowCount(), 0);
        // The dialog stays open so that a mode can be chosen and filled in with New.
        QVERIFY(m_dialog->isVisible());
        pressNew(3);
        QCOMPARE(values(), (QStringList{"3", "Disable", "0xFFFF", "0", "100", "1"}));
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:3,0xFFFF,0,100,1,Disable;"));
    }

    void emptyTableSendsNull()
    {
        openEmpty();
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:NULL"));
    }

    // --- New ------------------------------------------------------------------------------

    void newDefaults_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("sent");
        const QString f = QStringLiteral("0xFFFF");
        QTest::newRow("mode 1") << 1
                                << QStringList{"1", "Disable", "", f, f, f, f, f, f, f, f, f, f, f, f, f, f, f, f}
                                << QStringLiteral("encoder_0:1,Disable,,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,"
                                                  "0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,"
                                                  "0xFFFF;");
        QTest::newRow("mode 2") << 2 << QStringList{"2", "Disable", "0xFFFF", "0", "100", "1", "+", "Enable"}
                                << QStringLiteral("encoder_0:2,0xFFFF,0,100,1,+,Enable,Disable;");
        QTest::newRow("mode 3") << 3 << QStringList{"3", "Disable", "0xFFFF", "0", "100", "1"}
                                << QStringLiteral("encoder_0:3,0xFFFF,0,100,1,Disable;");
        QTest::newRow("mode 4") << 4
                                << QStringList{"4",  "",   "Disable", f, f, "", "10", "Disable",
                                               f,    f,    "",        "20", "Disable", f, f}
                                << QStringLiteral("encoder_0:4,,Disable,0xFFFF,0xFFFF,,10,Disable,0xFFFF,0xFFFF,"
                                                  ",20,Disable,0xFFFF,0xFFFF;");
    }

    void newDefaults()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, rows);
        QFETCH(QString, sent);
        openEmpty();
        pressNew(mode);
        QCOMPARE(m_dialog->tableMode(), mode);
        QCOMPARE(values(), rows);
        QCOMPARE(pressOk(), sent);
    }

    void newReplacesAnOpenedEntry()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_5:3,0x0010,0,10,1,Enable;"));
        pressNew(2);
        QCOMPARE(values(), (QStringList{"2", "Disable", "0xFFFF", "0", "100", "1", "+", "Enable"}));
        QCOMPARE(pressOk(), QStringLiteral("encoder_5:2,0xFFFF,0,100,1,+,Enable,Disable;"));
    }

    // --- Clear ----------------------------------------------------------------------------

    void clearSendsNull()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:3,0x0010,0,10,1,Enable;"));
        button("pushButton_Clear")->click();
        QCOMPARE(values().value(0), QStringLiteral("NULL"));
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:NULL"));
    }

    void clearOnAnEmptyTable()
    {
        openEmpty();
        button("pushButton_Clear")->click();
        QCOMPARE(values(), QStringList{"NULL"});
        QCOMPARE(labels(), QStringList{"controlMode"});
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:NULL"));
    }

    // --- address cells --------------------------------------------------------------------

    void addressCellsAtOk()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        setCell(2, QStringLiteral("12"));
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0x0000,0,10,1,Enable;"));

        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        setCell(2, QString());
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0xFFFF,0,10,1,Enable;"));

        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        setCell(2, QStringLiteral("0X12ab"));
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0X12ab,0,10,1,Enable;"));
    }

    void addressPairsOfMode1()
    {
        openEmpty();
        pressNew(1);
        setCell(3, QStringLiteral("0x0200")); // first address
        setCell(4, QStringLiteral("7"));      // its value, not hexadecimal
        setCell(5, QStringLiteral(""));       // second address
        setCell(18, QStringLiteral("0x0009")); // the last value
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:1,Disable,,0x0200,0x0000,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,"
                                           "0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0x0009;"));
    }

    void numbersAreNotAddresses()
    {
        // minValue "12" and an empty adjStep stay as they are.
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        setCell(3, QStringLiteral("12"));
        setCell(5, QString());
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0x0010,12,10,,Enable;"));
    }

    // --- double clicks --------------------------------------------------------------------

    void inlineEditOfAnAddress()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        typeIntoCell(2, QStringLiteral("12"));
        QCOMPARE(values().value(2), QStringLiteral("0x0000"));
        typeIntoCell(2, QString());
        QCOMPARE(values().value(2), QStringLiteral("0xFFFF"));
        typeIntoCell(2, QStringLiteral("0x0abc"));
        QCOMPARE(values().value(2), QStringLiteral("0x0abc"));
        typeIntoCell(4, QStringLiteral("250"));
        QCOMPARE(values().value(4), QStringLiteral("250"));
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0x0abc,0,250,1,Enable;"));
    }

    void typedSeparatorsDoNotSplitTheEntry()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        typeIntoCell(3, QStringLiteral("5,"));
        QCOMPARE(values().value(3), QStringLiteral("5"));
        typeIntoCell(5, QStringLiteral("2;"));
        QCOMPARE(values().value(5), QStringLiteral("2"));
        QCOMPARE(pressOk(), QStringLiteral("encoder_1:3,0x0010,5,10,2,Enable;"));
    }

    void switchMenu()
    {
        openEmpty();
        pressNew(2);
        m_word = QStringLiteral("Enable");
        doubleClickCell(1); // reportToHost
        QCOMPARE(m_menusShown, QStringList{"Enable|Disable"});
        QCOMPARE(values().value(1), QStringLiteral("Enable"));
        m_word = QStringLiteral("Disable");
        doubleClickCell(7); // loop
        QCOMPARE(values().value(7), QStringLiteral("Disable"));
        typeIntoCell(3, QStringLiteral("3"));   // minValue
        typeIntoCell(6, QStringLiteral("-"));   // gradation
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:2,0xFFFF,3,100,1,-,Disable,Enable;"));
    }

    void dismissedMenuChangesNothing()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        m_word.clear();
        doubleClickCell(1);
        QCOMPARE(m_menusShown.size(), 1);
        QCOMPARE(values().value(1), QStringLiteral("Enable"));
    }

    void pageMenu()
    {
        m_dialog->setPages({"Page0000", "Page0001", "Page0002"});
        openEmpty();
        pressNew(4);
        m_word = QStringLiteral("Page0002");
        doubleClickCell(1); // singleClickPageGoto
        QCOMPARE(m_menusShown, QStringList{"Page0000|Page0001|Page0002"});
        m_word = QStringLiteral("Enable");
        doubleClickCell(12); // longPressReport
        m_word = QStringLiteral("Page0000");
        doubleClickCell(10); // longPressPageGoto
        QCOMPARE(m_menusShown.size(), 3);
        QCOMPARE(m_menusShown.at(1), QStringLiteral("Enable|Disable"));
        typeIntoCell(6, QStringLiteral("12")); // doubleClickTimeGap(50ms) is a number, not an address
        typeIntoCell(13, QStringLiteral("0x0300"));
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:4,Page0002,Disable,0xFFFF,0xFFFF,,12,Disable,0xFFFF,0xFFFF,"
                                           "Page0000,20,Enable,0x0300,0xFFFF;"));
    }

    void modeCellDoesNotEdit()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_1:3,0x0010,0,10,1,Enable;"));
        doubleClickCell(0);
        QVERIFY(m_menusShown.isEmpty());
        QVERIFY(!table()->viewport()->findChild<QLineEdit *>());
        QCOMPARE(values().value(0), QStringLiteral("3"));
        // Nor does the label column.
        const QPoint label = table()->visualRect(model()->index(2, 0)).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, label);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, label);
        QVERIFY(!table()->viewport()->findChild<QLineEdit *>());
        QCOMPARE(labels().value(2), QStringLiteral("writeAddr"));
        QVERIFY(m_menusShown.isEmpty());
        // The same gesture on the switch of the row below does open its menu.
        m_word = QStringLiteral("Disable");
        doubleClickCell(1);
        QCOMPARE(m_menusShown, QStringList{"Enable|Disable"});
        QCOMPARE(values().value(1), QStringLiteral("Disable"));
    }

    // --- closing --------------------------------------------------------------------------

    void cancelSendsNoEntry()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:2,0x2000,5,50,2,-,Disable,Enable;"));
        setCell(2, QStringLiteral("0x3000"));
        QSignalSpy list(m_dialog, &DialogList::List_Update_to_MainWindow);
        QSignalSpy mask(m_dialog, &DialogList::Background_mask_Close_Signal_list);
        button("pushButton_Cel")->click();
        QCOMPARE(list.count(), 0);
        QCOMPARE(mask.count(), 1);
        QVERIFY(!m_dialog->isVisible());
    }

    void escapeActsAsCancel()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:3,0x0010,0,10,1,Enable;"));
        QSignalSpy list(m_dialog, &DialogList::List_Update_to_MainWindow);
        QSignalSpy mask(m_dialog, &DialogList::Background_mask_Close_Signal_list);
        QTest::keyClick(m_dialog, Qt::Key_Escape);
        QCOMPARE(list.count(), 0);
        QCOMPARE(mask.count(), 1);
        QVERIFY(!m_dialog->isVisible());
    }

    void okClosesAndLiftsTheMask()
    {
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:3,0x0010,0,10,1,Enable;"));
        QSignalSpy mask(m_dialog, &DialogList::Background_mask_Close_Signal_list);
        QCOMPARE(pressOk(), QStringLiteral("encoder_0:3,0x0010,0,10,1,Enable;"));
        QCOMPARE(mask.count(), 1);
        QVERIFY(!m_dialog->isVisible());
    }

    // --- language ---------------------------------------------------------------------------

    void chineseLabels()
    {
        m_dialog->setLanguage(1);
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_3:4,,Disable,0xFFFF,0xFFFF,,10,Disable,"
                                                             "0xFFFF,0xFFFF,,20,Disable,0xFFFF,0xFFFF;"));
        const QStringList l = labels();
        QCOMPARE(l.value(0), QStringLiteral("功能名称"));
        QCOMPARE(l.value(1), QStringLiteral("单击跳转页面"));
        QCOMPARE(l.value(2), QStringLiteral("单击串口返回使能"));
        QCOMPARE(l.value(3), QStringLiteral("操作变量地址"));
        QCOMPARE(l.value(4), QStringLiteral("    _赋值"));
        QCOMPARE(l.value(6), QStringLiteral("双击触发的有效时间(50ms)"));
        QCOMPARE(l.value(11), QStringLiteral("长按触发的有效时间(50ms)"));
        QCOMPARE(l.value(12), QStringLiteral("长按串口返回使能"));
        // Switching back relabels the rows that are shown.
        m_dialog->setLanguage(0);
        QCOMPARE(labels().value(6), QStringLiteral("doubleClickTimeGap(50ms)"));
        m_dialog->setLanguage(1);
        pressNew(2);
        QCOMPARE(labels(), (QStringList{"功能名称", "串口返回使能", "变量地址", "最小值", "最大值", "步进",
                                        "变量变化模式", "循环使能"}));
        pressNew(1);
        QCOMPARE(labels().value(2), QStringLiteral("跳转页面"));
    }

    void retranslate()
    {
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(VANTILE_QM_DIR "/Translate_CN.qm")));
        QCoreApplication::installTranslator(&translator);
        m_dialog->retranslate();
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("动作列表"));
        QCOMPARE(button("pushButton_New")->text(), QStringLiteral("新建"));
        QCOMPARE(button("pushButton_Clear")->text(), QStringLiteral("清除"));
        QCOMPARE(model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("参数"));
        m_dialog->List_Update_from_MainWindow(QStringLiteral("encoder_0:9;"));
        QCOMPARE(Prompts::recorded().value(0).title, QStringLiteral("提示"));
        QCOMPARE(Prompts::recorded().value(0).text, QStringLiteral("请选择控制模式"));
        QCoreApplication::removeTranslator(&translator);
        m_dialog->retranslate();
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Action list"));
        QCOMPARE(button("pushButton_OK")->text(), QStringLiteral("OK"));
    }
};

QTEST_MAIN(TestDialogList)
#include "tst_dialog_list.moc"
