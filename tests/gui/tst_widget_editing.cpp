// Widgets of a page in the designer: loading every kind's line unharmed,
// the live labels of the described kinds, and editing a button through the
// parameter table until the saved line is what the grammar says.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "designer/CanvasWidgets.h"
#include "project/AppPaths.h"
#include "project/PageList.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

using namespace vantile;

namespace {

const char *const kButton = "button_0:100,50,120,40,0x0020,,,,button_0,Disable,Disable,0x0000,0xFFFF,1;";
const char *const kPageLine = "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);P;Disable;0;0;Disable;";
const char *const kKey = "kbkey_3:5,5,20,20,0x0041,,key,Disable,1;";

// One line of each kind; the widget fields past the rectangle don't matter here.
QStringList everyKind()
{
    const char *prefixes[] = {"label", "number", "icon", "bitIcon", "gif", "varAdj", "slider", "RTC",
                              "uitimer", "qrcode", "Clock", "keypad", "textroll", "pngNumber", "wav", "slmenu",
                              "slidemenuPro", "rtouch", "progress", "rProgress", "enkeyB", "cnkeyB", "batVar",
                              "curve", "encoder", "camera", "video", "autoVar", "needle"};
    QStringList lines;
    for (const char *p : prefixes)
        lines << QStringLiteral("%1_0:10,10,30,30,abc,0x0001;").arg(QLatin1String(p));
    return lines;
}

} // namespace

class TestWidgetEditing : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr;
    QString m_word;

    QString root() const { return m_dir->path() + QLatin1Char('/'); }

    // A 400 x 300 project of two pages; the first holds the given lines.
    QString makeProject(const QStringList &page0)
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        QDir(root()).mkpath(QStringLiteral("Icon"));
        TextFiles::writeAtomically(root() + QStringLiteral("p.uiprj"),
                                   TextFiles::encodePlain({PageList::blankLine(0), PageList::blankLine(1)}));
        TextFiles::writeAtomically(root() + QStringLiteral("p.ini"),
                                   "[INFO]\nSupplierVer: V3.20\nXSIZE: 400\nYSIZE: 300\n");
        TextFiles::writeAtomically(cfg0(), TextFiles::encodePlain(page0));
        return root() + QStringLiteral("p.uiprj");
    }
    QString cfg0() const { return root() + QStringLiteral("Plugin/Page0000.cfg"); }

    void selectWidget(MainWindow &w, const QString &name)
    {
        QTableView *wdg = table(w, "tableView_Wdg");
        for (int r = 0; r < wdg->model()->rowCount(); ++r) {
            if (wdg->model()->index(r, 0).data().toString() == name) {
                w.on_tableView_Wdg_clicked(wdg->model()->index(r, 0));
                return;
            }
        }
        QFAIL("no such widget row");
    }

    static QTableView *table(MainWindow &w, const char *name) { return w.findChild<QTableView *>(QLatin1String(name)); }

    void type(MainWindow &w, int row, const QString &text)
    {
        QTableView *para = table(w, "tableView_Para");
        w.on_tableView_Para_doubleClicked(para->model()->index(row, 1));
        auto *editor = para->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static QString cell(MainWindow &w, const char *tableName, int row, int col = 1)
    {
        return table(w, tableName)->model()->index(row, col).data().toString();
    }

private slots:
    void initTestCase()
    {
        AppPaths::setAppDirOverride(m_appDir.path());
        for (const char *qm : {"Translate_EN.qm", "Translate_CN.qm"})
            QFile::copy(QStringLiteral(VANTILE_QM_DIR "/") + QLatin1String(qm),
                        m_appDir.path() + QLatin1Char('/') + QLatin1String(qm));
    }

    void init()
    {
        m_dir = new QTemporaryDir;
        m_word.clear();
        Prompts::Responder r;
        r.answer = [](const PromptRecord &) { return QMessageBox::Yes; };
        r.word = [this](const QStringList &) { return m_word; };
        Prompts::installResponder(r);
    }

    void cleanup()
    {
        Prompts::removeResponder();
        delete m_dir;
    }

    void everyKindLoadsAndSavesBackUnharmed()
    {
        QStringList lines = {QLatin1String(kPageLine), QLatin1String(kButton),
                             QStringLiteral("popbox_0:10,20,100,50,0x0001,,,Page0001,0,0,dim,box,Disable,Disable,Disable,0x0000,,1;"),
                             QLatin1String(kKey)};
        lines << everyKind();
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject(lines)));
        QCOMPARE(w.currentPageLines(), lines);
        // the three described kinds stand on the canvas; the others wait for their kinds
        QCOMPARE(w.canvasWidgets()->count(), 3);
        QCOMPARE(w.canvasWidgets()->find(QStringLiteral("button_0"))->geometry(), QRect(100, 50, 120, 40));
        QVERIFY(w.canvasWidgets()->find(QStringLiteral("kbkey_3")));
        // the widget list: Page first, then every line in order
        QCOMPARE(table(w, "tableView_Wdg")->model()->rowCount(), lines.size());
        QCOMPARE(cell(w, "tableView_Wdg", 2), QStringLiteral("box"));
        // an old "dim" shows as "Enable" in the table, while the line stays as it was
        selectWidget(w, QStringLiteral("popbox_0"));
        QCOMPARE(cell(w, "tableView_Para", 11), QStringLiteral("Enable"));
        w.on_actionSave_current_pgae_triggered();
        QFile saved(cfg0());
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll(), TextFiles::encodePlain(lines));
    }

    void indexBeyondTheTableIsLogged()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject({QStringLiteral("button_127:0,0,10,10;"),
                                               QStringLiteral("button_128:0,0,10,10;")})));
        QVERIFY(w.canvasWidgets()->find(QStringLiteral("button_127")));
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Error button index:128")));
        QCOMPARE(w.currentPageLines().size(), 2); // the line itself stays
    }

    void editingAButtonThroughItsRows()
    {
        MainWindow w;
        w.show();
        QVERIFY(w.openProjectFile(makeProject({QLatin1String(kButton)})));
        selectWidget(w, QStringLiteral("button_0"));
        QCOMPARE(w.selectedName(), QStringLiteral("button_0"));
        QCOMPARE(table(w, "tableView_Para")->model()->rowCount(), 12);
        // the row labels follow the language
        w.on_actionChinese_triggered();
        QCOMPARE((QStringList{cell(w, "tableView_Para", 1, 0), cell(w, "tableView_Para", 6, 0)}),
                 (QStringList{"X坐标", "未按图标"}));
        w.on_actionEnglish_triggered();
        QCOMPARE((QStringList{cell(w, "tableView_Para", 5, 0), cell(w, "tableView_Para", 6, 0)}),
                 (QStringList{"returnValue", "unpressedIcon"}));

        type(w, 1, QStringLiteral("abc")); // X: letters read as 0
        QCOMPARE(cell(w, "tableView_Para", 1), QStringLiteral("0"));
        type(w, 5, QStringLiteral("12")); // hexadecimal without "x" reads as 0
        QCOMPARE(cell(w, "tableView_Para", 5), QStringLiteral("0x0000"));
        type(w, 11, QStringLiteral("0x1b"));
        type(w, 0, QStringLiteral("Start"));
        type(w, 3, QStringLiteral("900")); // wider than the 400-pixel page: cut to it
        QCOMPARE(cell(w, "tableView_Para", 3), QStringLiteral("400"));

        m_word.clear(); // a dismissed menu changes nothing
        const QStringList beforeMenu = w.currentPageLines();
        w.on_tableView_Para_doubleClicked(table(w, "tableView_Para")->model()->index(9, 1));
        QCOMPARE(w.currentPageLines(), beforeMenu);
        m_word = QStringLiteral("Enable");
        w.on_tableView_Para_doubleClicked(table(w, "tableView_Para")->model()->index(9, 1));
        m_word = QStringLiteral("Page0001");
        w.on_tableView_Para_doubleClicked(table(w, "tableView_Para")->model()->index(8, 1));

        const QStringList expected{"button_0:0,50,400,40,0x0000,,,Page0001,Start,Enable,Disable,0x001B,0xFFFF,1;"};
        QCOMPARE(w.currentPageLines(), expected);
        QCOMPARE(w.canvasWidgets()->find(QStringLiteral("button_0"))->geometry(), QRect(0, 50, 400, 40));
        QCOMPARE(w.pageDirty(), 1);
        QVERIFY(w.history().step(0) > 0); // each edit takes a step
        w.on_actionSave_current_pgae_triggered();
        QCOMPARE(TextFiles::readLines(cfg0()), expected);
        QCOMPARE(cell(w, "tableView_Wdg", 1), QStringLiteral("Start"));
    }

    void lockedButtonKeepsItsGeometry()
    {
        MainWindow w;
        w.show();
        QVERIFY(w.openProjectFile(makeProject({"button_1:10,10,50,20,0x0020,,,,b,Disable,Disable,0x0000,0xFFFF,2;"})));
        selectWidget(w, QStringLiteral("button_1"));
        type(w, 3, QStringLiteral("99"));
        type(w, 0, QStringLiteral("renamed"));
        QCOMPARE(w.currentPageLines(),
                 QStringList{"button_1:10,10,50,20,0x0020,,,,renamed,Disable,Disable,0x0000,0xFFFF,2;"});
    }

    void adjustDialogAndWidgetListRows()
    {
        MainWindow w;
        QVERIFY(w.openProjectFile(makeProject({kPageLine, kButton, kKey})));
        // geometry from the adjust dialog's text
        w.Update_from_Dialog(QStringLiteral("button_0:7,8,30,25"));
        const QString moved = QStringLiteral("button_0:7,8,30,25,0x0020,,,,button_0,Disable,Disable,0x0000,0xFFFF,1;");
        QCOMPARE(w.currentPageLines().value(1), moved);
        QCOMPARE(w.canvasWidgets()->find(QStringLiteral("button_0"))->geometry(), QRect(7, 8, 30, 25));
        w.Update_from_Dialog(QStringLiteral("button_9:1,1,1,1")); // no such widget: nothing changes
        QCOMPARE(w.currentPageLines(), (QStringList{kPageLine, moved, kKey}));
        // dragging the key's row (2) onto the button's row (1) puts its line first
        w.UpdatePageWdgList_from_TableView(2, 1);
        QCOMPARE(w.currentPageLines(), (QStringList{kPageLine, kKey, moved}));
        QCOMPARE(cell(w, "tableView_Wdg", 1, 0), QStringLiteral("kbkey_3"));
        QCOMPARE(w.pageDirty(), 1);
        w.UpdatePageWdgList_from_TableView(0, 2); // the page row never moves
        QCOMPARE(w.currentPageLines().value(0), QLatin1String(kPageLine));
    }

    void iconPictureSetsTheSize()
    {
        MainWindow w;
        w.show();
        const QString uiprj = makeProject({QLatin1String(kButton)});
        QImage icon(64, 32, QImage::Format_ARGB32);
        icon.fill(Qt::red);
        QVERIFY(icon.save(root() + QStringLiteral("Icon/0003_on.png")));
        QVERIFY(w.openProjectFile(uiprj));
        selectWidget(w, QStringLiteral("button_0"));
        Prompts::Responder r;
        r.file = [this](const PromptRecord &) { return root() + QStringLiteral("Icon/0003_on.png"); };
        Prompts::installResponder(r);
        w.on_tableView_Para_doubleClicked(table(w, "tableView_Para")->model()->index(6, 1));
        QCOMPARE(w.currentPageLines(),
                 QStringList{"button_0:100,50,64,32,0x0020,0003_on.png,,,button_0,Disable,Disable,0x0000,0xFFFF,1;"});
        QCOMPARE(w.canvasWidgets()->find(QStringLiteral("button_0"))->size(), QSize(64, 32));
    }
};

QTEST_MAIN(TestWidgetEditing)
#include "tst_widget_editing.moc"
