// The static text editor and the language text editor: the user's flows,
// the bytes of the files they write, files they can't read in full.

#include "GuiTestSupport.h"

#include "editors/Constanttextedit.h"
#include "editors/LanguageTextEditor.h"
#include "project/TextTables.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetLine.h"

using namespace gui;

namespace {

const QByteArray kBom("\xEF\xBB\xBF");

QByteArray iniWithLanguages(const char *count)
{
    return iniText() + QByteArray("LanguageNum:") + count + '\n';
}

// A label line: multi-language switch, static mark and entry number as given.
QString labelLine(int i, const char *addr, const QString &text, int multi, int isStatic = 0, int constant = 0)
{
    return QStringLiteral("label_%1:%2,20,10,10,100,30,32,32,0,0,0,0,D3D3D3,000000,%3,0xFFFF,l%1,Disable,%4,%5,%6,0xFFFF,1;")
        .arg(i).arg(QLatin1String(addr)).arg(LineGrammar::toHexText(text)).arg(multi).arg(isStatic).arg(constant);
}

QString textrollLine(int i, const char *addr, const QString &text)
{
    return QStringLiteral("textroll_%1:%2,10,50,200,30,32,24,24,0,0,000000,0000FF,64,50,Left,Enable,%3,Disable,0xFFFF,t%1,1,1;")
        .arg(i).arg(QLatin1String(addr)).arg(LineGrammar::toHexText(text));
}

QString defaultTextOf(const QStringList &lines, const QString &objectName)
{
    for (const QString &line : lines) {
        EditBuffer b;
        if (line.startsWith(objectName + ':') && WidgetLine::parse(line, b) == ParseStatus::Ok)
            return b.text("defaultText");
    }
    return QStringLiteral("<none>");
}

} // namespace

class TestTextEditors : public QObject, public Fixture
{
    Q_OBJECT
private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    // Two languages, one font: rows added, texts typed, a colour chosen,
    // saved, and the file checked byte by byte; a Statictext then takes
    // entry 2 from its Constant_Num menu and its text follows.
    void staticTextFlow()
    {
        project({PageList::blankLine(0)}, {{PageList::blankLine(0), labelLine(0, "0xFFFF", "", 0, 1, 0)}},
                iniWithLanguages("2"));
        QDir(root()).mkpath("FontBin");
        writeFile(root() + "FontBin/03_Sans24Font.bin", QByteArray(104, '\0'));
        QVERIFY(openWindow());
        trigger("actionConstant_Label");
        Constanttextedit *ed = m_w->constantTextEditor();
        QVERIFY(ed->isVisible());
        QTableWidget *t = ed->table();
        QCOMPARE(t->columnCount(), 7);
        QCOMPARE(t->item(1, 2)->text(), QStringLiteral("Color"));
        ed->on_pushButton_add_clicked();
        ed->on_pushButton_add_clicked();
        QCOMPARE(t->item(3, 0)->text(), QStringLiteral("Statictext_2"));
        QCOMPARE(t->item(2, 3)->text(), QStringLiteral("03_Sans24Font.bin"));
        t->item(2, 1)->setText("Hi, there");
        t->item(3, 1)->setText("温度"_q);
        m_answers.color = QColor(0x12, 0x34, 0x56);
        ed->show_prodcut_sets(2, 2);
        QCOMPARE(m_answers.menus.size(), 0);
        ed->on_pushButton_ok_clicked();
        QVERIFY(!ed->isVisible());
        // "Hi, there" is 48 69 2C 20 74 68 65 72 65; 温度 is E6 B8 A9 E5 BA A6
        QCOMPARE(readAll(root() + "Constant_text.csv"),
                 kBom + "1,*Hex:48692C207468657265,0X123456,3,*Hex:,0X000000,3\n"
                        "2,*Hex:E6B8A9E5BAA6,0X000000,3,*Hex:,0X000000,3\n");

        // reopened: the font id turns back into the file's name
        trigger("actionConstant_Label");
        QCOMPARE(t->rowCount(), 4);
        QCOMPARE(t->item(2, 1)->text(), QStringLiteral("Hi, there"));
        QCOMPARE(t->item(2, 2)->text(), QStringLiteral("0X123456"));
        QCOMPARE(t->item(3, 6)->text(), QStringLiteral("03_Sans24Font.bin"));
        ed->on_pushButton_Canncel_clicked();
        QVERIFY(prompts("question").isEmpty()); // nothing changed, nothing asked

        m_w->selectByName("label_0");
        m_answers.word = "2:温度"_q;
        m_w->on_tableView_Para_doubleClicked(table(*m_w, "tableView_Para")->model()->index(19, 1));
        QCOMPARE(m_answers.menus.value(0), "1:Hi, there|2:温度"_q);
        QCOMPARE(cell(*m_w, "tableView_Para", 19), QStringLiteral("2"));
        QCOMPARE(defaultTextOf(m_w->currentPageLines(), "label_0"), "温度"_q);

        // the entry's text changes: the Statictext follows on OK
        trigger("actionConstant_Label");
        t->item(3, 1)->setText("湿度"_q);
        ed->on_pushButton_ok_clicked();
        QCOMPARE(defaultTextOf(m_w->currentPageLines(), "label_0"), "湿度"_q);

        // every row deleted: a file with no rows
        trigger("actionConstant_Label");
        while (t->rowCount() > Constanttextedit::kHeaderRows) {
            t->setCurrentCell(Constanttextedit::kHeaderRows, 1);
            ed->on_pushButton_del_clicked();
        }
        ed->on_pushButton_ok_clicked();
        QCOMPARE(readAll(root() + "Constant_text.csv"), kBom);
    }

    void newRowWithoutFonts()
    {
        project({PageList::blankLine(0)}, {{PageList::blankLine(0)}});
        QVERIFY(openWindow());
        trigger("actionConstant_Label");
        Constanttextedit *ed = m_w->constantTextEditor();
        ed->on_pushButton_add_clicked();
        QCOMPARE(ed->table()->item(2, 3)->text(), QStringLiteral("NoFont1"));
        m_answers.install(QMessageBox::No);
        ed->on_pushButton_Canncel_clicked();
        QCOMPARE(lastPrompt(), QStringLiteral("Do you need to save ?"));
        QVERIFY(!QFile::exists(root() + "Constant_text.csv"));
    }

    // Three languages, two multi-language widgets and one without: the
    // table, the texts typed, the page's .csv, the header file and the page.
    void languageFlow()
    {
        project({PageList::blankLine(0)},
                {{PageList::blankLine(0), labelLine(0, "0x0100", "Hello", 1), textrollLine(1, "0x0200", "Scroll"),
                  labelLine(2, "0x0300", "Plain", 0)}},
                iniWithLanguages("3"));
        QVERIFY(openWindow());
        trigger("actionLanguage_Text");
        LanguageTextEditor *ed = m_w->languageTextEditor();
        QTableWidget *t = ed->table();
        QCOMPARE(ed->windowTitle(), QStringLiteral("LanguageTextEditor Page0000"));
        QCOMPARE(t->columnCount(), 6);
        QCOMPARE(t->rowCount(), 2);
        QCOMPARE(t->horizontalHeaderItem(5)->text(), QStringLiteral("Language2"));
        QCOMPARE(t->item(1, 1)->text(), QStringLiteral("0x0200"));
        QCOMPARE(t->item(0, 3)->text(), QStringLiteral("Hello"));
        QSignalSpy preview(ed, &LanguageTextEditor::Preview_to_MainWindow);
        t->item(0, 3)->setText("Hi");
        t->item(0, 4)->setText("Hallo");
        ed->on_tableWidget_cellClicked(0, 4); // the canvas shows the clicked language
        QCOMPARE(preview.last(), QVariantList({"label_0", "Hallo"}));
        t->item(0, 5)->setText("Bonjour");
        t->item(1, 4)->setText("Rollen");
        t->item(1, 5)->setText("Défiler"_q);
        ed->on_pushButton_ok_clicked();
        QVERIFY(!ed->isVisible());
        QCOMPARE(readAll(root() + "MultiLanguage/Page0000.csv"),
                 kBom + "label_0,0x0100,20,Hi,Hallo,Bonjour\ntextroll_1,0x0200,32,Scroll,Rollen,D\xC3\xA9" "filer\n");
        QCOMPARE(readAll(root() + "MultiLanguage/TableHeader.txt"), QByteArray("defaultLanguage,Language1,Language2\n"));
        QCOMPARE(defaultTextOf(m_w->currentPageLines(), "label_0"), QStringLiteral("Hi"));
        QCOMPARE(defaultTextOf(m_w->currentPageLines(), "label_2"), QStringLiteral("Plain"));

        // reopened: the other languages come back from the file
        trigger("actionLanguage_Text");
        QCOMPARE(t->item(1, 5)->text(), "Défiler"_q);
        m_answers.install(QMessageBox::No);
        ed->on_pushButton_Canncel_clicked();
        QCOMPARE(prompts("question").value(0).title, QStringLiteral("Quit"));
    }

    void languageColumns_data()
    {
        addColumns<QString, int>("langueNum", "columns");
        QTest::newRow("empty counts as one") << "" << 4;
        QTest::newRow("nine") << "9" << 12;
        QTest::newRow("40 is cut to 32") << "40" << 35;
    }
    void languageColumns()
    {
        QFETCH(QString, langueNum);
        LanguageTextEditor ed;
        ed.setSource({[this] { return root(); }, [] { return QStringList{PageList::blankLine(0)}; },
                      [langueNum] { return langueNum; }});
        ed.Update_from_MainWindow("0000");
        QTEST(ed.table()->columnCount(), "columns");
        QCOMPARE(ed.table()->rowCount(), 0);
        QVERIFY(prompts("message").isEmpty());
    }

    // Files that can't be read in full: a message, never a crash, and the
    // rows that can be read stay.
    void badFiles_data()
    {
        // file "": a folder in place of the file
        addColumns<QString, QByteArray, QString, int>("file", "bytes", "message", "rows");
        const QString incomplete = "Some lines of the file";
        QTest::newRow("constants: too few fields") << "Constant_text.csv" << QByteArray("1,*Hex:41\n2,*Hex:42,0X0000FF,0\n")
                                                   << incomplete << 2;
        QTest::newRow("constants: garbage") << "Constant_text.csv" << QByteArray("\xFF\x00garbage;;\n\n,,,\n", 15)
                                            << incomplete << 2;
        QTest::newRow("constants: a folder") << "" << QByteArray() << "Read fail,please check the path!" << 0;
        QTest::newRow("page texts: short line") << "MultiLanguage/Page0000.csv" << QByteArray("label_0\nnonsense,\n")
                                                << incomplete << 1;
        QTest::newRow("page texts: a folder") << "MultiLanguage/Page0000.csv" << QByteArray()
                                              << "Read fail,please check the path!" << 1;
    }
    void badFiles()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(int, rows);
        project({PageList::blankLine(0)}, {{PageList::blankLine(0), labelLine(0, "0x0100", "Hello", 1)}});
        QDir(root()).mkpath("MultiLanguage");
        const bool constants = !file.startsWith("MultiLanguage");
        const QString path = root() + (file.isEmpty() ? QStringLiteral("Constant_text.csv") : file);
        if (bytes.isEmpty())
            QVERIFY(QDir().mkpath(path));
        else
            writeFile(path, bytes);
        QVERIFY(openWindow());
        trigger(constants ? "actionConstant_Label" : "actionLanguage_Text");
        QFETCH(QString, message);
        QVERIFY2(prompts("message").value(0).text.startsWith(message), qPrintable(lastPrompt()));
        if (constants) {
            Constanttextedit *ed = m_w->constantTextEditor();
            QCOMPARE(ed->table()->rowCount() - Constanttextedit::kHeaderRows, rows);
            if (rows > 0) { // saved again, the rows are whole
                ed->on_pushButton_ok_clicked();
                QCOMPARE(TextTables::readConstantText(path, 1).entries.size(), rows);
                QVERIFY(TextTables::readConstantText(path, 1).problems.isEmpty());
            }
        } else {
            QCOMPARE(m_w->languageTextEditor()->table()->rowCount(), rows);
            QCOMPARE(m_w->languageTextEditor()->table()->item(0, 3)->text(), QStringLiteral("Hello"));
        }
    }

    void constantMenuEntries()
    {
        QStringList problems;
        const auto entries = TextTables::parseConstantText({"1,*Hex:4869,0X000000,0", "5,plain,0XFF0000,2", "x,*Hex:41"}, 1, &problems);
        QCOMPARE(TextTables::constantMenu(entries), (QStringList{"1:Hi", "5:plain"}));
        QCOMPARE(entries[2].number, 0);
        QCOMPARE(problems.size(), 2); // no number, too few fields
        QCOMPARE(TextTables::constantMenuNumber("5:plain"), 5);
        QCOMPARE(TextTables::constantMenuNumber("NoConstant_Num1"), -1);
    }
};

QTEST_MAIN(TestTextEditors)
#include "tst_text_editors.moc"
