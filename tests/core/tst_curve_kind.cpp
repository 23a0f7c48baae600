// The trend curve: its record and parameter block worked out by hand, the
// scale, the channel byte, the block's limit, an edit that would empty the
// range, and a damaged line.

#include "widgets/CurveKinds.h"
#include "widgets/EditBuffer.h"
#include "widgets/KindRegistry.h"
#include "widgets/Records.h"
#include "widgets/VariableImage.h"
#include "widgets/WidgetLine.h"

#include <QtTest>

using namespace vantile;

namespace {

QByteArray hex(const char *spaced) { return QByteArray::fromHex(spaced); } // blanks are skipped

// Parameters at 0x0300; 10,20 200 x 100; reference line at 119 for the value 50; a stale
// scale 0; colour FF8040; channel 3; points 4 apart, 2 wide; L_to_R; 100 to 356.
const char *const kCurve = "curve_2:0x0300,10,20,200,100,119,50,0,0xFF8040,3,4,2,L_to_R,356,100,trend,1;";

QString withField(const QString &line, int pos, const QString &text)
{
    QStringList fields = line.section(':', 1).chopped(1).split(',');
    fields[pos] = text;
    return line.section(':', 0, 0) + ':' + fields.join(',') + ';';
}

} // namespace

class TestCurveKind : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<bool>("vice");
        QTest::addColumn<bool>("colour24");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("errors");
        // type 13, parameters 0x300, 20 follow; 10,20 to 209 (D1), 119 (77); 119; 50; range 256:
        // t = 100 x 2560 / 256 = 1000, scale 100 (64); FF8040 as RGB565 F800 | 0400 | 0008;
        // channel 3 + 80 for L_to_R; 4; 2
        QTest::newRow("plain") << kCurve << 0 << false << false
                               << hex("0D00 0003 14 0A00 1400 D100 7700 7700 3200 6400 08FC00 83 04 02") << "";
        QTest::newRow("24-bit: B, G, R") << kCurve << 0 << false << true
                                         << hex("0D00 0003 14 0A00 1400 D100 7700 7700 3200 6400 4080FF 83 04 02")
                                         << "";
        // PW 480: X' = 480 - 20 - 100 = 360 (168), Y' = 10, 100 x 200 to 459 (1CB), 209 (D1)
        QTest::newRow("90") << kCurve << 1 << false << false
                            << hex("0D00 0003 14 6801 0A00 CB01 D100 7700 3200 6400 08FC00 83 04 02") << "";
        // the Vice picture 400 x 300: PW 300, X' = 180 (B4), right 279 (117); flag 01; R_to_L: 03
        QTest::newRow("90, Vice, R_to_L") << withField(kCurve, 12, "R_to_L") << 1 << true << false
                                          << hex("0D01 0003 14 B400 0A00 1701 D100 7700 3200 6400 08FC00 03 04 02")
                                          << "";
        // an empty range (a damaged file) keeps the line's scale 77 (4D)
        QTest::newRow("empty range") << withField(withField(kCurve, 13, "100"), 7, "77") << 0 << false << false
                                     << hex("0D00 0003 14 0A00 1400 D100 7700 7700 3200 4D00 08FC00 83 04 02") << "";
        // 2 x 0x7FF6 + 20 = 65536 is past the variable memory: no block
        QTest::newRow("block too far") << withField(kCurve, 0, "0x7FF6") << 0 << false << false
                                       << hex("0D00 F67F 14 0A00 1400 D100 7700 7700 3200 6400 08FC00 83 04 02")
                                       << "trend: Curve parameterAddr + datas are more than Max value\n";
        // cut after Y: "zz" reads 0, W and H 0; the defaults: 00FF00 (07E0), L_to_R, 2, 1
        QTest::newRow("damaged") << "curve_1:zz,5,6;" << 0 << false << false
                                 << hex("0D00 0000 14 0500 0600 0400 0500 0000 0000 0000 E00700 80 02 01") << "";
    }

    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(bool, colour24);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, errors);
        VariableImage image;
        QString told;
        RecordContext ctx;
        ctx.pagePicture = ctx.panel = QSize(800, 480);
        ctx.vicePicture = QSize(400, 300);
        ctx.rotation = rotation;
        ctx.viceFlag = vice;
        ctx.colour24 = colour24;
        ctx.variables = &image;
        ctx.errorText = &told;
        QByteArray record;
        QCOMPARE(KindRegistry::writeRecord(record, line, ctx), 25);
        QCOMPARE(record.toHex(' '), bytes.toHex(' '));
        QCOMPARE(told, errors);
        // the block: 20, then the record from its byte 5, at twice the parameter address
        const int at = 2 * int(quint8(record[2]) | quint8(record[3]) << 8);
        if (errors.isEmpty())
            QCOMPARE(image.bytes().mid(at, 21), QByteArray(1, 20) + record.mid(5));
    }

    void scale_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<QString>("maxData");
        QTest::addColumn<QString>("minData");
        QTest::addColumn<int>("expected");
        QTest::newRow("853: remainder 3") << 100 << "300" << "0" << 85; // 256000 / 300
        QTest::newRow("365: remainder 5 stays") << 100 << "700" << "0" << 36;
        QTest::newRow("568: remainder 8 rounds up") << 100 << "450" << "0" << 57;
        QTest::newRow("1228800 cut to 49152") << 480 << "1" << "0" << 4915;
        QTest::newRow("negative minimum") << 100 << "50" << "-50" << 256; // 2560
        QTest::newRow("reversed: -1000 is 64536") << 100 << "0" << "256" << 6454;
        QTest::newRow("empty range") << 100 << "7" << "7" << 0;
    }

    void scale()
    {
        QFETCH(int, height);
        QFETCH(QString, maxData);
        QFETCH(QString, minData);
        QFETCH(int, expected);
        QCOMPARE(int(CurveKinds::scale(height, CurveKinds::dataValue(maxData), CurveKinds::dataValue(minData))),
                 expected);
    }

    void editsAndDrop()
    {
        EditBuffer b;
        QCOMPARE(WidgetLine::parse(kCurve, b), ParseStatus::Ok);
        QCOMPARE(WidgetLine::write(b), QString(kCurve));
        QStringList cells;
        for (const TableRow &r : WidgetLine::tableRows(b, 0))
            cells << r.second;
        // H 50: the scale follows, 50 x 2560 / 256 = 500, 50; a maximum equal to the
        // minimum is taken back while the channel edit stays
        cells[5] = "50";
        cells[13] = "100";
        cells[9] = "5";
        QVERIFY(WidgetLine::applyEdit(b, cells, QSize(800, 480)));
        QCOMPARE(WidgetLine::write(b), QString("curve_2:0x0300,10,20,200,50,119,50,50,0xFF8040,5,4,2,L_to_R,356,100,"
                                               "trend,1;"));
        // a new curve: 0 to 256, the reference line on its bottom row, the scale for 100 rows
        const EditBuffer drop = WidgetLine::createNew(WidgetKind::Curve, 4, QRect(10, 20, 200, 100));
        QCOMPARE(QStringList({drop.text("maxData"), drop.text("minData")}), QStringList({"256", "0"}));
        QCOMPARE(QVector<qint64>({drop.number("y_ReferenceLine"), drop.number("scale")}), QVector<qint64>({119, 100}));
    }
};

QTEST_GUILESS_MAIN(TestCurveKind)
#include "tst_curve_kind.moc"
