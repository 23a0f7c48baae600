// The "Page:" line and the step-file history: the ring of 50, undo / redo,
// the equality check, backup.txt, removal of steps, rotating backups.

#include "CoreTestSupport.h"
#include "project/PageAttributes.h"
#include "project/PageHistory.h"
#include "project/TextFiles.h"

using namespace core;

namespace {

QStringList state(int n)
{
    return {QStringLiteral("button_0:%1,0,10,10;").arg(n)};
}

const quint32 kPlainKey = 0x5E21B7C4u;

} // namespace

class TestPageHistory : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    PageHistory m_history;
    QString root() const { return m_dir->path() + QLatin1Char('/'); }
    bool take(int row, const QStringList &lines) { return m_history.takeStep(row, lines).ok(); }

private slots:
    void init()
    {
        m_dir.reset(new QTemporaryDir);
        QDir(m_dir->path()).mkpath(QStringLiteral("Plugin"));
        m_history.reset(root(), kPlainKey);
    }

    void pageLineWrittenAsDescribed()
    {
        PageAttributes p;
        p.name = "Home", p.pageImage = "0000_a.png", p.leftPage = "Page0001", p.slideEffect = "Enable";
        p.leftReturn = 0x1A, p.bottomReturn = 0xFFFF, p.slideAreaTop = 20, p.slideAreaBottom = 460;
        QCOMPARE(p.toLine(), QStringLiteral("Page:Page0001,0x001A,,0x0000,,0x0000,,0xFFFF,0000_a.png;"
                                            "RGBColor(0,0,0);Home;Enable;20;460;Disable;"));
        PageAttributes back;
        back.parse(p.toLine());
        QCOMPARE(back.toLine(), p.toLine());
    }

    void pageLineReadTolerantly_data()
    {
        addColumns<QString, QString>("line", "written");
        // read into attributes named "kept" with colour RGBColor(1,2,3)
        const QString kept = QStringLiteral("Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(1,2,3);kept;Disable;0;0;Disable;");
        // a short line: what is missing keeps its value; hex without "x" is 0
        QTest::newRow("short line") << "Page:Page0002,1A,Page0003,0x00ff"
                                    << "Page:Page0002,0x0000,Page0003,0x00FF,,0x0000,,0x0000,;RGBColor(1,2,3);kept;Disable;0;0;Disable;";
        // empty text fields keep their value; a ";" ends a field before pageImage too
        QTest::newRow("empty fields") << "Page:;" << kept;
        // bounds read by their digits only
        QTest::newRow("bounds") << "Page:,0x0,,0x0,,0x0,,0x0,;RGBColor(9,9,9);n;Enable;-5;4x2;Enable;"
                                << "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(9,9,9);n;Enable;5;42;Enable;";
        QTest::newRow("not a page line") << "button_0:1,2;" << kept;
    }
    void pageLineReadTolerantly()
    {
        QFETCH(QString, line);
        PageAttributes p;
        p.name = QStringLiteral("kept");
        p.pageColor = QStringLiteral("RGBColor(1,2,3)");
        p.parse(line);
        QTEST(p.toLine(), "written");
    }

    void ringOfFiftyAndUndoOrder()
    {
        // no steps: undo and redo reload the .cfg
        QCOMPARE(m_history.undo(3), m_history.cfgPath(3));
        QCOMPARE(m_history.redo(3), m_history.cfgPath(3));
        QCOMPARE(m_history.step(3), 0);
        for (int n = 1; n <= 51; ++n)
            QVERIFY(take(0, state(n)));
        // 51 steps: step 1 was overwritten by the newest
        QCOMPARE(m_history.step(0), 1);
        QCOMPARE(m_history.highestStep(0), 50);
        QCOMPARE(TextFiles::readLines(m_history.stepPath(0, 1)), state(51));
        QCOMPARE(TextFiles::readLines(m_history.stepPath(0, 50)), state(50));
        // undo: 1 -> 0 (the .cfg) -> 50
        QCOMPARE(m_history.undo(0), m_history.cfgPath(0));
        QCOMPARE(m_history.undo(0), m_history.stepPath(0, 50));
        QCOMPARE(m_history.step(0), 50);
        // redo at the highest step goes round to the .cfg
        QCOMPARE(m_history.redo(0), m_history.cfgPath(0));
        QCOMPARE(m_history.redo(0), m_history.stepPath(0, 1));
    }

    void equalStepIsNotWrittenAgain()
    {
        QVERIFY(take(0, state(1)));
        // the same text after trimming and reducing blanks: no new step
        QVERIFY(TextFiles::writeAtomically(m_history.stepPath(0, 1), "button_0:1,0,10,10;   \n"));
        QVERIFY(take(0, {QStringLiteral("  button_0:1,0,10,10;")}));
        QCOMPARE(m_history.step(0), 1);
        QVERIFY(!QFile::exists(m_history.stepPath(0, 2)));
        // backup.txt names the step that holds the state, which exists
        QCOMPARE(m_history.recoveredPath(0), m_history.stepPath(0, 1));
        // other text: the next step is written
        QVERIFY(take(0, state(2)));
        QCOMPARE(m_history.step(0), 2);
        QCOMPARE(TextFiles::readLines(m_history.stepPath(0, 2)), state(2));
    }

    void backupEntriesOnePerPage()
    {
        QVERIFY(take(0, state(1)) && take(2, state(1)) && take(0, state(2)));
        QCOMPARE(TextFiles::readLines(m_history.backupFile()), QStringList({m_history.stepPath(0, 2), m_history.stepPath(2, 1)}));
        QCOMPARE(m_history.recoveredPath(0), m_history.stepPath(0, 2));
        QCOMPARE(m_history.recoveredPath(2), m_history.stepPath(2, 1));
        QCOMPARE(m_history.recoveredPath(1), QString());
        // the current file is the step, or the .cfg once the step is gone
        QCOMPARE(m_history.currentFile(0), m_history.stepPath(0, 2));
        QFile::remove(m_history.stepPath(0, 2));
        QCOMPARE(m_history.currentFile(0), m_history.cfgPath(0));
    }

    void deleteStepFilesKeepsPageFiles()
    {
        QVERIFY(take(0, state(1)) && take(12, state(1)) && TextFiles::writeAtomically(m_history.cfgPath(0), "x"));
        QVERIFY(TextFiles::writeAtomically(root() + "Plugin/LastPage.txt", "0"));
        m_history.deleteStepFiles();
        QCOMPARE(QDir(root() + "Plugin").entryList(QDir::Files),
                 QStringList({QStringLiteral("LastPage.txt"), QStringLiteral("Page0000.cfg")}));
    }

    void rotatingBackups()
    {
        const QString cfg = m_history.cfgPath(0);
        const auto saveAndRotate = [&](int n) {
            QVERIFY(TextFiles::writeAtomically(cfg, TextFiles::encodePlain(state(n))));
            m_history.rotateBackups(1);
        };
        saveAndRotate(1);
        QVERIFY(QFile::exists(cfg + QStringLiteral(".bak1")) && !QFile::exists(cfg + QStringLiteral(".bak")));
        saveAndRotate(2);
        QCOMPARE(TextFiles::readLines(cfg + QStringLiteral(".bak")), state(2));
        // both exist: the older one is overwritten
        QFile bak(cfg + QStringLiteral(".bak"));
        QVERIFY(bak.open(QIODevice::ReadWrite));
        QVERIFY(bak.setFileTime(QDateTime::currentDateTime().addDays(-2), QFileDevice::FileModificationTime));
        bak.close();
        saveAndRotate(3);
        QCOMPARE(TextFiles::readLines(cfg + QStringLiteral(".bak")), state(3));
        QCOMPARE(TextFiles::readLines(cfg + QStringLiteral(".bak1")), state(1));
        // an empty page makes no backup
        QVERIFY(TextFiles::writeAtomically(m_history.cfgPath(1), TextFiles::encodePlain({})));
        m_history.rotateBackups(2);
        QVERIFY(!QFile::exists(m_history.cfgPath(1) + QStringLiteral(".bak1")));
    }
};

QTEST_GUILESS_MAIN(TestPageHistory)
#include "tst_page_history.moc"
