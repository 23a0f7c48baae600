// Vice pages: a two-page project on chip 10 whose first page shows its
// second inside a slidemenuPro, built by the whole driver and checked by hand.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"

using namespace core;

namespace {

const char *const kPageLine = "Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);P;Disable;0;0;Disable;";
// 10,20 200 x 100, writeAddr 0x0010, shows Page0001, Horizontal, frames from its picture.
const char *const kMenu = "slidemenuPro_0:carousel,10,20,200,100,0x0010,0,Page0001,,Horizontal,Disable,0,0,,,0,0,"
                          "Disable,1;";
const char *const kHostButton = "button_0:0,0,40,30,0x0021,,,,b0,Disable,Disable,0x0000,0xFFFF,1;";
// The Vice page: a free icon (first value 1, parameters at 0x0100), a button that
// reports to the host with an icon inside it (their group 1), a curve.
const char *const kIcon0 = "icon_0:0x0100,2,0x0040,2,10,20,4,4,0000_dot.png,0000_dot.png,,1,0,0,ic0,Disable,0xFFFF,1;";
const char *const kViceButton = "button_0:50,60,40,30,0x0022,,,,b1,Enable,Disable,0x0000,0xFFFF,1;";
const char *const kIcon1 = "icon_1:0xFFFF,2,0x0041,2,55,65,4,4,0000_dot.png,0000_dot.png,,,0,0,ic1,Disable,0xFFFF,1;";
const char *const kCurve = "curve_0:0xFFFF,100,10,80,50,59,0,0,0x000000,1,2,1,L_to_R,256,0,cv,1;";

// Chip 10, a 320 x 240 panel turned by 90 degrees: the canvas stands 240 x 320. Page 0
// is plain (PW is XSIZE, 320); page 1 has a 200 x 400 picture (PW 400, PH 200).
struct Project : BuildDir {
    const QString root = ctx.projectDir;

    explicit Project(const QString &menu = QString::fromLatin1(kMenu))
        : BuildDir({"Plugin", "Picture", "Icon"})
    {
        put("v.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);Host;RGBColor(0,0,0);\n"
                       "Page0001:0001_list.png;List;RGBColor(0,0,0);\n");
        put("v.ini", "[INFO]\nSupplierID: 0x5E21B7C4\nSupplierVer: V3.20\nPanelType: 10\n"
                     "XSIZE: 320\nYSIZE: 240\nRotate: 1\nFlashSize: 3\n");
        page(0, {kPageLine, menu, kHostButton});
        page(1, {kPageLine, kIcon0, kViceButton, kIcon1, kCurve});
        solid(root + "Picture/0001_list.png", {200, 400}, qRgb(0, 0, 128));
        solid(root + "Icon/0000_dot.png", {4, 4}, qRgb(255, 255, 255));
    }

    BuildResult build()
    {
        const ProjectLoad load = loadProject(root + "v.uiprj");
        MakeBin driver;
        installStandardBuild(driver);
        BuildOptions options;
        options.fixedTime = QDateTime(QDate(2025, 3, 1), QTime(12, 0));
        return driver.run(load.input, options);
    }
};

} // namespace

class TestVicePages : public QObject
{
    Q_OBJECT
private slots:
    void hostShowsItsVicePage()
    {
        Project p;
        const BuildResult r = p.build();
        QVERIFY(r.imageWritten);
        QCOMPARE(r.complaints(), QStringList());

        // The host's lines, the boundary, the Vice page's lines with their group
        // numbers: the button holds icon_1, group 1.
        QCOMPARE(QString::fromUtf8(readAll(p.root + "Plugin/Page0000.cfc")),
                 QString::fromUtf8("\xEF\xBB\xBF") + kPageLine + '\n' + kMenu + '\n' + kHostButton + '\n'
                     + "Mergerboundaryline;\n" + kPageLine + '\n' + kIcon0 + '\n'
                     + QString(kViceButton).replace("0xFFFF,1;", "0x0001,1;") + '\n'
                     + QString(kIcon1).replace("0xFFFF,1;", "0x0001,1;") + '\n' + kCurve + '\n');
        QVERIFY(!QFile::exists(p.root + "Plugin/Page0001.cfc"));

        // Host display stream (67 bytes), the Vice page's widgets with Vice flag 01,
        // turned with page 1's picture (PW 400):
        //  icon_1 with the button's group: 400 - 65 - 4 = 331 (14B), 55; tail 1
        //  icon_0: 400 - 20 - 4 = 376 (178), 10; parameters 0x0100
        //  curve: 400 - 10 - 50 = 340 (154), 100 to 389 (185), 179 (B3); reference 59;
        //  scale 50 x 2560 / 256 = 500, 50; black; channel 1 + 80; 2; 1
        const QByteArray display = hex("03 01 FFFF 10  4100 4B01 3700  0000 0000 0000 0000  0100"
                                       "03 01 0001 10  4000 7801 0A00  0000 0000 0000 0000  FFFF"
                                       "0D 01 FFFF 14  5401 6400 8501 B300  3B00 0000 3200  000000  81 02 01");
        // Host touch stream (120 bytes):
        //  slidemenuPro, no Vice bit: 320 - 20 - 100 = 200 (C8), 10, 100 x 200 to 299 (12B),
        //  209 (D1); page 1; no background; Horizontal at 90 degrees 00; frames 200 x 400
        //  the host's page record and button (320 - 0 - 30 = 290 (122), 0 to 319 (13F), 39)
        //  page 1's page record with 81; its button, C1: 400 - 60 - 30 = 310 (136), 50 to
        //  339 (153), 89 (59); code 22; tail 1
        const QByteArray touch = hex("0F 80 1B  1000  C800 0A00 2B01 D100  01  FFFF  00  00  C800 9001  FFFF FFFF"
                                     "  0000 0000"
                                     "00 80 15  FFFF 0000  FFFF 0000  FFFF 0000  FFFF 0000  00  0000  0000"
                                     "01 80 12  2201 0000 3F01 2700  2100  FFFF FFFF FFFF  FFFF"
                                     "00 81 15  FFFF 0000  FFFF 0000  FFFF 0000  FFFF 0000  00  0000  0000"
                                     "01 C1 12  3601 3200 5301 5900  2200  FFFF FFFF FFFF  0100");
        QCOMPARE(display.size() + touch.size(), 67 + 120);
        // Page block at 0x10180: index 24; page 0 display at 0x10198 (67 = 0x43), touch at
        // 0x101DB (120 = 0x78); page 1 empty at 0x10253.
        const QByteArray image = readAll(r.imagePath);
        QCOMPARE(image.mid(0x10180, 24).toHex(' '),
                 hex("98 01 01 00 43 00  DB 01 01 00 78 00  53 02 01 00 00 00  53 02 01 00 00 00").toHex(' '));
        QCOMPARE(image.mid(0x10198, 67).toHex(' '), display.toHex(' '));
        QCOMPARE(image.mid(0x101DB, 120).toHex(' '), touch.toHex(' '));
        // Vice block at 0x10253: entries of 6; page 0 empty at 0x1025F, page 1 there with 42
        // bytes: the Vice forms, `tail` first, in pass order (the button's group, then the
        // free icon); the button and the curve have none.
        QCOMPARE(image.mid(0x10253, 12 + 42).toHex(' '),
                 hex("5F 02 01 00 00 00  5F 02 01 00 2A 00"
                     "0100 03 01 FFFF 10  4100 4B01 3700  0000 0000 0000 0000"
                     "FFFF 03 01 0001 10  4000 7801 0A00  0000 0000 0000 0000")
                     .toHex(' '));
        using D = BlockDirectory;
        QCOMPARE(QVector<quint32>({r.directory.value(D::VicePageAddress), r.directory.value(D::VicePageCount)}),
                 QVector<quint32>({0x10253, 2}));
        // Variable image at 0x180: icon_0's first value at word 0x40, its block at 0x100
        QCOMPARE(image.mid(0x180 + 0x80, 2), hex("0001"));
        QCOMPARE(image.mid(0x180 + 0x200, 15), hex("10  4000 7801 0A00  0000 0000 0000 0000"));
        // the build's own files go, the merged page stays
        QVERIFY(!QFile::exists(p.root + "Plugin/VicePage0001.bin") && QFile::exists(p.root + "Plugin/Page0000.cfc"));
    }

    // A slide menu that names a page the list doesn't have is told and left
    // out; the build goes on with no Vice page.
    void menuNamingNoPage()
    {
        Project p(QString(kMenu).replace("Page0001", "Page0005"));
        const BuildResult r = p.build();
        QVERIFY(r.imageWritten);
        QCOMPARE(r.complaints(), QStringList{"Page0: carousel, the page Page0005 can't be shown in it"});
        QVERIFY(!QFile::exists(p.root + "Plugin/Page0000.cfc"));
    }
};

QTEST_GUILESS_MAIN(TestVicePages)
#include "tst_vice_pages.moc"
