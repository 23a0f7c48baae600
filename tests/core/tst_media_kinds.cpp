// The media kinds: records worked out by hand, the variable image and its
// limits, lines read back, and a build's video facts.

#include "CoreTestSupport.h"
#include "build/MediaInfo.h"
#include "build/PageBlock.h"
#include "widgets/MediaKinds.h"

using namespace core;

namespace {

const char *const kWav = "wav_3:door,10,20,30,40,5,Enable,1;";
const char *const kVideo = "video_0:clip,0x0100,100,50,320,240,7,30,RepeatPlay,0x2000,0x0001,0x2001,0x0002,"
                           "0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,0xFFFF,1;";
const char *const kCamera = "camera_1:cam,0x0300,0x0040,10,20,160,120,1,2,3,4,5,6,7,8,ON,1;";
const char *const kQrcode = "qrcode_2:qr,0x0500,0x0050,8,40,60,100,100,2,AB,1;";
// video: type 34, parameters at 0x100, 44 follow; video 7; ...; RepeatPlay 4, progress 30;
// pairs 0x2000/1 and 0x2001/2, the other six none
const char *const kVideoTail = "04 1E  0020 0100 0120 0200" "FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF";

// A page picture of 800 x 480 on a panel of 1024 x 600: at 90 degrees PW is 480.
struct Build : RecordBuild {
    explicit Build(int rotation = 0)
        : RecordBuild(false, rotation)
    {
        ctx.panel = QSize(1024, 600);
    }
};

} // namespace

class TestMediaKinds : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { MediaInfo::setLibraryName(QString()); }

    void records_data()
    {
        addColumns<QString, int, bool, QByteArray>("line", "rotation", "vice", "bytes");
        // type 10, no parameters, 2 follow; sound 5 with bit 15 for repeat: 0x8005
        QTest::newRow("wav") << kWav << 0 << false << hex("0A 00 FFFF 02  0580");
        QTest::newRow("wav 90, Vice page") << kWav << 1 << true << hex("0A 01 FFFF 02  0580");
        // 100,50 320 x 240 as X, Y, W, H
        QTest::newRow("video") << kVideo << 0 << false
                               << hex("22 00 0001 2C  0700  6400 3200 4001 F000") + hex(kVideoTail);
        // X' = 480 - 50 - 240 = 190, Y' = 100, W' = 240, H' = 320
        QTest::newRow("video 90") << kVideo << 1 << false
                                  << hex("22 00 0001 2C  0700  BE00 6400 F000 4001") + hex(kVideoTail);
        // type 32, parameters 0x300, 18 follow; address 0x40; 10,20 160 x 120; bytes 1 to 8
        QTest::newRow("camera") << kCamera << 0 << false
                                << hex("20 00 0003 12  4000  0A00 1400 A000 7800  01 02 03 04 05 06 07 08");
        // X' = 480 - 20 - 120 = 340, Y' = 10, W' = 120, H' = 160
        QTest::newRow("camera 90") << kCamera << 1 << false
                                   << hex("20 00 0003 12  4000  5401 0A00 7800 A000  01 02 03 04 05 06 07 08");
        // type 7, parameters 0x500, 9 follow; address 0x50, 8 bytes; 40,60; side 2 x 50
        QTest::newRow("qrcode") << kQrcode << 0 << false << hex("07 00 0005 09  5000 0800  2800 3C00  02");
        // X' = 480 - 60 - 100 = 320, Y' = 40
        QTest::newRow("qrcode 90") << kQrcode << 1 << false << hex("07 00 0005 09  5000 0800  4001 2800  02");
        // garbage: "zz" has no "x" (0), "-8" keeps its digits, "abc" is 0, an unknown mode
        // word is Continue 0, the line ends before the pairs (all none)
        QTest::newRow("video, garbage") << "video_0:v,zz,-8,abc,10,10,x9,300,Fast;" << 0 << false
                                        << hex("22 00 0000 2C  0900  0800 0000 0A00 0A00  00 2C"
                                               "FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF FFFFFFFF");
    }
    void records()
    {
        QFETCH(QString, line);
        QFETCH(int, rotation);
        QFETCH(bool, vice);
        Build b(rotation);
        b.ctx.viceFlag = vice;
        QTEST(b.write(line), "bytes");
        QCOMPARE(b.errors, QString());
    }

    void variableImage()
    {
        Build b;
        b.image.storeValue("x", 0x50, QByteArray(10, '\xFF'), nullptr); // the qrcode's room and two bytes after
        b.write(kVideo);
        b.write(kCamera);
        b.write(kQrcode);
        b.write(kWav); // no parameter block
        QCOMPARE(b.errors, QString());
        // video block at 2 x 0x100: count 0x2C, then the record from its byte 5
        QCOMPARE(b.at(0x200, 8), hex("2C 0700 6400 3200 40"));
        // camera: ON is 1 at 0x40 (high byte first); block at 0x600
        QCOMPARE(b.at(0x80, 2), hex("0001"));
        QCOMPARE(b.at(0x600, 6), hex("12 4000 0A00 14"));
        // qrcode: "AB" in a room of 8 bytes at 0xA0, zeros after it; block at 0xA00
        QCOMPARE(b.at(0xA0, 10), hex("4142 000000000000 FFFF"));
        QCOMPARE(b.at(0xA00, 10), hex("09 5000 0800 2800 3C00 02"));
        b.write(QString(kCamera).replace(",ON,", ",on,")); // only "ON" is on
        QCOMPARE(b.at(0x80, 2), hex("0000"));
        // "aé" is 61 C3 A9 at 0x1: a room of 2 would split the é, which is left out whole
        b.write(QString::fromUtf8("qrcode_0:q,0xFFFF,0x0001,2,0,0,1,1,1,aé,1;"));
        QCOMPARE(b.at(2, 3), hex("6100 00"));
    }

    void limits_data()
    {
        addColumns<QString, QString>("line", "errors");
        // 2 x 0x7FF8 + 18 = 65538
        QTest::newRow("camera block") << "camera_0:cam,0x7FF8,0x0001,0,0,1,1;"
                                      << "cam: camera parameterAddr + datas are more than Max value\n";
        // 2 x 0x7FEA + 44 = 65536
        QTest::newRow("video block") << "video_0:v,0x7FEA,0,0,1,1;"
                                     << "v: video parameterAddr + datas are more than Max value\n";
        // 2 x 0x7FFC + 9 = 65537
        QTest::newRow("qrcode block") << "qrcode_0:qr,0x7FFC,0x0001,2,0,0,1,1,1,A,1;"
                                      << "qr: PRCode parameterAddr + datas are more than Max value\n";
        // room at 2 x 0x7FFE = 65532: 4 bytes end at 65536 and fit, 8 do not
        QTest::newRow("qrcode room fits") << "qrcode_0:qr,0xFFFF,0x7FFE,4,0,0,1,1,1,A,1;" << "";
        QTest::newRow("qrcode room") << "qrcode_0:qr,0xFFFF,0x7FFE,8,0,0,1,1,1,A,1;"
                                     << "qr:  more than Max value\n";
    }
    void limits()
    {
        QFETCH(QString, line);
        QFETCH(QString, errors);
        Build b;
        QVERIFY(!b.write(line).startsWith('<')); // the record is written all the same
        QCOMPARE(b.errors, errors);
    }

    void lines_data()
    {
        addColumns<QString, QString>("line", "written");
        for (const char *line : {kWav, kVideo, kCamera, kQrcode})
            QTest::newRow(line) << line << line;
        // a line cut off after its address keeps the other fields' defaults
        QTest::newRow("short camera") << "camera_0:c,0x0001,0x0002;"
                                      << "camera_0:c,0x0001,0x0002,0,0,0,0,0,0,1,128,128,128,0,0,OFF,1;";
    }
    void lines()
    {
        QFETCH(QString, line);
        QTEST(rewritten(line), "written");
    }

    void qrcodeDrop()
    {
        // drawn 130 x 170, it holds two steps of 50 and becomes 100 x 100
        const EditBuffer qr = WidgetLine::createNew(WidgetKind::QRCode, 0, QRect(10, 10, 130, 170));
        QCOMPARE(QVector<qint64>({qr.number("size(50pixels)"), qr.w(), qr.h()}), QVector<qint64>({2, 100, 100}));
    }

    // A build of a page with a video: the log tells what the file holds, or
    // that the library isn't there; the record is written either way.
    void videoInBuild_data()
    {
        QTest::addColumn<QString>("library");
        QTest::newRow("library missing") << "libvantile-no-such-mediainfo.so.0";
        QTest::newRow("real file") << "";
    }
    void videoInBuild()
    {
        QFETCH(QString, library);
        MediaInfo::setLibraryName(library);
        BuildDir p({"Plugin", "Video"});
        const QString root = p.ctx.projectDir;
        const bool real = library.isEmpty();
        if (real) {
            const QString ffmpeg = QStandardPaths::findExecutable("ffmpeg");
            if (ffmpeg.isEmpty())
                QSKIP("ffmpeg is not on PATH: no video file can be made to read");
            if (!MediaInfo::libraryLoaded())
                QSKIP("libmediainfo.so.0 can't be loaded on this machine");
            QCOMPARE(QProcess::execute(ffmpeg, {"-v", "error", "-f", "lavfi", "-i", "testsrc=size=64x48:rate=10", "-t",
                                                "1", "-c:v", "mpeg4", root + "Video/0007_clip.mp4"}), 0);
        }
        BuildContext &ctx = p.ctx;
        ctx.settings.xsize = "800", ctx.settings.ysize = "480";
        p.blankPages(1);
        p.page(0, {kVideo});
        ctx.runningAddress = 0x10180;
        PageBlock::PageBuilder().build(ctx);
        QCOMPARE(readAll(root + "Plugin/Page0000.bin").left(49), hex("22 00 0001 2C  0700  6400 3200 4001 F000") + hex(kVideoTail));
        if (!real) {
            const int i = ctx.buildLog.indexOf("Unable to load MediaInfo.dll");
            QVERIFY(i > 0);
            QCOMPARE(ctx.buildLog[i - 1], QString()); // behind a line end
            return;
        }
        // the file made above: one second at 10 frames
        QVERIFY2(!ctx.buildLog.filter("clip: Video/0007_clip.mp4 64x48, 1000 ms, 10 fps, ").isEmpty(),
                 qPrintable(ctx.buildLog.join('\n')));
        QVERIFY(!MediaInfo::readVideo(root + "Plugin/Page0000.bin", nullptr)); // no video in it
    }
};

QTEST_GUILESS_MAIN(TestMediaKinds)
#include "tst_media_kinds.moc"
