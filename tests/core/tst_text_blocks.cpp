// The static text block and the language block on small projects. Expected
// bytes are worked out by hand: addresses 4 bytes and language records
// (address 2, length 2, bytes) little-endian; "中" is D6 D0 in GBK and
// 4E 2D as a 16-bit unit; font 0 is a GBK font, font 1 a Unicode one.

#include "build/MakeBin.h"
#include "build/TextBlocks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

QByteArray hex(const char *spaced) { return QByteArray::fromHex(spaced); } // blanks are skipped

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

// A label line (write address, font, multi-language flag at their places)
// and a textroll line.
QByteArray label(int n, const char *addr, int font, int multi)
{
    return QStringLiteral("label_%1:%2,20,0,0,100,30,32,32,%3,1,0,0,D3D3D3,000000,*Hex:41,0xFFFF,label_%1,0,%4,"
                          "0,0,0,0;\n")
        .arg(n).arg(QLatin1String(addr)).arg(font).arg(multi).toUtf8();
}
QByteArray textroll(int n, const char *addr, int font, int multi)
{
    return QStringLiteral("textroll_%1:%2,0,0,100,30,32,24,24,%3,3,000000,0000FF,64,50,0,1,*Hex:41,0,0xFFFF,"
                          "textroll_%1,%4,0;\n")
        .arg(n).arg(QLatin1String(addr)).arg(font).arg(multi).toUtf8();
}

// Lines of `log` that contain each of `wanted`, in this order.
bool inOrder(const QStringList &log, const QStringList &wanted)
{
    int at = 0;
    for (const QString &line : log)
        if (at < wanted.size() && line == wanted.at(at))
            ++at;
    return at == wanted.size();
}

struct Project {
    QTemporaryDir dir;
    BuildContext ctx;
    BlockDirectory directory;

    Project(int languages, int pages = 1)
    {
        ctx.projectDir = dir.path() + QLatin1Char('/');
        ctx.settings.languageNum = QString::number(languages);
        for (int p = 0; p < pages; ++p)
            ctx.pageLines << QStringLiteral("Page%1:RGBColor(0,0,0);P;RGBColor(0,0,0);")
                                 .arg(p, 4, 10, QLatin1Char('0'));
        ctx.fonts.count = 2;
        ctx.fonts.encoding[0] = 1;
        ctx.fonts.encoding[1] = 3;
        ctx.directory = &directory;
        ctx.runningAddress = 0x1000;
        QDir(dir.path()).mkpath(QStringLiteral("Plugin"));
        QDir(dir.path()).mkpath(QStringLiteral("MultiLanguage"));
    }
    void put(const QString &relative, const QByteArray &bytes) { QVERIFY(writeFile(ctx.path(relative), bytes)); }
    QByteArray build(BlockBuilder &&builder)
    {
        builder.build(ctx);
        return readAll(ctx.blockPath(builder.block()));
    }
};

} // namespace

class TestTextBlocks : public QObject
{
    Q_OBJECT

private slots:
    void staticBlock_data()
    {
        QTest::addColumn<int>("languages");
        QTest::addColumn<QByteArray>("csv"); // without its byte order mark; empty: no file
        QTest::addColumn<QByteArray>("block");
        QTest::addColumn<int>("count");      // directory 0x64
        QTest::addColumn<int>("complaints");

        // 4 rows from 0x1000: data from 0x1010; row 2 empty, number 3 off
        QTest::newRow("off row and empty text")
            << 1
            << QByteArray("1,*Hex:41E4B8AD,0X000000,0\n2,,0X000000,0\n4,*Hex:E4B8AD,0XFF0000,1\n")
            << hex("10100000 13100000 ffffffff 13100000 41d6d0 4e2d") << 4 << 0;
        // M = 5, R = 10: data from 0x1028; language 0's rows first, 3 and 4 off in both
        QTest::newRow("numbers 1 2 5, two languages")
            << 2
            << QByteArray("1,a,0X0,0,b,0X0,0\n2,c,0X0,0,de,0X0,0\n5,f,0X0,0,g,0X0,0\n")
            << hex("28100000 29100000 ffffffff ffffffff 2a100000"
                   "2b100000 2c100000 ffffffff ffffffff 2e100000 61636662646567")
            << 5 << 0;
        // the last line says 2: number 3 has no slot and is left out
        QTest::newRow("last line lower")
            << 1 << QByteArray("1,A,0X0,0\n3,B,0X0,0\n2,C,0X0,0\n") << hex("08100000 09100000 4143") << 2 << 1;
        // language 1 missing on the line: an empty text, still switched on
        QTest::newRow("too few columns") << 2 << QByteArray("1,A,0X0,0\n") << hex("08100000 09100000 41") << 1 << 0;
        QTest::newRow("CRLF, blank last line")
            << 1 << QByteArray("1,Hi,0X0,0\r\n\r\n") << hex("04100000 4869") << 1 << 0;
        QTest::newRow("no file") << 1 << QByteArray() << QByteArray() << 0 << 0;
    }
    void staticBlock()
    {
        QFETCH(int, languages);
        QFETCH(QByteArray, csv);
        QFETCH(QByteArray, block);
        QFETCH(int, count);
        QFETCH(int, complaints);
        Project p(languages);
        if (!csv.isEmpty())
            p.put(QStringLiteral("Constant_text.csv"), "\xEF\xBB\xBF" + csv);
        QCOMPARE(p.build(StaticTextBlockBuilder()), block);
        QCOMPARE(p.directory.value(BlockDirectory::StaticTextAddress), 0x1000u);
        QCOMPARE(p.directory.value(BlockDirectory::StaticTextCount), quint32(count));
        QCOMPARE(p.ctx.runningAddress, 0x1000 + block.size());
        QCOMPARE(p.ctx.errorText.count(QLatin1Char('\n')), complaints);
        QCOMPARE(QFile::exists(p.ctx.blockPath(Block::StaticText)), !block.isEmpty());
        if (!block.isEmpty()) {
            QCOMPARE(readAll(p.ctx.path(QStringLiteral("Plugin/Constant_para.bin"))), block.mid(4 * count * languages));
            QCOMPARE(p.ctx.buildLog.last(), QStringLiteral("Make Page_para_all.bin"));
        }
    }

    void languageBlockAbsentWithOneLanguage()
    {
        Project p(1);
        p.put(QStringLiteral("Plugin/Page0000.cfg"), "\xEF\xBB\xBF" + label(2, "0x0120", 0, 1));
        p.put(QStringLiteral("MultiLanguage/Page0000.csv"), "\xEF\xBB\xBFlabel_2,0x0120,20,H\n");
        p.directory.set(BlockDirectory::LanguageCount, 77); // from an earlier build
        QVERIFY(p.build(LanguageBlockBuilder()).isEmpty());
        QVERIFY(!QFile::exists(p.ctx.blockPath(Block::Language)));
        QCOMPARE(p.directory.value(BlockDirectory::LanguageAddress), 0x1000u);
        QCOMPARE(p.directory.value(BlockDirectory::LanguageCount), 0u);
        QCOMPARE(p.ctx.runningAddress, qint64(0x1000));
        QVERIFY(inOrder(p.ctx.buildLog,
                        {"Make Label MultiLanguage bin...", "MultiLang_Msg_Addr:00001000", "lang_num =1"}));
    }

    void languageBlockThreeLanguages()
    {
        Project p(3);
        p.ctx.runningAddress = 0x2000;
        p.put(QStringLiteral("Plugin/Page0000.cfg"),
              "\xEF\xBB\xBF" + label(2, "0x0120", 0, 1) + label(5, "0x0200", 0, 0) + textroll(1, "0x0300", 1, 1));
        // plain texts as the language editor writes them; textroll_1 lacks language 2
        p.put(QStringLiteral("MultiLanguage/Page0000.csv"),
              "\xEF\xBB\xBFlabel_5,0x0200,20,X,Y,Z\nlabel_2,0x0120,20,H,中,JK\ntextroll_1,0x0300,32,A,B\n");
        // table of 24 bytes: language 0 at 0x2018 (11 bytes), 1 at 0x2023 (12), 2 at 0x202F (6)
        const QByteArray expected = hex("18200000 0b000000 23200000 0c000000 2f200000 06000000"
                                        "2001 0100 48     0003 0200 0041"
                                        "2001 0200 d6d0   0003 0200 0042"
                                        "2001 0200 4a4b");
        QCOMPARE(p.build(LanguageBlockBuilder()), expected);
        QCOMPARE(p.directory.value(BlockDirectory::LanguageAddress), 0x2000u);
        QCOMPARE(p.directory.value(BlockDirectory::LanguageCount), 53u);
        QCOMPARE(p.ctx.runningAddress, qint64(0x2000 + 53));
        QVERIFY(p.ctx.errorText.isEmpty());
        QVERIFY(!QFile::exists(p.ctx.path(QStringLiteral("MultiLanguage/MultiLanguage.tmp"))));
        QVERIFY(inOrder(p.ctx.buildLog,
                        {"MultiLang_Msg_Addr:00002000", "lang_num =3", "MultiLanguage scan0", "mlStr.at(lang_index):H",
                         "rdLen=1", "mlStr.at(lang_index):A", "rdLen=2", "MultiLanguage scan1",
                         QStringLiteral("mlStr.at(lang_index):中"), "rdLen=2", "MultiLanguage scan2",
                         "mlStr.at(lang_index):JK", "rdLen=2", "lang_index=2, mlStr.count()=5",
                         "Multi-Lang:textroll_1lang_index2over than the max number!", "ml_Addr[i]=8216,ml_len[i]=11",
                         "ml_Addr[i]=8227,ml_len[i]=12", "ml_Addr[i]=8239,ml_len[i]=6", "Make MultiLanguage.bin"}));
    }

    void pageTableThatCannotBeOpened_data()
    {
        QTest::addColumn<bool>("asFolder");
        QTest::newRow("missing") << false;
        QTest::newRow("a folder") << true;
    }
    void pageTableThatCannotBeOpened()
    {
        QFETCH(bool, asFolder);
        Project p(2, 2);
        p.put(QStringLiteral("Plugin/Page0000.cfg"), "\xEF\xBB\xBF" + label(2, "0x0120", 0, 1));
        p.put(QStringLiteral("MultiLanguage/Page0000.csv"), "\xEF\xBB\xBFlabel_2,0x0120,20,H,I\n");
        p.put(QStringLiteral("Plugin/Page0001.cfg"), "\xEF\xBB\xBF" + label(7, "0x0010", 0, 1));
        if (asFolder)
            QVERIFY(QDir(p.dir.path()).mkpath(QStringLiteral("MultiLanguage/Page0001.csv")));
        // page 1 has no texts; page 0's records stand: 0x1010 (5 bytes), 0x1015 (5)
        QCOMPARE(p.build(LanguageBlockBuilder()), hex("10100000 05000000 15100000 05000000 2001 0100 48 2001 0100 49"));
        const QString csv = p.ctx.path("MultiLanguage/Page0001.csv");
        QVERIFY(p.ctx.errorText.startsWith(QStringLiteral("Can't open this file:") + csv));
        QCOMPARE(p.ctx.errorText.count(QLatin1Char('\n')), 1); // told once, not once per language
        QVERIFY(p.ctx.buildLog.contains("lang_index=1, mlStr.count()=0"));
    }

    // The user's flow: both blocks through the driver, found by the directory.
    void throughTheDriver()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + QLatin1Char('/');
        ProjectSettings s;
        s.xsize = "800";
        s.ysize = "480";
        s.languageNum = "2";
        QVERIFY(writeFile(root + "t.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n"));
        QVERIFY(writeFile(root + "t.ini", s.toIni()));
        QVERIFY(writeFile(root + "Plugin/Page0000.cfg", "\xEF\xBB\xBF" + label(3, "0x0040", 0, 1)));
        QVERIFY(writeFile(root + "MultiLanguage/Page0000.csv", "\xEF\xBB\xBFlabel_3,0x0040,20,Hi,Yo\n"));
        QVERIFY(writeFile(root + "Constant_text.csv", "\xEF\xBB\xBF" "2,ab,0X0,0,c,0X0,0\n"));
        MakeBin driver;
        installStandardBuild(driver);
        const BuildResult r = driver.run(loadProject(root + "t.uiprj").input);
        QVERIFY(r.imageWritten);
        const QByteArray image = readAll(root + "Morvane_Flash.bin");
        const quint32 lang = r.directory.value(BlockDirectory::LanguageAddress);
        const quint32 text = r.directory.value(BlockDirectory::StaticTextAddress);
        QCOMPARE(r.directory.value(BlockDirectory::LanguageCount), 16u + 12u);
        QByteArray want;
        for (quint32 v : {lang + 16, 6u, lang + 22, 6u})
            want.append(reinterpret_cast<const char *>(&v), 4); // little-endian host
        QCOMPARE(image.mid(int(lang), 28), want + hex("4000 0200 4869 4000 0200 596f"));
        // M = 2: slot 1 off in both languages; the static block ends the image
        QCOMPARE(r.directory.value(BlockDirectory::StaticTextCount), 2u);
        want.clear();
        for (quint32 v : {0xFFFFFFFFu, text + 16, 0xFFFFFFFFu, text + 18})
            want.append(reinterpret_cast<const char *>(&v), 4);
        QCOMPARE(image.mid(int(text)), want + "abc");
        QVERIFY(!QFile::exists(root + "Plugin/Constant_para_all.bin"));
    }
};

QTEST_GUILESS_MAIN(TestTextBlocks)
#include "tst_text_blocks.moc"
