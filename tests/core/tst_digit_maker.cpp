// Our picture-digit maker: the names and pictures of a run, strips cut into
// cells, and the command line.

#include "CoreTestSupport.h"
#include "build/DigitMaker.h"

using namespace core;

namespace {
DigitMaker::Options sans(int first = 0)
{
    DigitMaker::Options o;
    o.family = QStringLiteral("DejaVu Sans");
    o.pixelSize = 32;
    o.color = qRgb(0x12, 0xAB, 0x34);
    o.first = first;
    return o;
}
// Rows that hold a pixel with any ink (alpha above half).
QVector<int> inkRows(const QImage &image)
{
    QVector<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 127) {
                rows << y;
                break;
            }
    return rows;
}
int run(const QStringList &args)
{
    QProcess p;
    p.start(QStringLiteral(VANTILE_SERIALSTAMP), args);
    return p.waitForFinished(60000) ? p.exitCode() : -1;
}
} // namespace

class TestDigitMaker : public QObject
{
    Q_OBJECT

private slots:
    void namesOfARun_data()
    {
        // expected: first, digit 9, minus, point, colon; empty: refused
        addColumns<int, QString, QStringList>("first", "name", "expected");
        QTest::newRow("from 0") << 0 << "digit"
                                << QStringList{"0000_digit0.png", "0009_digit9.png", "0010_digitminus.png",
                                               "0011_digitpoint.png", "0012_digitcolon.png"};
        QTest::newRow("from 9987, up to 9999") << 9987 << "big"
                                << QStringList{"9987_big0.png", "9996_big9.png", "9997_bigminus.png",
                                               "9998_bigpoint.png", "9999_bigcolon.png"};
        QTest::newRow("9988 runs past 9999") << 9988 << "digit" << QStringList();
        QTest::newRow("negative") << -1 << "digit" << QStringList();
        QTest::newRow("name leaves the folder") << 0 << "a/b" << QStringList();
        QTest::newRow("no name") << 0 << "" << QStringList();
    }
    void namesOfARun()
    {
        QFETCH(int, first);
        QFETCH(QString, name);
        QFETCH(QStringList, expected);
        DigitMaker::Options o = sans(first);
        o.name = name;
        const DigitMaker::Run r = DigitMaker::render(o);
        if (expected.isEmpty()) {
            QVERIFY(!r.ok() && !r.error.isEmpty());
            return;
        }
        QVERIFY2(r.ok(), qPrintable(r.error));
        QCOMPARE(r.pictures.size(), 13);
        const QStringList got{r.pictures[0].fileName, r.pictures[9].fileName, r.pictures[10].fileName,
                              r.pictures[11].fileName, r.pictures[12].fileName};
        QCOMPARE(got, expected);
        for (int i = 0; i < 13; ++i)
            QCOMPARE(r.pictures[i].number, first + i);
    }

    // Every cell one size; the ink is the text colour; "1" and "8" differ;
    // minus, point and colon sit where their signs have ink.
    void picturesOfAFont()
    {
        DigitMaker::Options o = sans();
        o.transparent = false;
        o.background = qRgb(0, 0, 0x80);
        DigitMaker::Run r = DigitMaker::render(o);
        QVERIFY2(r.ok(), qPrintable(r.error));
        const QSize cell = r.cellSize();
        QVERIFY(cell.height() >= 32 && cell.width() >= 10);
        for (const DigitMaker::Picture &p : r.pictures)
            QCOMPARE(p.image.size(), cell);
        QCOMPARE(r.pictures[1].image.pixel(0, 0), qRgb(0, 0, 0x80));

        o.transparent = true;
        r = DigitMaker::render(o);
        const QImage one = r.pictures[1].image, eight = r.pictures[8].image;
        QVERIFY(one != eight);
        int inkOne = 0, inkEight = 0;
        for (int y = 0; y < cell.height(); ++y)
            for (int x = 0; x < cell.width(); ++x) {
                for (const QImage *img : {&one, &eight}) {
                    const QRgb px = img->pixel(x, y);
                    if (qAlpha(px) == 255) {
                        QCOMPARE(px, qRgb(0x12, 0xAB, 0x34));
                        ++(img == &one ? inkOne : inkEight);
                    }
                }
            }
        QCOMPARE(qAlpha(one.pixel(0, 0)), 0);
        QVERIFY(inkOne > 20);
        QVERIFY(inkEight > inkOne); // an 8 has more strokes than a 1

        const QVector<int> minus = inkRows(r.pictures[10].image), point = inkRows(r.pictures[11].image),
                           colon = inkRows(r.pictures[12].image), digit = inkRows(eight);
        QVERIFY(!minus.isEmpty() && !point.isEmpty() && !colon.isEmpty());
        QVERIFY(minus.size() < digit.size() / 4);                       // a thin bar
        QVERIFY(minus.first() > digit.first() && minus.last() < digit.last()); // mid-height
        QVERIFY(point.first() > (digit.first() + digit.last()) / 2);   // on the baseline
        QVERIFY(colon.last() - colon.first() + 1 > colon.size());      // two dots, a gap between
    }

    void cutStrip_data()
    {
        // an invalid cell: refused
        addColumns<QSize, int, QSize>("stripSize", "cells", "cell");
        QTest::newRow("ten across") << QSize(30, 8) << 10 << QSize(3, 8);
        QTest::newRow("ten down") << QSize(5, 40) << 10 << QSize(5, 4);
        QTest::newRow("thirteen across") << QSize(39, 7) << 13 << QSize(3, 7);
        QTest::newRow("31 wide in ten") << QSize(31, 8) << 10 << QSize();
        QTest::newRow("nine cells") << QSize(27, 8) << 9 << QSize();
        QTest::newRow("no picture") << QSize() << 10 << QSize();
    }
    void cutStrip()
    {
        QFETCH(QSize, stripSize);
        QFETCH(int, cells);
        QFETCH(QSize, cell);
        QImage strip;
        if (stripSize.isValid()) { // cell i painted in red i * 20
            strip = QImage(stripSize, QImage::Format_RGB32);
            const bool across = stripSize.width() >= stripSize.height();
            for (int y = 0; y < strip.height(); ++y)
                for (int x = 0; x < strip.width(); ++x)
                    strip.setPixel(x, y, qRgb((across ? x : y) / (across ? 3 : 4) * 20 % 256, 7, 9));
        }
        const DigitMaker::Run r = DigitMaker::cutStrip(strip, sans(40), cells);
        if (!cell.isValid()) {
            QVERIFY(!r.ok() && !r.error.isEmpty());
            return;
        }
        QVERIFY2(r.ok(), qPrintable(r.error));
        QCOMPARE(r.pictures.size(), cells);
        QCOMPARE(r.pictures.last().number, 40 + cells - 1);
        for (int i = 0; i < cells; ++i) {
            QCOMPARE(r.pictures[i].image.size(), cell);
            QCOMPARE(r.pictures[i].image.pixel(0, 0), qRgb(i * 20, 7, 9));
            QCOMPARE(r.pictures[i].image.pixel(cell.width() - 1, cell.height() - 1), qRgb(i * 20, 7, 9));
        }
    }

    void colours_data()
    {
        addColumns<QString, bool, uint>("text", "ok", "rgb");
        QTest::newRow("0x") << "0x12AB34" << true << 0xFF12AB34u;
        QTest::newRow("#, lower case") << "#ff0001" << true << 0xFFFF0001u;
        QTest::newRow("five digits") << "0x12AB3" << false << 0u;
        QTest::newRow("not hex") << "0x12AB3G" << false << 0u;
        QTest::newRow("seven digits") << "0x12AB345" << false << 0u;
    }
    void colours()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        QFETCH(uint, rgb);
        QRgb got = 0;
        QCOMPARE(DigitMaker::parseColor(text, &got), ok);
        if (ok)
            QCOMPARE(got, QRgb(rgb));
    }

    void otherFilesWithTheRunsNumbers()
    {
        QTemporaryDir dir;
        for (const char *f : {"0021_old.png", "0021_digit1.png", "0033_after.png", "readme.txt"})
            QVERIFY(QFile(dir.filePath(QLatin1String(f))).open(QIODevice::WriteOnly));
        QCOMPARE(DigitMaker::clashes(DigitMaker::render(sans(20)), dir.path()), QStringList{"0021_old.png"});
    }

    void commandLine()
    {
        QTemporaryDir dir;
        const QString out = dir.filePath(QStringLiteral("Icon"));
        QCOMPARE(run({"--family", "DejaVu Sans", "--size", "24", "--color", "0xFF0000", "--background", "0x000000",
                      "--first", "100", "--out", out}),
                 0);
        const QStringList files = QDir(out).entryList(QDir::Files, QDir::Name);
        QCOMPARE(files.size(), 13);
        QCOMPARE(files.first(), QStringLiteral("0100_digit0.png"));
        QCOMPARE(files.last(), QStringLiteral("0112_digitcolon.png"));
        const QImage zero(QDir(out).filePath(files.first()));
        QCOMPARE(zero.size(), QImage(QDir(out).filePath(files.last())).size());
        QCOMPARE(zero.pixel(0, 0), qRgb(0, 0, 0));

        QFile garbage(dir.filePath(QStringLiteral("strip.png")));
        QVERIFY(garbage.open(QIODevice::WriteOnly));
        garbage.write("\x89PNG not really");
        garbage.close();
        QCOMPARE(run({"--strip", garbage.fileName(), "--first", "0", "--out", out}), 2);
        QCOMPARE(run({"--family", "DejaVu Sans", "--size", "24", "--color", "red", "--first", "0", "--out", out}), 2);
        QCOMPARE(run({"--family", "No Such Family", "--size", "24", "--color", "0x000000", "--first", "0",
                      "--out", out}), 2);
        QCOMPARE(run({"--family", "DejaVu Sans", "--size", "24", "--color", "0x000000", "--out", out}), 2);
        QCOMPARE(run({"--bogus"}), 2);
        // a file where the folder should be
        QCOMPARE(run({"--family", "DejaVu Sans", "--size", "24", "--color", "0x000000", "--first", "0", "--out",
                      garbage.fileName() + QStringLiteral("/Icon")}), 3);
    }
};

QTEST_MAIN(TestDigitMaker)
#include "tst_digit_maker.moc"
