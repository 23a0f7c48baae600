// The build driver on small projects: the front of the image in each mode,
// block builders plugged in, OTA placement over several builds, the flash
// size boundary, the stamp, the files a build leaves and removes, and the
// command-line tool.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "project/AppPaths.h"
#include "project/SealedFile.h"

using namespace core;

namespace {

using Words = QVector<quint32>;

// The directory words at these offsets.
Words words(const QByteArray &image, std::initializer_list<int> offsets)
{
    Words v;
    for (int at : offsets)
        v << le32(image, at);
    return v;
}

const QDateTime kTime(QDate(2024, 3, 9), QTime(14, 5, 7));

// A two-page project "small" in dir: 800 x 480, volume 20, one language,
// 2 MB of flash, changed by `change`.
BuildInput makeProject(const QString &dir, void (*change)(ProjectSettings &) = nullptr)
{
    ProjectSettings s;
    s.xsize = "800";
    s.ysize = "480";
    s.volume = "20";
    s.languageNum = "1";
    s.flashSize = 0;
    if (change)
        change(s);
    const QString root = dir + QStringLiteral("/");
    writeFile(root + "small.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n"
                                    "Page0001:RGBColor(1,2,3);B;RGBColor(1,2,3);\n");
    writeFile(root + "small.ini", s.toIni());
    writeFile(root + "Plugin/Page0000.cfg", "\xEF\xBB\xBF");
    writeFile(root + "Plugin/Page0001.cfg", "\xEF\xBB\xBF");
    return loadProject(root + "small.uiprj").input;
}

// Runs a build and reads the image it wrote.
QByteArray buildImage(MakeBin &driver, const BuildInput &in, const BuildOptions &o = BuildOptions(),
                      BuildResult *result = nullptr)
{
    const BuildResult r = driver.run(in, o);
    if (result)
        *result = r;
    return readAll(in.projectDir + "Morvane_Flash.bin");
}

// Writes `size` bytes of `fill` as its block, sets its address and moves
// the running address on by `size + lie`.
struct FakeBuilder : BlockBuilder {
    FakeBuilder(Block b, BlockDirectory::Field a, qint64 *s, char f, qint64 l) : b(b), addr(a), size(s), fill(f), lie(l)
    {
    }
    Block block() const override { return b; }
    void build(BuildContext &ctx) override
    {
        ctx.directory->set(addr, quint32(ctx.runningAddress));
        if (*size > 0) {
            writeFile(ctx.blockPath(b), QByteArray(int(*size), fill));
            ctx.runningAddress += *size + lie;
        }
    }
    Block b;
    BlockDirectory::Field addr;
    qint64 *size;
    char fill;
    qint64 lie;
};

void plug(MakeBin &driver, Block b, BlockDirectory::Field addr, qint64 *size, char fill, qint64 lie = 0)
{
    driver.setBuilder(std::make_unique<FakeBuilder>(b, addr, size, fill, lie));
}

// The image's CRC as the panel checks it: bytes 0x174..0x17F as 0xFF.
void verifyStamp(const QByteArray &image)
{
    QByteArray probe = image;
    probe.replace(0x174, 12, ff(12));
    const quint32 crc = slowCrc(probe);
    QCOMPARE(words(image, {0x174, 0x178, 0x17C}), (Words{quint32(image.size()), crc, ~crc}));
}

int runTool(const QStringList &args, QByteArray *out = nullptr, QByteArray *err = nullptr)
{
    QProcess p;
    p.start(QStringLiteral(VANTILE_BUILD_TOOL), args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit)
        return -1;
    if (out)
        *out = p.readAllStandardOutput();
    if (err)
        *err = p.readAllStandardError();
    return p.exitCode();
}

} // namespace

class TestMakeBin : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_appDir;
    QTemporaryDir *m_dir = nullptr; // a fresh project directory for each test

    QString root() const { return m_dir->path() + "/"; }

private slots:
    void initTestCase()
    {
        QVERIFY(m_appDir.isValid());
        AppPaths::setAppDirOverride(m_appDir.path());
    }
    void init() { m_dir = new QTemporaryDir; }
    void cleanup() { delete m_dir; }

    void plainProjectImage()
    {
        const BuildInput in = makeProject(m_dir->path());
        MakeBin driver;
        BuildOptions o;
        o.fixedTime = kTime;
        BuildResult r;
        const QByteArray image = buildImage(driver, in, o, &r);
        // Nothing behind the variable image: 0x180 + 0x10000 bytes.
        QVERIFY(r.imageWritten && image.size() == 0x10180 && r.imageSize == 0x10180);
        // The directory: variables at 0x180, the page block at 0x10180 (no
        // pages counted yet), no Modbus master table (0xFFFFFFFF); absent
        // blocks, the pinyin table and the unused words stay 0.
        QCOMPARE(image.left(128), hex("80010000 00000000 80010100") + QByteArray(0x3C, '\0') + ff(4)
                                      + QByteArray(0x34, '\0'));
        // The settings block (checked in tst_flash_layout) at 0x80, sealed;
        // then the (empty) variable image.
        QCOMPARE(image.mid(0x80, 244), UiMessageBlock::build(in.settings, kTime).left(244));
        QVERIFY(UiMessageBlock::checksumHolds(image.mid(0x80, 256), 0x5E21B7C4u));
        QCOMPARE(image.mid(0x180), QByteArray(0x10000, '\0'));
        verifyStamp(image);
        QCOMPARE(le32(image, 0x178), r.imageCrc);
    }

    void gbkCodeMovesTheVariableImage()
    {
        BuildInput in = makeProject(m_dir->path(), [](ProjectSettings &s) { s.gbkCode = true; });
        MakeBin driver;
        // The built-in table (0x11C50 bytes) goes to 0x180, the variables to 0x11DD0.
        BuildResult r;
        QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QVERIFY(!r.pinyinMissing);
        QCOMPARE(words(image, {0x00, 0x08, 0x40, 0x44}), (Words{0x11DD0, 0x21DD0, 0x180, 0x11C50}));
        QCOMPARE(image.mid(0x180), Flash::pinyinTable() + QByteArray(0x10000, '\0'));
        verifyStamp(image);
        // The same session without the option: the table is gone, its two
        // directory fields stay as they were.
        in.settings.gbkCode = false;
        image = buildImage(driver, in);
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(words(image, {0x00, 0x40, 0x44}), (Words{0x180, 0x180, 0x11C50}));
    }

    void modbusMasterArea()
    {
        const BuildInput in = makeProject(m_dir->path(), [](ProjectSettings &s) { s.modbusMaster = true; });
        MakeBin driver;
        // Without the command step the area at 0xC180 is empty and the table
        // size 0; the gap from 0xE180 up to the page block is 0xFF.
        QByteArray image = buildImage(driver, in);
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(words(image, {0x48, 0x4C}), (Words{0xC180, 0}));
        QCOMPARE(image.mid(0x180), QByteArray(0xE000, '\0') + ff(0x2000));
        QCOMPARE(quint8(image[0x80 + 10]) & 0x01, 0x01);
        // A command step fills the area and says how much it used.
        const QByteArray rec = hex("A5 01 03 00 10 00 20 00 02 00 00 01 02 00 64 00");
        driver.setStep(BuildStep::CommandTable, [rec](BuildContext &ctx) {
            ctx.commandArea.replace(0, 16, rec);
            ctx.directory->set(BlockDirectory::CommandTableSize, 16);
        });
        image = buildImage(driver, in);
        QCOMPARE(le32(image, 0x4C), 16u);
        QCOMPARE(image.mid(0xC180, 0x2000), rec + QByteArray(0x1FF0, '\0'));
        verifyStamp(image);
    }

    void buildersChainTheirBlocks()
    {
        const BuildInput in = makeProject(m_dir->path());
        qint64 pageSize = 100, fontSize = 37, langSize = 5, iconSize = 0;
        MakeBin driver;
        using D = BlockDirectory;
        plug(driver, Block::Page, D::PageBlockAddress, &pageSize, 'P');
        plug(driver, Block::Font, D::FontAddress, &fontSize, 'F');
        plug(driver, Block::Language, D::LanguageAddress, &langSize, 'L');
        plug(driver, Block::Icon, D::IconAddress, &iconSize, 'I');
        QVERIFY(driver.hasBuilder(Block::Font) && !driver.hasBuilder(Block::Wav));
        // A stale block file of a builder that writes nothing is not used.
        writeFile(m_dir->filePath("Icon/icon_all.bin"), "stale");
        BuildOptions o;
        o.fixedTime = kTime;
        BuildResult r;
        const QByteArray image = buildImage(driver, in, o, &r);
        QVERIFY(r.imageWritten && r.complaints().isEmpty());
        // page 0x10180, +100 = 0x101E4 font, +37 = 0x10209 language, +5 =
        // 0x1020E icon; Wav has no builder.
        QCOMPARE(words(image, {0x08, 0x10, 0x50, 0x30, 0x18}), (Words{0x10180, 0x101E4, 0x10209, 0x1020E, 0}));
        QCOMPARE(image.mid(0x10180), QByteArray(100, 'P') + QByteArray(37, 'F') + QByteArray(5, 'L'));
        verifyStamp(image);
        // Copied in pieces of 7 bytes (the stamp at 0x174 falls across two): the same image.
        o.chunkSize = 7;
        QCOMPARE(buildImage(driver, in, o), image);
        // Intermediate block files are gone; the language file stays.
        QVERIFY(!QFile::exists(root() + "FontBin/Font_all.bin") && !QFile::exists(root() + "Icon/icon_all.bin"));
        QVERIFY(QFile::exists(root() + "MultiLanguage/MultiLanguage.bin"));
        // Without OTA the start texts follow the blocks; sizes only for blocks with a file.
        const MaterialAddress &font = r.ota[Material::Font], &wav = r.ota[Material::Wav];
        QCOMPARE(QStringList({font.start, font.currentSize, font.end, wav.start, wav.currentSize}),
                 QStringList({QString::number(0x101E4), "37", "", QString::number(0x1020E), ""}));
    }

    void complaintsAndStrictVerdict()
    {
        const BuildInput in = makeProject(m_dir->path());
        MakeBin driver;
        // Page headings alone are no complaint; a builder whose file and
        // address step disagree is.
        qint64 size = 10;
        plug(driver, Block::Wav, BlockDirectory::WavAddress, &size, 'W', 2);
        driver.setStep(BuildStep::PreBuildChecks, [](BuildContext &ctx) {
            ctx.errorText += "Page0:\n";
            ctx.complain("label3 write address is over the variable space");
        });
        const BuildResult r = driver.run(in);
        const QStringList c = r.complaints();
        QCOMPARE(c.size(), 3); // the writer's line, the Wav block, the image size
        QCOMPARE(c[0], QString("label3 write address is over the variable space"));
        QVERIFY(c[1].contains("Wav"));
        QString reason;
        QCOMPARE(BuildExit::forResult(r, false), BuildExit::Ok);
        QVERIFY(BuildExit::forResult(r, true, &reason) == BuildExit::Strict && reason.contains("label3"));
        QVERIFY(readAll(m_dir->filePath("Make_error_info.txt")).startsWith("Page0:\nlabel3 write address"));
        QCOMPARE(BuildExit::forResult(BuildResult(), false), BuildExit::NoImage);
    }

    void otaKeepsAddressesAndMovesGrownBlocks()
    {
        const BuildInput in = makeProject(m_dir->path()); // 128 KB alignment
        const QString addrPath = m_dir->filePath("Addr_Info.txt");
        OtaAddresses addr;
        addr.enabled = true;
        addr[Material::Font].reserveKb = "64";
        QVERIFY(addr.save(addrPath));
        qint64 fontSize = 1000, wavSize = 10;
        MakeBin driver;
        plug(driver, Block::Font, BlockDirectory::FontAddress, &fontSize, 'F');
        plug(driver, Block::Wav, BlockDirectory::WavAddress, &wavSize, 'W');

        // Font at round(0x10180) = 0x20000, end round(0x20000 + 1000 + 64 KB) = 0x40000.
        // Language: no reserve, ends at 0x40000. Wav at 0x40000, end round(0x4000A) = 0x60000.
        BuildResult r;
        QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x40000}));
        QCOMPARE(image.mid(0x10180), ff(0x20000 - 0x10180) + QByteArray(1000, 'F') + ff(0x40000 - 0x203E8)
                                         + QByteArray(10, 'W') + ff(0x60000 - 0x4000A));
        verifyStamp(image);
        OtaAddresses saved = OtaAddresses::load(addrPath);
        QVERIFY(saved == r.ota && saved.enabled);
        const MaterialAddress &font = saved[Material::Font], &lang = saved[Material::Language];
        QCOMPARE(QStringList({font.start, font.end, font.currentSize, lang.start, lang.end, saved[Material::Wav].end}),
                 QStringList({"131072", "262144", "1000", "262144", "262144", "393216"}));

        // The font shrank: every address stays, its pad grows.
        fontSize = 500;
        image = buildImage(driver, in, BuildOptions(), &r);
        QCOMPARE(image.size(), 0x60000);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x40000}));
        QCOMPARE(image.mid(0x20000, 0x2000A), QByteArray(500, 'F') + ff(0x40000 - 0x201F4) + QByteArray(10, 'W'));
        QVERIFY(r.log.filter("beyond its previous end").isEmpty());

        // The font grew beyond its end: round(0x20000 + 200000 + 64 KB) =
        // 0x80000, and the later blocks move with it; the log says so, it is
        // no complaint.
        fontSize = 200000;
        image = buildImage(driver, in, BuildOptions(), &r);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x80000}));
        QCOMPARE(image.size(), 0xA0000);
        saved = OtaAddresses::load(addrPath);
        QCOMPARE(saved[Material::Font].end + "," + saved[Material::Wav].start, QString("524288,524288"));
        // 0x20000 + 200000 = 331072 lies beyond the previous end 262144
        QCOMPARE(r.log.filter("beyond its previous end"),
                 QStringList("The Font block ends at 331072, beyond its previous end 262144: its end and the "
                             "blocks behind it move"));
        QVERIFY(r.complaints().isEmpty());
    }

    void flashSizeBoundary()
    {
        const BuildInput in = makeProject(m_dir->path()); // 2 MB = 2097152
        qint64 size = 2097152 - 0x10180;
        MakeBin driver;
        plug(driver, Block::Picture, BlockDirectory::PictureAddress, &size, 'X');
        QStringList notices;
        driver.setNotifier([&notices](const QString &t, const QString &m) { notices << t + "|" + m; });
        BuildResult r = driver.run(in);
        QVERIFY(r.imageWritten && !r.overFlash && r.imageSize == 2097152);
        QVERIFY(!r.log.join('\n').contains("Flash max size"));
        QCOMPARE(notices, QStringList{"Note|Morvane_Flash.bin is ready!"});
        // One byte more: still written, with a warning, and a failure under --strict.
        size += 1;
        notices.clear();
        const QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QVERIFY(r.imageWritten && r.overFlash && image.size() == 2097153);
        QVERIFY(r.log.contains("Flash max size2097152< bin size2097153"));
        QCOMPARE(notices,
                 QStringList({"Warning|Morvane_Flash.bin is over spi flash!", "Note|Morvane_Flash.bin is ready!"}));
        verifyStamp(image);
        QVERIFY(BuildExit::forResult(r, false) == BuildExit::Ok && BuildExit::forResult(r, true) == BuildExit::Strict);
    }

    void filesWrittenAndRemoved()
    {
        const BuildInput in = makeProject(m_dir->path());
        const QString root = this->root();
        QDir(root).rmdir("Video"); // made again by the build
        const char *const stale[] = {"Morvane_Flash.uibin", "Morvane_Flash.tmp", "SerialPortCommands.csv",
                                     "Plugin/Page0000.bin", "Plugin/x.tmp", "Gif/0001_a.bin", "Picture/0000_a_img.bin",
                                     "Icon/0003_b.tmp", "FontBin/Font_all.bin", "WavBin/Wav_all.bin"};
        const char *const media[] = {"Gif/0001_a.gif", "FontBin/00_font.bin", "WavBin/0001_Wav.bin"};
        for (const char *f : stale)
            writeFile(root + f, "old");
        for (const char *f : media)
            writeFile(root + f, "media");
        MakeBin driver;
        QStringList logged;
        driver.setLogSink([&logged](const QString &l) { logged << l; });
        BuildOptions o;
        o.fixedTime = kTime;
        const BuildResult r = driver.run(in, o);
        QVERIFY(r.imageWritten && QDir(root + "Video").exists());
        for (const char *gone : stale)
            QVERIFY2(!QFile::exists(root + gone), gone);
        for (const char *kept : media)
            QVERIFY2(readAll(root + kept) == "media", kept);
        // The log as saved ends with "Make Morvane_Flash.bin"; the last line comes after.
        QCOMPARE(readAll(root + "Make_info.txt"),
                 QByteArray("2024/03/09 14:05:07\nStart to make bin...\nGet UI message\n\nMake Morvane_Flash.bin"));
        QCOMPARE(logged.last(), QString("Generate \"Morvane_Flash.bin\" file on 2024/03/09 14:05:07"));
        QCOMPARE(logged, r.log);
        QCOMPARE(readAll(root + "Make_error_info.txt"), QByteArray());
        QCOMPARE(AppPaths::readOneLine(AppPaths::currentBinPathFile()), QDir(root).absoluteFilePath("Morvane_Flash.bin"));

        // Clean project removes the outputs and keeps the design and media.
        for (const char *f : {"TouchWidget.csv", "Plugin/Page0001.cfc", "MultiLanguage/MultiLanguage.bin"})
            writeFile(root + f, "x");
        MakeBin::cleanProject(root);
        for (const char *gone : {"Morvane_Flash.bin", "Make_info.txt", "TouchWidget.csv", "Plugin/Page0001.cfc",
                                 "MultiLanguage/MultiLanguage.bin"})
            QVERIFY2(!QFile::exists(root + gone), gone);
        for (const char *kept : {"small.uiprj", "small.ini", "Plugin/Page0000.cfg", "Gif/0001_a.gif", "Addr_Info.txt"})
            QVERIFY2(QFile::exists(root + kept), kept);
    }

    void commandLineTool()
    {
        // Each refusal to open is one line with the reason on standard error,
        // exit code 1, and no image.
        const QByteArray list = "Page0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n";
        const QByteArray ini = ProjectSettings().toIni();
        ProjectSettings newer;
        newer.supplierVer = "V3.21";
        const struct { const char *what; QByteArray uiprj, ini; QStringList says; } cases[] = {
            {"no page list", {}, ini, {"p.uiprj"}},
            {"no settings", list, {}, {"p.ini"}},
            {"settings too new", list, newer.toIni(), {"(V3.21)", "V3.10"}},
            {"sealed with another key", SealedFile::seal({QString(list).trimmed()}, 0x12345678u), ini, {"illegal"}},
            {"empty page list", "\xEF\xBB\xBF\n", ini, {"null uiprj"}},
        };
        const QString uiprj = root() + "p.uiprj";
        for (const auto &k : cases) {
            QFile::remove(uiprj);
            QFile::remove(root() + "p.ini");
            if (!k.uiprj.isEmpty())
                writeFile(uiprj, k.uiprj);
            if (!k.ini.isEmpty())
                writeFile(root() + "p.ini", k.ini);
            QByteArray err;
            QCOMPARE(runTool({uiprj}, nullptr, &err), BuildExit::CannotOpen);
            QCOMPARE(err.count('\n'), 1);
            for (const QString &text : k.says)
                QVERIFY2(err.contains(text.toUtf8()), qPrintable(QString(k.what) + ": " + err));
        }
        QVERIFY(!QFile::exists(root() + "Morvane_Flash.bin"));

        // The demo: wrong arguments are usage errors; built twice at a given
        // time, strictly, it gives the same files.
        const QString demo = root() + "demo/", src = QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo/");
        for (QDirIterator it(src, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
            const QString f = it.next();
            writeFile(demo + f.mid(src.size()), readAll(f));
        }
        QCOMPARE(runTool({demo + "demo.uiprj", "--time", "yesterday"}), BuildExit::Usage);
        QCOMPARE(runTool({}), BuildExit::Usage);
        QVERIFY(!QFile::exists(demo + "Morvane_Flash.bin"));
        QList<QByteArray> files;
        for (int round = 0; round < 2; ++round) {
            QByteArray out, err;
            QCOMPARE(runTool({demo + "demo.uiprj", "--time", "2024-03-09 14:05:07", "--strict"}, &out, &err), 0);
            QVERIFY(out.startsWith("2024/03/09 14:05:07\n") && out.contains("Make Morvane_Flash.bin") && err.isEmpty());
            for (const char *f : {"Morvane_Flash.bin", "Make_info.txt", "Make_error_info.txt", "Addr_Info.txt"})
                files << readAll(demo + f);
        }
        QCOMPARE(files.mid(4), files.mid(0, 4));
        // The demo's pictures follow the page block; its volume is 10.
        QVERIFY(files[0].size() > 0x10180 && !files[1].isEmpty());
        QCOMPARE(files[0].mid(0x80, 6), hex("01 03 09 13C600"));
        QCOMPARE(quint8(files[0][0x80 + 63]), quint8(10));
        verifyStamp(files[0]);
    }
};

QTEST_GUILESS_MAIN(TestMakeBin)
#include "tst_make_bin.moc"
