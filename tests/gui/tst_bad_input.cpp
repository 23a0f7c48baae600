// Bad input never crashes the designer and never loses what it had: a page
// list of random bytes, page files of random bytes, broken pictures.

#include "app/MainWindow.h"
#include "app/Prompts.h"
#include "designer/CanvasWidgets.h"
#include "project/AppPaths.h"
#include "project/PageList.h"
#include "project/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

using namespace vantile;

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QVERIFY(TextFiles::writeAtomically(path, bytes));
}

const char *const kIni = "[INFO]\nSupplierVer: V3.20\nXSIZE: 320\nYSIZE: 240\n";

QByteArray noise(int size, quint32 seed)
{
    QRandomGenerator g(seed);
    QByteArray b(size, '\0');
    for (char &c : b)
        c = char(g.bounded(256));
    return b;
}

} // namespace

class TestBadInput : public QObject
{
    Q_OBJECT
    QTemporaryDir m_appDir;

private slots:
    void initTestCase()
    {
        AppPaths::setAppDirOverride(m_appDir.path());
        Prompts::installResponder({});
    }

    void noisePageListAndPageFiles()
    {
        for (quint32 seed = 1; seed <= 20; ++seed) {
            QTemporaryDir dir;
            QDir(dir.path()).mkpath(QStringLiteral("Plugin"));
            writeFile(dir.path() + QStringLiteral("/p.uiprj"), noise(300 + int(seed) * 7, seed));
            writeFile(dir.path() + QStringLiteral("/p.ini"), kIni);
            for (int r = 0; r < 3; ++r)
                writeFile(dir.path() + QStringLiteral("/Plugin/Page000%1.cfg").arg(r), noise(500, seed * 10 + quint32(r)));
            const QString uiprj = dir.path() + QStringLiteral("/p.uiprj");
            MainWindow w;
            if (!w.openProjectFile(uiprj)) // it may refuse the noise, but must not crash
                continue;
            // what it did read is saved so that it reads the same again
            w.on_actionSave_All_triggered();
            MainWindow again;
            QVERIFY(again.openProjectFile(uiprj));
            QCOMPARE(again.pageInfoList(), w.pageInfoList());
        }
    }

    void garbageWidgetLinesAndBrokenPictures()
    {
        QTemporaryDir dir;
        for (const char *folder : {"Plugin", "Picture", "Icon"})
            QDir(dir.path()).mkpath(QLatin1String(folder));
        // a PNG signature and a few bytes: a case the address sanitizer caught
        writeFile(dir.path() + QStringLiteral("/Picture/0000_bad.png"), QByteArray("\x89PNG\r\n\x1a\n broken"));
        writeFile(dir.path() + QStringLiteral("/Icon/0001_bad.png"), noise(64, 7));
        writeFile(dir.path() + QStringLiteral("/p.uiprj"),
                  TextFiles::encodePlain({PageList::pictureLine(0, QStringLiteral("0000_bad.png"))}));
        writeFile(dir.path() + QStringLiteral("/p.ini"), kIni);
        const QStringList lines = {
            QStringLiteral("button_0:-5,99999999999999,abc,,0x,0001_bad.png,,Page99999,,,,,,,,,,,,;"),
            QStringLiteral("button_1"),
            QStringLiteral("popbox_99999999999:1,2,3,4;"),
            QStringLiteral("kbkey_:;;;;"),
            QStringLiteral("Page:;;;;;;;;;;;;;;;;;;;;;"),
        };
        writeFile(dir.path() + QStringLiteral("/Plugin/Page0000.cfg"), TextFiles::encodePlain(lines));
        MainWindow w;
        QVERIFY(w.openProjectFile(dir.path() + QStringLiteral("/p.uiprj")));
        // the broken page picture: logged, a black page of the canvas size
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Open fail:")));
        QCOMPARE(w.findChild<QLabel *>(QStringLiteral("label_Show"))->pixmap()->size(), QSize(320, 240));
        // every line is kept as it was, shown or not
        QCOMPARE(w.currentPageLines(), lines);
        w.on_actionSave_current_pgae_triggered();
        QCOMPARE(TextFiles::readLines(dir.path() + QStringLiteral("/Plugin/Page0000.cfg")), lines);
        // and the build goes through, with complaints and no crash
        w.action(QStringLiteral("actionMake_bin"))->trigger();
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/Morvane_Flash.bin")));
    }
};

QTEST_MAIN(TestBadInput)
#include "tst_bad_input.moc"
