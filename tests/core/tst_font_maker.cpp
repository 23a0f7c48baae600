// Our font maker: the character of each code in each encoding, a font read
// back glyph for glyph against the system's own drawing, and the command line.

#include "CoreTestSupport.h"
#include "build/FontFile.h"
#include "build/FontMaker.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

using namespace core;

class TestFontMaker : public QObject
{
    Q_OBJECT

private slots:
    void characterOfACode_data()
    {
        addColumns<int, int, QString>("code", "encoding", "character");
        QTest::newRow("GB2312 D6D0") << 0xD6D0 << 0 << QStringLiteral("中");
        QTest::newRow("GBK only 8140") << 0x8140 << 1 << QStringLiteral("丂");
        QTest::newRow("not in GB2312") << 0x8140 << 0 << QString();
        QTest::newRow("BIG5 A4A4") << 0xA4A4 << 2 << QStringLiteral("中");
        QTest::newRow("Unicode 4E2D") << 0x4E2D << 3 << QStringLiteral("中");
        QTest::newRow("a surrogate") << 0xD800 << 3 << QString();
        QTest::newRow("ASCII A") << 0x41 << 4 << QStringLiteral("A");
        QTest::newRow("ASCII above 7F") << 0xC0 << 4 << QString();
        QTest::newRow("a control code") << 0x0A << 0 << QString();
        QTest::newRow("a lone byte in GBK") << 0xC0 << 1 << QString();
    }
    void characterOfACode()
    {
        QFETCH(int, code);
        QFETCH(int, encoding);
        QTEST(FontMaker::characterOf(code, encoding), "character");
    }

    // The glyphs read back from the file are the pixels the system drew:
    // exactly at one bit, within one level at four.
    void madeFontHoldsTheSystemsGlyphs_data()
    {
        QTest::addColumn<int>("bits");
        QTest::newRow("1 bit") << 1;
        QTest::newRow("4 bits") << 4;
    }
    void madeFontHoldsTheSystemsGlyphs()
    {
        QFETCH(int, bits);
        FontMaker::Options o;
        o.family = QStringLiteral("DejaVu Sans");
        o.pixelSize = 24;
        o.depthBits = bits;
        o.firstCode = 0x41; // "A", "B"
        o.lastCode = 0x42;
        QString error;
        FontFile::Font font;
        QVERIFY2(font.load(FontMaker::make(o, &error)), qPrintable(error));
        const FontFile::Header &h = font.header();
        QCOMPARE(h.tag, QByteArray("AS"));
        QCOMPARE(h.height, 24);
        QCOMPARE(h.bits(), bits);
        QCOMPARE(h.recordCount(), qint64(2));

        QFont f(o.family);
        f.setPixelSize(24);
        f.setStyleStrategy(bits == 1 ? QFont::NoAntialias : QFont::PreferAntialias);
        const QFontMetrics fm(f);
        QImage drawn(h.width, h.height, QImage::Format_Grayscale8);
        drawn.fill(0);
        QPainter p(&drawn);
        p.setFont(f);
        p.setPen(Qt::white);
        p.drawText(0, qMin(fm.ascent(), h.height - qMin(fm.descent(), h.height / 4)), QStringLiteral("A"));
        p.end();
        int lit = 0;
        const double step = 1.0 / ((1 << bits) - 1);
        for (int y = 0; y < h.height; ++y)
            for (int x = 0; x < h.width; ++x) {
                const double want = drawn.pixelColor(x, y).value() / 255.0;
                QVERIFY(qAbs(font.coverage(0x41, x, y) - want) <= step / 2 + 1e-9);
                lit += want > 0.5;
            }
        QVERIFY(lit > 20); // an "A" was drawn at all
        QCOMPARE(font.advance(0x41), fm.horizontalAdvance(QStringLiteral("A")));
        // drawn again through the bitmap renderer, in a colour
        const QImage text = FontFile::drawCodes(font, {0x41}, qRgb(255, 0, 0));
        QCOMPARE(text.height(), 24);
        QCOMPARE(qAlpha(text.pixel(0, 0)) > 0, font.coverage(0x41, 0, 0) > 0);
    }

    void refusedOptions_data()
    {
        addColumns<QString, int, int, int, int>("encoding", "bits", "size", "first", "last");
        QTest::newRow("encoding") << "EBCDIC" << 1 << 24 << 0x20 << 0x7E;
        QTest::newRow("depth 3") << "ASCII" << 3 << 24 << 0x20 << 0x7E;
        QTest::newRow("size 256") << "ASCII" << 1 << 256 << 0x20 << 0x7E;
        QTest::newRow("reversed") << "ASCII" << 1 << 24 << 0x7E << 0x20;
        QTest::newRow("past FFFF") << "Unicode" << 1 << 24 << 0x20 << 0x10000;
    }
    void refusedOptions()
    {
        FontMaker::Options o;
        o.family = QStringLiteral("DejaVu Sans");
        QFETCH(QString, encoding);
        o.encoding = encoding;
        QFETCH(int, bits);
        o.depthBits = bits;
        QFETCH(int, size);
        o.pixelSize = size;
        QFETCH(int, first);
        o.firstCode = first;
        QFETCH(int, last);
        o.lastCode = last;
        QString error;
        QVERIFY(FontMaker::make(o, &error).isEmpty() && !error.isEmpty());
    }

    void commandLine()
    {
        QTemporaryDir dir;
        const QString out = dir.path() + "/f.bin";
        QProcess p;
        p.start(QStringLiteral(VANTILE_GLYPHFORGE), {"--family", "DejaVu Sans", "--size", "24", "--encoding", "ASCII",
                                                      "--range", "0x20-0x7E", "--out", out});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        const FontFile::HeaderRead r = FontFile::readHeader(out);
        QVERIFY2(r.ok(), qPrintable(r.reason));
        QCOMPARE(r.header.firstCode, 0x20);
        QCOMPARE(r.header.lastCode, 0x7E);
        QCOMPARE(r.fileSize, r.header.fileSize());
        QCOMPARE(FontMaker::fileName(3, QStringLiteral("Sans24")), QStringLiteral("03_Sans24Font.bin"));
        p.start(QStringLiteral(VANTILE_GLYPHFORGE), {"--family", "DejaVu Sans", "--size", "x", "--out", out});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 2);
    }
};

QTEST_MAIN(TestFontMaker)
#include "tst_font_maker.moc"
