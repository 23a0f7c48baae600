// Work is never lost and bad input never stops a build: what is not a file,
// is far too large or declares a huge picture is refused by name.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "project/AppPaths.h"
#include "project/MediaFiles.h"
#include "project/PageFile.h"
#include "project/PageHistory.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"
#include "widgets/LineGrammar.h"
#include "widgets/WidgetKinds.h"

#include <QImage>

#include <sys/stat.h>

using namespace core;

namespace {

const QDateTime kTime(QDate(2026, 3, 4), QTime(5, 6, 7));

// A PNG whose header declares w x h pixels (the data behind it is a 1x1 image).
QByteArray pngDeclaring(quint32 w, quint32 h)
{
    QByteArray png;
    QBuffer buf(&png);
    buf.open(QIODevice::WriteOnly);
    QImage(1, 1, QImage::Format_RGB32).save(&buf, "PNG");
    // IHDR: length at 8, "IHDR" at 12, width at 16, height at 20, CRC at 29
    auto putBe = [&png](int at, quint32 v) {
        for (int i = 0; i < 4; ++i)
            png[at + i] = char(v >> (24 - 8 * i));
    };
    putBe(16, w);
    putBe(20, h);
    putBe(29, ~SealedFile::crc32(png.mid(12, 17), 0xFFFFFFFFu)); // the usual CRC-32
    return png;
}

} // namespace

class TestFileSafety : public QObject
{
    Q_OBJECT

    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr;

    QString root() const { return m_dir->path() + QLatin1Char('/'); }
    QString cfg(int row) const { return root() + "Plugin/Page" + PageList::pageId(row) + ".cfg"; }

    // A project of one page on a 400 x 300 panel: page list, settings, page 0.
    QString makeProject(const QByteArray &page0, const QString &listLine = PageList::blankLine(0),
                        const QByteArray &extraIni = QByteArray())
    {
        for (const char *d : {"Plugin", "Picture"})
            QDir(root()).mkpath(QLatin1String(d));
        writeFile(root() + "p.uiprj", TextFiles::encodePlain({listLine}));
        writeFile(root() + "p.ini", "[INFO]\nSupplierVer: V3.20\nXSIZE: 400\nYSIZE: 300\n" + extraIni);
        if (!page0.isNull())
            writeFile(cfg(0), page0);
        return root() + "p.uiprj";
    }

    BuildResult build(const BuildOptions &extra = {})
    {
        const ProjectLoad load = loadProject(root() + "p.uiprj");
        if (!load.ok)
            qWarning() << load.reason;
        MakeBin driver;
        installStandardBuild(driver);
        BuildOptions o = extra;
        o.fixedTime = kTime;
        return driver.run(load.input, o);
    }

private slots:
    void initTestCase() { AppPaths::setAppDirOverride(m_appDir.path()); }
    void init() { m_dir = new QTemporaryDir; }
    void cleanup() { delete m_dir; }

    void setFieldTouchesOneField_data()
    {
        addColumns<QString, int, QString>("line", "pos", "expected");
        QTest::newRow("middle") << "b_0:1,2,3;" << 1 << "b_0:1,X,3;";
        QTest::newRow("last, text after ; kept") << "b_0:1,2,3; tail" << 2 << "b_0:1,2,X; tail";
        QTest::newRow("empty field") << "b_0:1,,3;" << 1 << "b_0:1,X,3;";
        QTest::newRow("short line padded") << "b_0:1;" << 3 << "b_0:1,d1,d2,X;";
        QTest::newRow("no ; at all") << "b_0:1,2" << 2 << "b_0:1,2,X";
        QTest::newRow("no fields yet") << "b_0:;" << 0 << "b_0:X;";
        QTest::newRow("no colon: unchanged") << "b_0;1,2" << 0 << "b_0;1,2";
        QTest::newRow("line break in a text kept") << "b_0:1,Two\nLines,0xFFFF,1;" << 2 << "b_0:1,Two\nLines,X,1;";
    }
    void setFieldTouchesOneField()
    {
        QFETCH(QString, line);
        QFETCH(int, pos);
        QTEST(LineGrammar::setField(line, pos, QStringLiteral("X"), [](int i) { return QStringLiteral("d%1").arg(i); }),
              "expected");
    }

    // A device, a pipe, a link to a device and a file above the limit are
    // refused at once, with the file's name, and never block or fill memory.
    void nonFilesAndHugeFilesAreRefused_data()
    {
        addColumns<QString, int>("what", "status");
        QTest::newRow("link to /dev/zero") << "link" << int(TextFiles::ReadStatus::NotRegular);
        QTest::newRow("named pipe") << "fifo" << int(TextFiles::ReadStatus::NotRegular);
        QTest::newRow("65 MB page") << "large" << int(TextFiles::ReadStatus::TooLarge);
        QTest::newRow("folder") << "dir" << int(TextFiles::ReadStatus::NotRegular);
        QTest::newRow("missing") << "none" << int(TextFiles::ReadStatus::Missing);
    }
    void nonFilesAndHugeFilesAreRefused()
    {
        QFETCH(QString, what);
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        const QString path = cfg(0);
        if (what == "link")
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path));
        else if (what == "fifo")
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        else if (what == "dir")
            QVERIFY(QDir().mkpath(path));
        else if (what == "large") {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly) && f.resize(TextFiles::kMaxTextFileSize + 1)); // sparse: no disk used
        }
        QByteArray bytes;
        FileError error;
        QTEST(int(TextFiles::readFile(path, &bytes, &error)), "status");
        QCOMPARE(error.path, path);
        QVERIFY(!error.reason.isEmpty() && bytes.isEmpty());
        const PageFile::Read page = PageFile::read(path, SealedFile::kBuiltInKey);
        QVERIFY(!page.ok && page.lines.isEmpty());
        QCOMPARE(SealedFile::classify(path, 0x12345678u), SealedFile::Plain);
    }

    // A button whose name holds a line break is two physical lines. The build
    // reads it as the designer does: one record with every field, and the
    // page file is not rewritten.
    void lineBreakInANameSurvivesABuild()
    {
        const QByteArray page = TextFiles::encodePlain(
            {QStringLiteral("button_0:10,20,30,40,0x1234,,,,Two"), QStringLiteral("Lines,Enable,Enable,0x00AB,0xFFFF,2;")});
        makeProject(page, PageList::blankLine(0), "PanelType: 8\n");
        const PageFile::Read read = PageFile::read(cfg(0), SealedFile::kBuiltInKey);
        QCOMPARE(read.lines, QStringList{"button_0:10,20,30,40,0x1234,,,,TwoLines,Enable,Enable,0x00AB,0xFFFF,2;"});

        const BuildResult r = build();
        QVERIFY(r.imageWritten);
        QCOMPARE(readAll(cfg(0)), page);
        // The record, worked out by hand: report on (flags 0xC0), host control
        // on (0xFFFF and the trigger 0x00AB in place of X and Y), right 39,
        // bottom 59, code 0x1234, no icons, no page, no group.
        const quint8 type = WidgetKinds::info(WidgetKind::Button).type;
        const QByteArray record = QByteArray::fromHex("C012FFFFAB0027003B003412FFFFFFFFFFFFFFFF").prepend(char(type));
        QVERIFY2(readAll(r.imagePath).contains(record), "the button's record with all its fields");
    }

    // The group step owns the group fields and nothing else.
    void groupStepChangesOnlyGroupFields()
    {
        const QStringList before = {QStringLiteral("button_0:0,0,100,100,0x00ab,,,,Go  there,Disable,Disable,0x0000,0xFFFF,1;"),
                                    QStringLiteral("label_0:0xFFFF,20,10,10,20,20,32,32,0,0,0,0,0xD3D3D3,0x000000,*Hex:48692C207468657265,0xFFFF,Hi  there,Disable,0,0,0,0xFFFF,1;")};
        makeProject(TextFiles::encodePlain(before), PageList::blankLine(0), "PanelType: 8\n");
        QVERIFY(build().imageWritten);
        QCOMPARE(PageFile::read(cfg(0), SealedFile::kBuiltInKey).lines,
                 QStringList({QStringLiteral("button_0:0,0,100,100,0x00ab,,,,Go  there,Disable,Disable,0x0000,0x0001,1;"),
                              QStringLiteral("label_0:0xFFFF,20,10,10,20,20,32,32,0,0,0,0,0xD3D3D3,0x000000,*Hex:48692C207468657265,0xFFFF,Hi  there,Disable,0,0,0,0x0001,1;")}));
    }

    // Contents count, not encodings: a page file with a byte order mark, a
    // sealed one and one in GBK all equal the same lines in memory, so an idle
    // auto-save writes no step.
    void historyComparesContents_data()
    {
        addColumns<quint32, bool>("key", "gbk");
        QTest::newRow("plain with mark") << SealedFile::kBuiltInKey << false;
        QTest::newRow("sealed") << 0x11223344u << false;
        QTest::newRow("GBK") << SealedFile::kBuiltInKey << true;
    }
    void historyComparesContents()
    {
        QFETCH(quint32, key);
        QFETCH(bool, gbk);
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        const QStringList lines = {QStringLiteral("Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);p;Disable;0;0;Disable;"),
                                   gbk ? QStringLiteral("button_0:1,2,3,4,0x0020,,,,按键,Disable;")
                                       : QStringLiteral("button_0:1,2,3,4,0x0020,,,,b  x,Disable;")};
        if (gbk)
            writeFile(cfg(0), QTextCodec::codecForName("GBK")->fromUnicode(lines.join('\n') + '\n'));
        else
            QVERIFY(SealedFile::writeLines(cfg(0), lines, key));
        PageHistory h;
        h.reset(root(), key);
        QVERIFY(h.sameContent(cfg(0), lines) && !h.sameContent(cfg(0), {lines[0]}));
        // two steps of unchanged lines: the second finds the first equal
        QVERIFY(h.takeStep(0, lines).ok() && h.takeStep(0, lines).ok());
        QCOMPARE(h.step(0), 1);
        QVERIFY(!QFile::exists(h.stepPath(0, 2)));
    }

    // After a crash, each page whose backup.txt entry is one of its existing
    // steps stands at that step, so that Save All writes it.
    void recoveryAdoptsExistingSteps()
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        PageHistory h;
        h.reset(root(), SealedFile::kBuiltInKey);
        QVERIFY(SealedFile::writeLines(h.stepPath(0, 3), {QStringLiteral("button_0:1,2,3,4;")}, SealedFile::kBuiltInKey));
        writeFile(h.backupFile(), (h.stepPath(0, 3) + '\n' + h.stepPath(1, 9) + '\n' + "/elsewhere/Page0002.cfb1\n").toUtf8());
        QCOMPARE(h.adoptRecoveredSteps(3), QList<int>{0});
        QCOMPARE(h.step(0), 3);
        QCOMPARE(h.step(1), 0); // its step file is gone
        QCOMPARE(h.currentFile(0), h.stepPath(0, 3));
    }

    // Files that can't be written are reported with their name and the
    // reason; a folder standing where backup.txt should be turns recovery off.
    void failedStepWritesNameTheFile()
    {
        QDir(root()).mkpath(QStringLiteral("Plugin"));
        PageHistory h;
        h.reset(root(), SealedFile::kBuiltInKey);
        QVERIFY(QDir().mkpath(h.backupFile()) && QDir().mkpath(h.stepPath(0, 1)));
        const PageHistory::StepResult r = h.takeStep(0, {QStringLiteral("button_0:1,2,3,4;")});
        QVERIFY(!r.stepWritten && !r.backupWritten);
        QCOMPARE(r.error.path, h.stepPath(0, 1));
        QVERIFY(!r.error.reason.isEmpty() && r.error.detail().startsWith(h.stepPath(0, 1) + '\n'));
    }

    // A build killed while the image is written leaves the image of the last
    // build whole under its name, and no partial file.
    void interruptedImageWriteKeepsTheOldImage()
    {
        makeProject(TextFiles::encodePlain({QStringLiteral("button_0:1,2,30,40;")}));
        const BuildResult first = build();
        QVERIFY(first.imageWritten);
        const QByteArray good = readAll(first.imagePath);
        QVERIFY(good.size() > 0x10000);
        // change the project so that a finished build would differ
        writeFile(cfg(0), TextFiles::encodePlain({QStringLiteral("button_0:5,6,70,80;")}));
        BuildOptions o;
        o.chunkSize = 4096;
        o.interruptCopy = [&](qint64 copied) { return copied >= good.size() / 2; };
        const BuildResult second = build(o);
        QVERIFY(!second.imageWritten);
        QCOMPARE(readAll(first.imagePath), good);
        QVERIFY(second.errorText.contains(QStringLiteral("the image of the last build stays")));
        QCOMPARE(QDir(root()).entryList({QStringLiteral("Morvane_Flash*")}, QDir::Files), QStringList{"Morvane_Flash.bin"});
        QCOMPARE(BuildExit::forResult(second, false), BuildExit::NoImage);
    }

    // The leftovers of a save cut short are recognised by the names of our own
    // files (the temporary name a real save uses included) and removed.
    void leftoversOfInterruptedSavesAreRemoved()
    {
        makeProject(QByteArray());
        {
            QSaveFile pending(cfg(0));
            QVERIFY(pending.open(QIODevice::WriteOnly));
            pending.write("half");
            // Linux may keep the pending save nameless (O_TMPFILE); where it has a name, we know it
            const QStringList names = QDir(root() + "Plugin").entryList(QDir::Files);
            QVERIFY(names.size() <= 1);
            for (const QString &name : names)
                QVERIFY2(TextFiles::isInterruptedWrite(name, QStringLiteral("p")), qPrintable(name));
        } // not committed: the save removes its own file
        const QStringList left = {"Plugin/Page0000.cfg.Ab12Cd", "Plugin/Page0003.cfb12.zz99QQ", "p.uiprj.x1Y2z3",
                                  "p.ini.abcdef", "Morvane_Flash.bin.0a1b2c", "backup.txt.QWErty"};
        const QStringList kept = {"Plugin/Page0000.cfg", "notes.txt.abcdef", "q.uiprj.abcdef", "p.uiprj.abc",
                                  "Plugin/Page0000.cfg.bak1", "Picture/0001_a.png.abcdef"};
        for (const QString &f : left + kept)
            writeFile(root() + f, "x");
        QSet<QString> expected;
        for (const QString &f : left)
            expected << root() + f;
        const QStringList removed = TextFiles::removeInterruptedWrites(root(), QStringLiteral("p"));
        QCOMPARE(QSet<QString>(removed.begin(), removed.end()), expected);
        for (const QString &f : kept)
            QVERIFY2(QFile::exists(root() + f), qPrintable(f));
    }

    // A picture is judged by its declared size before it is decoded: at
    // most 8192 on a side and four times the panel's pixels (400 x 300 here).
    void pictureSizeLimits()
    {
        const QPair<QSize, bool> cases[] = {{QSize(16384, 16384), false}, {QSize(8193, 10), false},
                                            {QSize(800, 600), true},      {QSize(800, 601), false},
                                            {QSize(400, 300), true}};
        for (const auto &c : cases)
            QVERIFY2(MediaFiles::sizeRefusal(c.first, QSize(400, 300)).isEmpty() == c.second,
                     qPrintable(QStringLiteral("%1 x %2").arg(c.first.width()).arg(c.first.height())));
    }

    // A small PNG that declares 16384 x 16384 as a page picture: the build
    // refuses it with a line naming it, the page gets no picture, and the
    // image stays small.
    void hugeDeclaredPictureIsRefused()
    {
        makeProject(QByteArray(), QStringLiteral("Page0000:0000_big.png;big;RGBColor(0,0,0);"));
        writeFile(root() + "Picture/0000_big.png", pngDeclaring(16384, 16384));
        QCOMPARE(MediaFiles::declaredSize(readAll(root() + "Picture/0000_big.png")), QSize(16384, 16384));
        QString error;
        QVERIFY(MediaFiles::readPicture(root() + "Picture/0000_big.png", QSize(400, 300), &error).isNull());
        QVERIFY2(error.contains(QStringLiteral("16384 x 16384")), qPrintable(error));
        const BuildResult r = build();
        QVERIFY(r.imageWritten && r.imageSize < 0x40000);
        QVERIFY(r.errorText.contains(QStringLiteral("Picture/0000_big.png")));
        QVERIFY(r.log.join('\n').contains(QStringLiteral("more than 8192 on a side")));
    }

    // Names of media and backgrounds never lead out of their folder.
    void backgroundNamesStayInTheirFolder_data()
    {
        addColumns<QString, bool>("name", "plain");
        QTest::newRow("up and out") << "../../../../dev/zero" << false;
        QTest::newRow("absolute") << "/etc/passwd" << false;
        QTest::newRow("backslash") << "..\\x.png" << false;
        QTest::newRow("drive") << "C:x.png" << false;
        QTest::newRow("dot dot") << ".." << false;
        QTest::newRow("a picture") << "0000_home.png" << true;
        QTest::newRow("dots inside") << "0000_a..b.png" << true;
    }
    void backgroundNamesStayInTheirFolder()
    {
        QFETCH(QString, name);
        QFETCH(bool, plain);
        QCOMPARE(MediaFiles::isPlainName(name), plain);
        QString error;
        QCOMPARE(MediaFiles::pathIn(root(), QStringLiteral("Picture/"), name, &error).isEmpty(), !plain);
        QCOMPARE(error.isEmpty(), plain);
        if (plain)
            return;
        makeProject(QByteArray(), QStringLiteral("Page0000:%1;x;RGBColor(0,0,0);").arg(name));
        const BuildResult r = build();
        QVERIFY(r.imageWritten && r.log.join('\n').contains(QStringLiteral("leaves the Picture folder")));
    }

    // The headless build on a page file that is a named pipe, and on a page
    // list above the size limit: a message and a clean exit, never a hang.
    void headlessBuildExitsCleanly_data()
    {
        addColumns<QString, int, QString>("what", "exitCode", "said");
        QTest::newRow("pipe as page, strict") << "fifo" << int(BuildExit::Strict) << "Page0000.cfg (Not a regular file)";
        QTest::newRow("huge page list") << "list" << int(BuildExit::CannotOpen) << "File too large";
    }
    void headlessBuildExitsCleanly()
    {
        QFETCH(QString, what);
        QFETCH(int, exitCode);
        QFETCH(QString, said);
        makeProject(QByteArray());
        if (what == "fifo") {
            QCOMPARE(::mkfifo(QFile::encodeName(cfg(0)).constData(), 0600), 0);
        } else {
            QFile f(root() + "p.uiprj");
            QVERIFY(f.open(QIODevice::ReadWrite) && f.resize(TextFiles::kMaxTextFileSize + 10));
        }
        QProcess p;
        p.start(QStringLiteral(VANTILE_BUILD_TOOL), {root() + "p.uiprj", "--strict"});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), exitCode);
        const QString out = QString::fromUtf8(p.readAllStandardError() + p.readAllStandardOutput());
        QVERIFY2(out.contains(said), qPrintable(out));
    }
};

QTEST_GUILESS_MAIN(TestFileSafety)
#include "tst_file_safety.moc"
