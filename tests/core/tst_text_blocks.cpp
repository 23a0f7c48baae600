// The static text block and the language block on small projects. Expected
// bytes are worked out by hand: addresses 4 bytes and language records
// (address 2, length 2, bytes) little-endian; "中" is D6 D0 in GBK and
// 4E 2D as a 16-bit unit; font 0 is a GBK font, font 1 a Unicode one.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "build/TextBlocks.h"

using namespace core;

namespace {

// Page file lines: a label and a textroll with write address, font and multi-language flag.
QByteArray label(int n, const char *addr, int font, int multi)
{
    return QString("label_%1:%2,20,0,0,100,30,32,32,%3,1,0,0,D3D3D3,000000,*Hex:41,0xFFFF,label_%1,0,%4,0,0,0,0;\n")
        .arg(n).arg(addr).arg(font).arg(multi).toUtf8();
}
QByteArray textroll(int n, const char *addr, int font, int multi)
{
    return QString("textroll_%1:%2,0,0,100,30,32,24,24,%3,3,000000,0000FF,64,50,0,1,*Hex:41,0,0xFFFF,textroll_%1,%4,0;\n")
        .arg(n).arg(addr).arg(font).arg(multi).toUtf8();
}

// `pages` pages and two fonts; blocks built from 0x1000.
struct Project : BuildDir {
    explicit Project(int languages, int pages = 1)
    {
        ctx.settings.languageNum = QString::number(languages);
        for (int p = 0; p < pages; ++p)
            ctx.pageLines << QStringLiteral("Page%1:RGBColor(0,0,0);P;RGBColor(0,0,0);").arg(p, 4, 10, QLatin1Char('0'));
        ctx.fonts.count = 2;
        ctx.fonts.encoding[0] = 1, ctx.fonts.encoding[1] = 3;
        ctx.runningAddress = 0x1000;
    }
    // Written with the UTF-8 byte order mark, as the designer writes it.
    void text(const QString &relative, const QByteArray &text) { put(relative, "\xEF\xBB\xBF" + text); }
    QByteArray build(BlockBuilder &&builder)
    {
        builder.build(ctx);
        return block(builder.block());
    }
};

} // namespace

class TestTextBlocks : public QObject
{
    Q_OBJECT

private slots:
    void staticBlock()
    {
        const struct { int languages; QByteArray csv; QByteArray block; int count, complaints; } cases[] = {
            // 4 rows from 0x1000, data from 0x1010; row 2 empty, number 3 off, "中" in GBK and as a unit
            {1, "1,*Hex:41E4B8AD,0X000000,0\n2,,0X000000,0\n4,*Hex:E4B8AD,0XFF0000,1\n",
             hex("10100000 13100000 ffffffff 13100000 41d6d0 4e2d"), 4, 0},
            // M = 5, R = 10: data from 0x1028; language 0's rows first, 3 and 4 off in both
            {2, "1,a,0X0,0,b,0X0,0\n2,c,0X0,0,de,0X0,0\n5,f,0X0,0,g,0X0,0\n",
             hex("28100000 29100000 ffffffff ffffffff 2a100000 2b100000 2c100000 ffffffff ffffffff 2e100000"
                 "61636662646567"), 5, 0},
            // the last line says 2: number 3 has no slot, is left out and told
            {1, "1,A,0X0,0\n3,B,0X0,0\n2,C,0X0,0\n", hex("08100000 09100000 4143"), 2, 1},
            {1, QByteArray(), QByteArray(), 0, 0}}; // no file
        for (const auto &c : cases) {
            Project p(c.languages);
            if (!c.csv.isEmpty())
                p.text(QStringLiteral("Constant_text.csv"), c.csv);
            QCOMPARE(p.build(StaticTextBlockBuilder()).toHex(' '), c.block.toHex(' '));
            QCOMPARE(p.directory.value(BlockDirectory::StaticTextAddress), 0x1000u);
            QCOMPARE(p.directory.value(BlockDirectory::StaticTextCount), quint32(c.count));
            QCOMPARE(p.ctx.runningAddress, 0x1000 + c.block.size());
            QCOMPARE(p.ctx.errorText.count(QLatin1Char('\n')), c.complaints);
            QCOMPARE(QFile::exists(p.ctx.blockPath(Block::StaticText)), !c.block.isEmpty());
            if (!c.block.isEmpty()) // the texts alone, for the page blocks
                QCOMPARE(readAll(p.ctx.path(QStringLiteral("Plugin/Constant_para.bin"))),
                         c.block.mid(4 * c.count * c.languages));
        }
    }

    void languageBlock()
    {
        // L = 1: no block, the count 0, the address stays. L = 3: a table of 24 bytes, then
        // language 0 at 0x2018 (11 bytes), 1 at 0x2023 (12), 2 at 0x202F (6).
        const QByteArray three = hex("18200000 0b000000 23200000 0c000000 2f200000 06000000"
                                     "2001 0100 48  0003 0200 0041  2001 0200 d6d0  0003 0200 0042  2001 0200 4a4b");
        for (int languages : {1, 3}) {
            Project p(languages);
            p.ctx.runningAddress = 0x2000;
            p.directory.set(BlockDirectory::LanguageCount, 77); // from an earlier build
            p.text(QStringLiteral("Plugin/Page0000.cfg"),
                  label(2, "0x0120", 0, 1) + label(5, "0x0200", 0, 0) + textroll(1, "0x0300", 1, 1));
            // plain texts as the language editor writes them; textroll_1 lacks language 2
            p.text(QStringLiteral("MultiLanguage/Page0000.csv"),
                  "label_5,0x0200,20,X,Y,Z\nlabel_2,0x0120,20,H,中,JK\ntextroll_1,0x0300,32,A,B\n");
            const QByteArray want = languages == 1 ? QByteArray() : three;
            QCOMPARE(p.build(LanguageBlockBuilder()).toHex(' '), want.toHex(' '));
            QCOMPARE(QFile::exists(p.ctx.blockPath(Block::Language)), !want.isEmpty());
            QCOMPARE(QVector<qint64>({p.directory.value(BlockDirectory::LanguageAddress),
                                      p.directory.value(BlockDirectory::LanguageCount), p.ctx.runningAddress}),
                     QVector<qint64>({0x2000, want.size(), 0x2000 + want.size()}));
            QCOMPARE(p.ctx.errorText, QString());
            QCOMPARE(p.ctx.buildLog.contains("Multi-Lang:textroll_1lang_index2over than the max number!"), languages == 3);
            QVERIFY(!QFile::exists(p.ctx.path(QStringLiteral("MultiLanguage/MultiLanguage.tmp"))));
        }
    }

    void pageTableThatCannotBeOpened()
    {
        for (bool asFolder : {false, true}) { // missing, or a folder in its place
            Project p(2, 2);
            p.text(QStringLiteral("Plugin/Page0000.cfg"), label(2, "0x0120", 0, 1));
            p.text(QStringLiteral("MultiLanguage/Page0000.csv"), "label_2,0x0120,20,H,I\n");
            p.text(QStringLiteral("Plugin/Page0001.cfg"), label(7, "0x0010", 0, 1));
            if (asFolder)
                QVERIFY(QDir(p.dir.path()).mkpath(QStringLiteral("MultiLanguage/Page0001.csv")));
            // page 1 has no texts; page 0's records stand: 0x1010 (5 bytes), 0x1015 (5)
            QCOMPARE(p.build(LanguageBlockBuilder()),
                     hex("10100000 05000000 15100000 05000000 2001 0100 48 2001 0100 49"));
            const QString csv = p.ctx.path("MultiLanguage/Page0001.csv");
            QVERIFY(p.ctx.errorText.startsWith(QStringLiteral("Can't open this file:") + csv));
            QCOMPARE(p.ctx.errorText.count(QLatin1Char('\n')), 1); // told once, not once per language
        }
    }

    // The user's flow: both blocks through the driver, found by the directory.
    void throughTheDriver()
    {
        Project p(2);
        ProjectSettings s;
        s.languageNum = "2";
        p.text("t.uiprj", "Page0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
        p.put("t.ini", s.toIni());
        p.text("Plugin/Page0000.cfg", label(3, "0x0040", 0, 1));
        p.text("MultiLanguage/Page0000.csv", "label_3,0x0040,20,Hi,Yo\n");
        p.text("Constant_text.csv", "2,ab,0X0,0,c,0X0,0\n");
        MakeBin driver;
        installStandardBuild(driver);
        const BuildResult r = driver.run(loadProject(p.ctx.path("t.uiprj")).input);
        QVERIFY(r.imageWritten);
        const QByteArray image = readAll(r.imagePath);
        const auto le32 = [](std::initializer_list<quint32> values) {
            QByteArray b;
            for (quint32 v : values)
                for (int i = 0; i < 4; ++i)
                    b += char(v >> (8 * i));
            return b;
        };
        const quint32 lang = r.directory.value(BlockDirectory::LanguageAddress);
        QCOMPARE(r.directory.value(BlockDirectory::LanguageCount), 16u + 12u);
        QCOMPARE(image.mid(int(lang), 28), le32({lang + 16, 6, lang + 22, 6}) + hex("4000 0200 4869 4000 0200 596f"));
        // M = 2: slot 1 off in both languages; the static block ends the image
        const quint32 text = r.directory.value(BlockDirectory::StaticTextAddress);
        QCOMPARE(r.directory.value(BlockDirectory::StaticTextCount), 2u);
        QCOMPARE(image.mid(int(text)), le32({0xFFFFFFFF, text + 16, 0xFFFFFFFF, text + 18}) + "abc");
    }
};

QTEST_GUILESS_MAIN(TestTextBlocks)
#include "tst_text_blocks.moc"
