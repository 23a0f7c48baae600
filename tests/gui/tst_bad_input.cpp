// Bad input never crashes the designer and never loses what it had: a page
// list of random bytes, page files of random bytes, broken pictures.

#include "GuiTestSupport.h"

using namespace gui;

namespace {

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
        useAppDir(m_appDir.path(), {});
        Prompts::installResponder({});
    }

    void noisePageListAndPageFiles()
    {
        for (quint32 seed = 1; seed <= 20; ++seed) {
            QTemporaryDir dir;
            const QString uiprj = writeProject(dir.path(), {}, {}, iniText(320, 240));
            writeFile(uiprj, noise(300 + int(seed) * 7, seed));
            for (int r = 0; r < 3; ++r)
                writeFile(dir.path() + QStringLiteral("/Plugin/Page000%1.cfg").arg(r), noise(500, seed * 10 + quint32(r)));
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
        const QStringList lines = {
            QStringLiteral("button_0:-5,99999999999999,abc,,0x,0001_bad.png,,Page99999,,,,,,,,,,,,;"),
            QStringLiteral("button_1"),
            QStringLiteral("popbox_99999999999:1,2,3,4;"),
            QStringLiteral("kbkey_:;;;;"),
            QStringLiteral("Page:;;;;;;;;;;;;;;;;;;;;;"),
        };
        const QString uiprj = writeProject(dir.path(), {PageList::pictureLine(0, QStringLiteral("0000_bad.png"))},
                                           {lines}, iniText(320, 240));
        // a PNG signature and a few bytes: a case the address sanitizer caught
        writeFile(dir.path() + "/Picture/0000_bad.png", QByteArray("\x89PNG\r\n\x1a\n broken"));
        writeFile(dir.path() + "/Icon/0001_bad.png", noise(64, 7));
        MainWindow w;
        QVERIFY(w.openProjectFile(uiprj));
        // the broken page picture: logged, a black page of the canvas size
        QVERIFY(w.logView()->toPlainText().contains(QStringLiteral("Open fail:")));
        QCOMPARE(canvasOf(w)->pixmap()->size(), QSize(320, 240));
        // every line is kept as it was, shown or not
        QCOMPARE(w.currentPageLines(), lines);
        w.on_actionSave_current_pgae_triggered();
        QCOMPARE(TextFiles::readLines(dir.path() + "/Plugin/Page0000.cfg"), lines);
        // and the build goes through, with complaints and no crash
        w.action(QStringLiteral("actionMake_bin"))->trigger();
        QVERIFY(QFile::exists(dir.path() + "/Morvane_Flash.bin"));
    }
};

QTEST_MAIN(TestBadInput)
#include "tst_bad_input.moc"
