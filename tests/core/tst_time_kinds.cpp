// The time kinds: records worked out by hand, the date and timer words, the
// variable image and its limits, lines read and written back.

#include "CoreTestSupport.h"

using namespace core;

namespace {

const char *const kRTC = "RTC_2:100,50,120,30,0x0200,0020_d0.png,0032_colon.png,YY/MM/DD,date,0x0005,1;";
// the hour hand's 300 keeps in the line; the record takes its low byte
const char *const kClock = "Clock_1:0x0300,200,100,120,120,300,10,6,0x0000FF,50,8,4,0x00FF00,55,12,2,0xFF0000,"
                           "0040_dial.png,0041_dot.png,wall,1;";
const char *const kTimer = "uitimer_0:0x0400,10,20,90,30,0x1000,3600,0x1001,0,0x1002,1,0030_t0.png,0042_tc.png,MM:SS,-,"
                           "Enable,egg,0x1003,0x0001,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,"
                           "0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,1;";
// The timer's eight pairs: 0x1003 = 1, seven unused.
const QByteArray kTimerPairs = hex("0310 0100") + QByteArray(28, '\xFF');

} // namespace

class TestTimeKinds : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        addColumns<QString, int, bool, bool, QByteArray>("line", "rotation", "vice", "colour24", "bytes");
        // type 6; parameters 0x0200; 11 follow; X 100, Y 50; icons 20 and 32; YY/MM/DD 1; tail 5
        QTest::newRow("RTC") << kRTC << 0 << false << false << hex("06 00 0002 0B 6400 3200 1400 2000 01 0500");
        // PW 480: X' = 480 - 50 - 30 = 400 (190), Y' = 100
        QTest::newRow("RTC turned") << kRTC << 1 << false << false << hex("06 00 0002 0B 9001 6400 1400 2000 01 0500");
        QTest::newRow("RTC Vice") << kRTC << 0 << true << false << hex("0500 06 01 0002 0B 6400 3200 1400 2000 01");
        // type 8; 0x0300; 26 follow; 200,100; dial 40; hour 300 -> 44 (2C), 10, 6, blue 001F;
        // minute 50, 8, 4, green 07E0; second 55, 12, 2, red F800; centre 41
        QTest::newRow("Clock") << kClock << 0 << false << false
                               << hex("08 00 0003 1A C800 6400 2800 2C0A06 1F0000 320804 E00700 370C02 00F800 2900");
        // 24 bits: blue, green, red bytes, low first
        QTest::newRow("Clock 24-bit") << kClock << 0 << false << true
                                      << hex("08 00 0003 1A C800 6400 2800 2C0A06 FF0000 320804 00FF00 370C02 0000FF 2900");
        // X' = 480 - 100 - 120 = 260 (104), Y' = 200
        QTest::newRow("Clock turned") << kClock << 1 << false << false
                                      << hex("08 00 0003 1A 0401 C800 2800 2C0A06 1F0000 320804 E00700 370C02 00F800 2900");
        // type 16; 0x0400; 48 follow; preset, count, control 0x1000..02; 10,20; first icon 30;
        // MM:SS 3; "-" counts down 0; global 1; no report 0; pairs
        QTest::newRow("uitimer") << kTimer << 0 << false << false
                                 << hex("10 00 0004 30 0010 0110 0210 0A00 1400 1E00 03 00 01 00") + kTimerPairs;
        // X' = 480 - 20 - 30 = 430 (1AE), Y' = 10
        QTest::newRow("uitimer turned") << kTimer << 1 << false << false
                                        << hex("10 00 0004 30 0010 0110 0210 AE01 0A00 1E00 03 00 01 00") + kTimerPairs;
    }
    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        QFETCH(bool, colour24);
        QFETCH(QByteArray, bytes);
        RecordBuild b(false, rotation);
        b.ctx.colour24 = colour24;
        QCOMPARE((vice ? b.writeVice(line) : b.write(line)).toHex(' '), bytes.toHex(' '));
        QCOMPARE(b.errors, QString());
        QCOMPARE(rewritten(line), line); // and the line reads and writes back unchanged
    }

    // The words in the records: the RTC's date format at 13, the timer's
    // format and count direction (1 up) at 17 and 18.
    void words_data()
    {
        addColumns<QString, int, QByteArray>("line", "at", "bytes");
        const auto rtc = [](const char *w) { return QString(kRTC).replace("YY/MM/DD", w); };
        const auto timer = [](const char *w) { return QString(kTimer).replace(",MM:SS,-,", w); };
        QTest::newRow("full date") << rtc("YY/MM/DD HH:MM:SS") << 13 << hex("00");
        QTest::newRow("week") << rtc("Week") << 13 << hex("07");
        QTest::newRow("month and day, slash") << rtc("MM/DD/") << 13 << hex("0B");
        QTest::newRow("lower case is unknown") << rtc("hh:mm") << 13 << hex("00");
        QTest::newRow("NULL, up") << timer(",NULL,+,") << 17 << hex("00 01");
        QTest::newRow("HH:MM:SS, down") << timer(",HH:MM:SS,-,") << 17 << hex("01 00");
        QTest::newRow("SS, unknown direction") << timer(",SS,up,") << 17 << hex("04 00");
        QTest::newRow("unknown format") << timer(",H:M,+,") << 17 << hex("00 01");
    }
    void words()
    {
        QFETCH(QString, line);
        QFETCH(int, at);
        QFETCH(QByteArray, bytes);
        QCOMPARE(RecordBuild().write(line).mid(at, bytes.size()).toHex(' '), bytes.toHex(' '));
    }

    // Parameter blocks: the count byte and the P bytes after it at
    // 2 x parameterAddr; the timer's start values at their addresses.
    void variables()
    {
        RecordBuild b;
        b.write(kRTC);
        b.write(kClock);
        b.write(kTimer);
        // RTC: 9 bytes, its tail left out (the 00 after them)
        QCOMPARE(b.at(0x400, 11).toHex(' '), hex("0B 6400 3200 1400 2000 01 00").toHex(' '));
        QCOMPARE(b.at(0x600, 27).toHex(' '),
                 hex("1A C800 6400 2800 2C0A06 1F0000 320804 E00700 370C02 00F800 2900").toHex(' '));
        QCOMPARE(b.at(0x800, 49).toHex(' '),
                 (hex("30 0010 0110 0210 0A00 1400 1E00 03 00 01 00") + kTimerPairs).toHex(' '));
        // 3600 = 0E10 at 0x1000 (byte 0x2000), 0 at 0x1001, 1 at 0x1002
        QCOMPARE(b.at(0x2000, 6).toHex(' '), hex("0E10 0000 0001").toHex(' '));
        QCOMPARE(b.errors, QString());
    }

    void limits_data()
    {
        addColumns<QString, QString>("line", "message");
        const QString over = " parameterAddr + datas are more than Max value\n";
        const QString rtc = "RTC_0:0,0,8,8,%1,,,HH:MM,date,0xFFFF,1;";
        const QString timer = "uitimer_0:%1,0,0,8,8,%2,5,0xFFFF,0,0xFFFF,0,,,SS,+,Disable,egg;";
        // 2 x 32764 + 9 = 65537
        QTest::newRow("RTC over") << rtc.arg("0x7FFC") << "date: RTC" + over;
        // 2 x 32743 + 48 = 65534; 2 x 32744 + 48 = 65536
        QTest::newRow("uitimer fits") << timer.arg("0x7FE7", "0x1000") << "";
        QTest::newRow("uitimer over") << timer.arg("0x7FE8", "0x1000") << "egg: UITimer" + over;
        // 2 x 0x8000 + 1 is beyond the memory: the value is left out without a word
        QTest::newRow("uitimer value beyond") << timer.arg("0xFFFF", "0x8000") << "";
    }
    void limits()
    {
        QFETCH(QString, line);
        RecordBuild b;
        QVERIFY(!b.write(line).startsWith("<count>"));
        QTEST(b.errors, "message");
    }

    // Damaged: "0xZZ" has no digits (0), letters read 0, the sign is
    // dropped, the fields the line doesn't reach keep their defaults.
    void damagedLine()
    {
        QCOMPARE(rewritten("uitimer_1:0xZZ,a,-3;"), "uitimer_1:0x0000,0,3,0,0,0xFFFF,0,0xFFFF,0,0xFFFF,0,,,HH:MM:SS,+,Disable,uitimer_1,"
                                       + QString("0xFFFF,").repeated(16) + "1;");
    }

    // The timer's rows: the control code shows as its word; the report
    // switch has a row but no place in the line; a last icon at the first
    // is dropped.
    void timerRows()
    {
        EditBuffer t;
        WidgetLine::parse(kTimer, t);
        QStringList cells = cellsOf(t);
        QCOMPARE(cells.size(), 34);
        QCOMPARE(cells[11], QString("1:Start the timer"));
        cells[11] = "3:Show timer at pause state";
        cells[17] = "Enable";
        cells[13] = "0030_t0.png";
        QVERIFY(WidgetLine::applyEdit(t, cells, QSize(800, 480)) && t.isOn("reportToHost"));
        QCOMPARE(WidgetLine::write(t), QString(kTimer).replace("0x1002,1,", "0x1002,3,"));
    }
};

QTEST_MAIN(TestTimeKinds)
#include "tst_time_kinds.moc"
