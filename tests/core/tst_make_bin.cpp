// The build driver on small projects: the directory and front of the image
// in each mode, block builders plugged in, OTA placement over several
// builds, the flash size boundary, the stamp and CRC, the files a build
// leaves and removes, opening a project, and the command-line tool.

#include "build/MakeBin.h"
#include "project/AppPaths.h"
#include "project/ProjectSettings.h"
#include "project/SealedFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace vantile;

namespace {

quint32 slowCrc(const QByteArray &data)
{
    quint32 crc = 0;
    for (char ch : data) {
        crc ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ ((crc & 1u) ? 0xEDB88320u : 0u);
    }
    return crc;
}

quint32 le32(const QByteArray &b, int at)
{
    return quint32(quint8(b[at])) | quint32(quint8(b[at + 1])) << 8 | quint32(quint8(b[at + 2])) << 16
           | quint32(quint8(b[at + 3])) << 24;
}

// The directory words at these offsets.
QVector<quint32> words(const QByteArray &image, std::initializer_list<int> offsets)
{
    QVector<quint32> v;
    for (int at : offsets)
        v << le32(image, at);
    return v;
}

using Words = QVector<quint32>;

QByteArray hex(const char *spaced)
{
    return QByteArray::fromHex(QByteArray(spaced).replace(' ', ""));
}

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

QByteArray ff(int n)
{
    return QByteArray(n, char(0xFF));
}

const QDateTime kTime(QDate(2024, 3, 9), QTime(14, 5, 7));

// 800 x 480, volume 20, one language, 2 MB of flash.
ProjectSettings smallSettings()
{
    ProjectSettings s;
    s.xsize = QStringLiteral("800");
    s.ysize = QStringLiteral("480");
    s.volume = QStringLiteral("20");
    s.languageNum = QStringLiteral("1");
    s.flashSize = 0;
    return s;
}

// A two-page project "small" in dir, with these settings.
BuildInput makeProject(const QString &dir, const ProjectSettings &s = smallSettings())
{
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

// Writes `size` bytes of `fill` as its block and sets its address and count.
class FakeBuilder : public BlockBuilder
{
public:
    FakeBuilder(Block b, BlockDirectory::Field addr, BlockDirectory::Field count, qint64 *size, char fill,
                qint64 lie = 0)
        : m_block(b), m_addr(addr), m_count(count), m_size(size), m_fill(fill), m_lie(lie)
    {
    }
    Block block() const override { return m_block; }
    void build(BuildContext &ctx) override
    {
        ctx.directory->set(m_addr, quint32(ctx.runningAddress));
        ctx.directory->set(m_count, 3);
        seenAddress = ctx.runningAddress;
        if (*m_size == 0)
            return;
        writeFile(ctx.blockPath(m_block), QByteArray(int(*m_size), m_fill));
        ctx.runningAddress += *m_size + m_lie;
    }
    qint64 seenAddress = -1;

private:
    Block m_block;
    BlockDirectory::Field m_addr, m_count;
    qint64 *m_size;
    char m_fill;
    qint64 m_lie;
};

FakeBuilder *plug(MakeBin &driver, Block b, BlockDirectory::Field addr, BlockDirectory::Field count, qint64 *size,
                  char fill, qint64 lie = 0)
{
    auto *builder = new FakeBuilder(b, addr, count, size, fill, lie);
    driver.setBuilder(std::unique_ptr<BlockBuilder>(builder));
    return builder;
}

// The image's CRC as the panel checks it: bytes 0x174..0x17F as 0xFF.
void verifyStamp(const QByteArray &image)
{
    QByteArray probe = image;
    probe.replace(0x174, 12, ff(12));
    const quint32 crc = slowCrc(probe);
    QCOMPARE(le32(image, 0x174), quint32(image.size()));
    QCOMPARE(le32(image, 0x178), crc);
    QCOMPARE(le32(image, 0x17C), ~crc);
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

    // --- the front of the image ------------------------------------------
    void plainProjectImage()
    {
        const BuildInput in = makeProject(m_dir->path());
        QCOMPARE(in.pageLines.size(), 2);
        MakeBin driver;
        BuildOptions o;
        o.fixedTime = kTime;
        BuildResult r;
        const QByteArray image = buildImage(driver, in, o, &r);
        QVERIFY(r.imageWritten);
        // Nothing behind the variable image: 0x180 + 0x10000 bytes.
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(r.imageSize, qint64(0x10180));
        // The directory: variables at 0x180, the page block at 0x10180 (no
        // pages counted yet), no Modbus master table (0xFFFFFFFF); absent
        // blocks, the pinyin table and the unused words stay 0.
        QByteArray directory(128, '\0');
        directory.replace(0x00, 4, hex("80010000"));
        directory.replace(0x08, 4, hex("80010100"));
        directory.replace(0x48, 4, ff(4));
        QCOMPARE(image.left(128), directory);
        // The settings block of these settings at 0x80 (its fields are
        // checked in tst_flash_layout), sealed.
        QCOMPARE(image.mid(0x80, 244), UiMessageBlock::build(in.settings, kTime).left(244));
        QVERIFY(UiMessageBlock::checksumHolds(image.mid(0x80, 256), 0x5E21B7C4u));
        // 0x180 is the first byte of the (empty) variable image.
        QCOMPARE(image.mid(0x180), QByteArray(0x10000, '\0'));
        verifyStamp(image);
        QCOMPARE(le32(image, 0x178), r.imageCrc);
    }

    void gbkCodeMovesTheVariableImage()
    {
        ProjectSettings s = smallSettings();
        s.gbkCode = true;
        BuildInput in = makeProject(m_dir->path(), s);
        MakeBin driver;
        // The built-in table goes to 0x180, the variables to 0x11DD0.
        BuildResult r;
        QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QVERIFY(!r.pinyinMissing);
        QCOMPARE(image.size(), 0x21DD0);
        QCOMPARE(image.mid(0x180, 0x11C50), Flash::pinyinTable());
        // A table given in the options wins over the built-in one.
        QByteArray table(0x11C50, '\0');
        for (int i = 0; i < table.size(); ++i)
            table[i] = char((i * 7) & 0xFF);
        BuildOptions o;
        o.pinyinTable = table;
        image = buildImage(driver, in, o);
        QCOMPARE(image.size(), 0x11DD0 + 0x10000);
        QCOMPARE(words(image, {0x00, 0x08, 0x40, 0x44}), (Words{0x11DD0, 0x21DD0, 0x180, 0x11C50}));
        QCOMPARE(image.mid(0x180, 0x11C50), table);
        QCOMPARE(image.mid(0x11DD0), QByteArray(0x10000, '\0'));
        verifyStamp(image);

        // The same session without the option: the table is gone, its two
        // directory fields stay as they were.
        in.settings.gbkCode = false;
        image = buildImage(driver, in, o);
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(words(image, {0x00, 0x40, 0x44}), (Words{0x180, 0x180, 0x11C50}));
        QCOMPARE(image[0x180], '\0');
        // A new session starts with them at 0.
        MakeBin fresh;
        image = buildImage(fresh, in, o);
        QCOMPARE(words(image, {0x40, 0x44}), (Words{0, 0}));
    }

    void modbusMasterArea()
    {
        ProjectSettings s = smallSettings();
        s.modbusMaster = true;
        const BuildInput in = makeProject(m_dir->path(), s);
        MakeBin driver;
        // Without the command step the area is empty and the table size 0;
        // the gap from 0xE180 up to the page block is 0xFF.
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

        // With the pinyin table too: the variables at 0x11DD0, the command
        // area at 0x1DDD0, the page block still at 0x21DD0.
        BuildInput gbk = in;
        gbk.settings.gbkCode = true;
        image = buildImage(driver, gbk);
        QCOMPARE(image.size(), 0x21DD0);
        QCOMPARE(le32(image, 0x48), 0x1DDD0u);
        QCOMPARE(image.mid(0x1DDD0, 0x4000), rec + QByteArray(0x1FF0, '\0') + ff(0x2000));
    }

    // --- builders plugged in ------------------------------------------------
    void buildersChainTheirBlocks()
    {
        const BuildInput in = makeProject(m_dir->path());
        qint64 pageSize = 100, fontSize = 37, langSize = 5, iconSize = 0;
        MakeBin driver;
        using D = BlockDirectory;
        auto *page = plug(driver, Block::Page, D::PageBlockAddress, D::PageCount, &pageSize, 'P');
        auto *font = plug(driver, Block::Font, D::FontAddress, D::FontCount, &fontSize, 'F');
        auto *lang = plug(driver, Block::Language, D::LanguageAddress, D::LanguageCount, &langSize, 'L');
        auto *icon = plug(driver, Block::Icon, D::IconAddress, D::IconCount, &iconSize, 'I');
        QVERIFY(driver.hasBuilder(Block::Font));
        QVERIFY(!driver.hasBuilder(Block::Wav));
        // A stale block file of a builder that writes nothing is not used.
        writeFile(m_dir->filePath("Icon/icon_all.bin"), "stale");
        BuildResult r;
        const QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QVERIFY(r.imageWritten);
        QVERIFY(r.complaints().isEmpty());
        // 0x10180 page, +100 = 0x101E4 font, +37 = 0x10209 language, +5 = 0x1020E.
        QCOMPARE(page->seenAddress, qint64(0x10180));
        QCOMPARE(font->seenAddress, qint64(0x101E4));
        QCOMPARE(lang->seenAddress, qint64(0x10209));
        QCOMPARE(icon->seenAddress, qint64(0x1020E));
        // page, font and its count, language, icon; Wav has no builder
        QCOMPARE(words(image, {0x08, 0x10, 0x14, 0x50, 0x30, 0x18}),
                 (Words{0x10180, 0x101E4, 3, 0x10209, 0x1020E, 0}));
        QCOMPARE(image.mid(0x10180), QByteArray(100, 'P') + QByteArray(37, 'F') + QByteArray(5, 'L'));
        verifyStamp(image);
        // Intermediate block files are gone; the language file stays.
        QVERIFY(!QFile::exists(m_dir->filePath("Plugin/Page_para_all.bin")));
        QVERIFY(!QFile::exists(m_dir->filePath("FontBin/Font_all.bin")));
        QVERIFY(!QFile::exists(m_dir->filePath("Icon/icon_all.bin")));
        QVERIFY(QFile::exists(m_dir->filePath("MultiLanguage/MultiLanguage.bin")));
        // Without OTA the start texts follow the blocks; sizes only for blocks with a file.
        QCOMPARE(r.ota[Material::Font].start, QString::number(0x101E4));
        QCOMPARE(r.ota[Material::Font].currentSize, QString("37"));
        QCOMPARE(r.ota[Material::Language].start, QString::number(0x10209));
        QCOMPARE(r.ota[Material::Wav].start, QString::number(0x1020E));
        QVERIFY(r.ota[Material::Wav].currentSize.isEmpty());
        QVERIFY(r.ota[Material::Icon].currentSize.isEmpty());
        QVERIFY(r.ota[Material::Font].end.isEmpty());
    }

    void complaintsAndStrictVerdict()
    {
        const BuildInput in = makeProject(m_dir->path());
        MakeBin driver;
        // Page headings alone are no complaint.
        driver.setStep(BuildStep::PreBuildChecks, [](BuildContext &ctx) { ctx.errorText += "Page0:\nPage1:\n"; });
        BuildResult r = driver.run(in);
        QCOMPARE(readAll(m_dir->filePath("Make_error_info.txt")), QByteArray("Page0:\nPage1:\n"));
        QVERIFY(r.complaints().isEmpty());
        QCOMPARE(BuildExit::forResult(r, true), BuildExit::Ok);

        // A builder whose file and address step disagree is reported.
        qint64 size = 10;
        plug(driver, Block::Wav, BlockDirectory::WavAddress, BlockDirectory::WavCount, &size, 'W', 2);
        driver.setStep(BuildStep::PreBuildChecks, [](BuildContext &ctx) {
            ctx.errorText += "Page0:\n";
            ctx.complain("label3 write address is over the variable space");
        });
        r = driver.run(in);
        QVERIFY(r.imageWritten);
        const QStringList c = r.complaints();
        QCOMPARE(c.size(), 3); // the writer's line, the Wav block, the image size
        QCOMPARE(c[0], QString("label3 write address is over the variable space"));
        QVERIFY(c[1].contains("Wav"));
        QString reason;
        QCOMPARE(BuildExit::forResult(r, false, &reason), BuildExit::Ok);
        QCOMPARE(BuildExit::forResult(r, true, &reason), BuildExit::Strict);
        QVERIFY(reason.contains("label3"));
        QVERIFY(readAll(m_dir->filePath("Make_error_info.txt")).startsWith("Page0:\nlabel3 write address"));
        QCOMPARE(BuildExit::forResult(BuildResult(), false), BuildExit::NoImage);
    }

    // --- OTA -------------------------------------------------------------------
    void otaKeepsAddressesAndMovesGrownBlocks()
    {
        const BuildInput in = makeProject(m_dir->path()); // 128 KB alignment
        const QString addrPath = m_dir->filePath("Addr_Info.txt");
        OtaAddresses addr;
        addr.enabled = true;
        addr[Material::Font].reserveKb = "64";
        addr[Material::Wav].reserveKb = "0";
        QVERIFY(addr.save(addrPath));
        qint64 fontSize = 1000, wavSize = 10;
        auto plugBoth = [&](MakeBin &driver) {
            plug(driver, Block::Font, BlockDirectory::FontAddress, BlockDirectory::FontCount, &fontSize, 'F');
            plug(driver, Block::Wav, BlockDirectory::WavAddress, BlockDirectory::WavCount, &wavSize, 'W');
        };
        MakeBin driver;
        plugBoth(driver);

        // Font at round(0x10180) = 0x20000, end round(0x20000 + 1000 + 64 KB) = 0x40000.
        // Language: no reserve, ends at 0x40000. Wav at 0x40000, end round(0x4000A) = 0x60000.
        BuildResult r;
        QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x40000}));
        QCOMPARE(image.mid(0x10180), ff(0x20000 - 0x10180) + QByteArray(1000, 'F') + ff(0x40000 - 0x203E8)
                                         + QByteArray(10, 'W') + ff(0x60000 - 0x4000A));
        verifyStamp(image);
        OtaAddresses saved = OtaAddresses::load(addrPath);
        QVERIFY(saved == r.ota);
        QVERIFY(saved.enabled);
        const MaterialAddress &font = saved[Material::Font], &lang = saved[Material::Language];
        QCOMPARE(QStringList({font.start, font.end, font.currentSize}), QStringList({"131072", "262144", "1000"}));
        QCOMPARE(QStringList({lang.start, lang.end}), QStringList({"262144", "262144"}));
        const MaterialAddress &wav = saved[Material::Wav];
        QCOMPARE(QStringList({wav.start, wav.end}), QStringList({"262144", "393216"}));
        QCOMPARE(saved[Material::StaticText].end, QString("393216"));

        // The font shrank: every address stays, its pad grows.
        fontSize = 500;
        image = buildImage(driver, in);
        QCOMPARE(image.size(), 0x60000);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x40000}));
        QCOMPARE(image.mid(0x20000, 0x2000A), QByteArray(500, 'F') + ff(0x40000 - 0x201F4) + QByteArray(10, 'W'));

        // The font grew beyond its end: round(0x20000 + 200000 + 64 KB) = 0x80000,
        // and the later blocks move with it.
        fontSize = 200000;
        image = buildImage(driver, in);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x80000}));
        QCOMPARE(image.size(), 0xA0000);
        saved = OtaAddresses::load(addrPath);
        QCOMPARE(saved[Material::Font].end, QString::number(0x80000));
        QCOMPARE(saved[Material::Wav].start, QString::number(0x80000));

        // A new session takes the saved addresses as the previous build's:
        // with the font small again nothing moves back.
        fontSize = 500;
        MakeBin next;
        plugBoth(next);
        image = buildImage(next, in);
        QCOMPARE(le32(image, 0x18), 0x80000u);
        QCOMPARE(image.size(), 0xA0000);

        // A changed reserve (against this session's last build) moves the
        // block's end: 0x201F4 + 16 KB -> 0x40000, and Wav follows since the
        // block before it moved: 0x40000, end round(0x4000A) = 0x60000.
        addr = OtaAddresses::load(addrPath);
        addr[Material::Font].reserveKb = "16";
        QVERIFY(addr.save(addrPath));
        image = buildImage(next, in, BuildOptions(), &r);
        QCOMPARE(words(image, {0x10, 0x18}), (Words{0x20000, 0x40000}));
        QCOMPARE(image.size(), 0x60000);
        QCOMPARE(r.ota[Material::Font].end, QString::number(0x40000));
        QCOMPARE(r.ota[Material::Font].reserveKb, QString("16"));
        verifyStamp(image);
    }

    // --- flash size and chunks ------------------------------------------------
    void flashSizeBoundary()
    {
        const BuildInput in = makeProject(m_dir->path()); // 2 MB = 2097152
        qint64 size = 2097152 - 0x10180;
        MakeBin driver;
        plug(driver, Block::Picture, BlockDirectory::PictureAddress, BlockDirectory::PictureCount, &size, 'X');
        QStringList notices;
        driver.setNotifier([&notices](const QString &t, const QString &m) { notices << t + "|" + m; });
        BuildResult r = driver.run(in);
        QVERIFY(r.imageWritten);
        QCOMPARE(r.imageSize, qint64(2097152));
        QVERIFY(!r.overFlash);
        QVERIFY(!r.log.join('\n').contains("Flash max size"));
        QCOMPARE(notices, QStringList{"Note|Morvane_Flash.bin is ready!"});

        size += 1;
        notices.clear();
        const QByteArray image = buildImage(driver, in, BuildOptions(), &r);
        QVERIFY(r.imageWritten);
        QVERIFY(r.overFlash);
        QVERIFY(r.log.contains("Flash max size2097152< bin size2097153"));
        QCOMPARE(notices,
                 QStringList({"Warning|Morvane_Flash.bin is over spi flash!", "Note|Morvane_Flash.bin is ready!"}));
        QCOMPARE(image.size(), 2097153);
        verifyStamp(image);
        QCOMPARE(BuildExit::forResult(r, false), BuildExit::Ok);
        QCOMPARE(BuildExit::forResult(r, true), BuildExit::Strict);
    }

    void smallChunksGiveTheSameImage()
    {
        const BuildInput in = makeProject(m_dir->path());
        qint64 size = 5000;
        MakeBin driver;
        plug(driver, Block::Gif, BlockDirectory::GifAddress, BlockDirectory::GifCount, &size, 'G');
        BuildOptions o;
        o.fixedTime = kTime;
        const QByteArray whole = buildImage(driver, in, o);
        verifyStamp(whole);
        o.chunkSize = 7; // the stamp at 0x174 falls across two pieces
        QCOMPARE(buildImage(driver, in, o), whole);
    }

    // --- time ------------------------------------------------------------------
    void buildTimeSources()
    {
        ProjectSettings s = smallSettings();
        s.compilationTimeFixed = true;
        s.compileDateTime = QDateTime(QDate(2022, 12, 31), QTime(23, 59, 59));
        const BuildInput in = makeProject(m_dir->path(), s);
        QVERIFY(in.settings.compilationTimeFixed);
        MakeBin driver;
        // The project's fixed timestamp: 2022 -> 0, 12, 31, 86399 = 0x01517F.
        BuildResult r;
        QCOMPARE(buildImage(driver, in, BuildOptions(), &r).mid(0x80, 6), hex("00 0C 1F 7F5101"));
        QCOMPARE(r.buildTime, s.compileDateTime);
        // An explicit time wins: 2024-03-09 14:05:07 -> 1, 3, 9, 50707 = 0xC613.
        BuildOptions o;
        o.fixedTime = kTime;
        QCOMPARE(buildImage(driver, in, o).mid(0x80, 6), hex("01 03 09 13C600"));
        // Without either, the current time.
        BuildInput live = in;
        live.settings.compilationTimeFixed = false;
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
        r = driver.run(live);
        QVERIFY(r.buildTime >= before && r.buildTime <= QDateTime::currentDateTime().addSecs(1));
    }

    // --- files around the image -------------------------------------------
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
        QVERIFY(r.imageWritten);
        for (const char *d : {"Picture", "FontBin", "Gif", "Icon", "Music", "Plugin", "Video", "WavBin", "MultiLanguage"})
            QVERIFY2(QDir(root + d).exists(), d);
        for (const char *gone : stale)
            QVERIFY2(!QFile::exists(root + gone), gone);
        for (const char *kept : media)
            QVERIFY2(readAll(root + kept) == "media", kept);
        for (const char *kept : {"Plugin/Page0000.cfg", "small.ini", "small.uiprj", "Addr_Info.txt"})
            QVERIFY2(QFile::exists(root + kept), kept);
        // The log as saved ends with "Make Morvane_Flash.bin"; the last line comes after.
        QCOMPARE(readAll(root + "Make_info.txt"),
                 QByteArray("2024/03/09 14:05:07\nStart to make bin...\nGet UI message\n\nMake Morvane_Flash.bin"));
        QCOMPARE(logged.last(), QString("Generate \"Morvane_Flash.bin\" file on 2024/03/09 14:05:07"));
        QCOMPARE(logged, r.log);
        QCOMPARE(readAll(root + "Make_error_info.txt"), QByteArray());
        QCOMPARE(AppPaths::readOneLine(AppPaths::currentBinPathFile()), QDir(root).absoluteFilePath("Morvane_Flash.bin"));

        // Clean project removes the outputs and keeps the design and media.
        writeFile(root + "TouchWidget.csv", "x");
        writeFile(root + "Plugin/Page0001.cfc", "x");
        writeFile(root + "MultiLanguage/MultiLanguage.bin", "x");
        writeFile(root + "Picture/0000_a.png", "png");
        logged.clear();
        MakeBin::cleanProject(root, [&logged](const QString &l) { logged << l; });
        QCOMPARE(logged, QStringList{"Clean project - Done"});
        for (const char *gone : {"Morvane_Flash.bin", "Make_info.txt", "Make_error_info.txt", "TouchWidget.csv",
                                 "Plugin/Page0001.cfc", "MultiLanguage/MultiLanguage.bin"})
            QVERIFY2(!QFile::exists(root + gone), gone);
        for (const char *kept : {"small.uiprj", "small.ini", "Plugin/Page0000.cfg", "Picture/0000_a.png", "Addr_Info.txt"})
            QVERIFY2(QFile::exists(root + kept), kept);
    }

    // --- the command line ------------------------------------------------------
    void toolBuildsTheDemoTwiceIdentically()
    {
        const QString root = this->root() + "demo/";
        const QString src = QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo/");
        QDirIterator it(src, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString f = it.next();
            QVERIFY(writeFile(root + f.mid(src.size()), readAll(f)));
        }
        const QStringList outputs = {"Morvane_Flash.bin", "Make_info.txt", "Make_error_info.txt", "Addr_Info.txt"};
        QList<QByteArray> first;
        for (int round = 0; round < 2; ++round) {
            QByteArray out, err;
            QCOMPARE(runTool({root + "demo.uiprj", "--time", "2024-03-09 14:05:07", "--strict"}, &out, &err), 0);
            QVERIFY(out.startsWith("2024/03/09 14:05:07\n"));
            QVERIFY(out.contains("Make Morvane_Flash.bin"));
            QVERIFY(err.isEmpty());
            QVERIFY(!QFile::exists(root + "Morvane_Flash.tmp"));
            for (int i = 0; i < outputs.size(); ++i) {
                QVERIFY2(QFile::exists(root + outputs[i]), qPrintable(outputs[i]));
                if (round == 0)
                    first << readAll(root + outputs[i]);
                else
                    QVERIFY2(readAll(root + outputs[i]) == first[i], qPrintable(outputs[i]));
            }
        }
        // the blocks follow the page block's start at A + 0x10000 (A = 0x180)
        const QByteArray image = first[0];
        QVERIFY(image.size() > 0x10180);
        QCOMPARE(image.mid(0x80, 6), hex("01 03 09 13C600"));
        QCOMPARE(quint8(image[0x80 + 63]), quint8(10)); // the demo's volume
        verifyStamp(image);
    }

    void projectsThatCannotBeOpened()
    {
        // Each refusal is one line with the reason on the tool's standard
        // error, exit code 1, and no image.
        const QByteArray list = "Page0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n";
        const QByteArray ini = ProjectSettings().toIni();
        ProjectSettings newer;
        newer.supplierVer = "V3.21";
        const struct {
            const char *what;
            QByteArray uiprj, ini;
            QStringList says;
        } cases[] = {
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
            QVERIFY2(!loadProject(uiprj).ok, k.what);
            QByteArray err; // the loader's reason
            QCOMPARE(runTool({uiprj}, nullptr, &err), BuildExit::CannotOpen);
            QCOMPARE(err.count('\n'), 1);
            for (const QString &text : k.says)
                QVERIFY2(err.contains(text.toUtf8()), qPrintable(QString(k.what) + ": " + err));
        }

        // Sound: it opens; wrong arguments are usage errors; then it builds.
        writeFile(uiprj, list);
        writeFile(root() + "p.ini", ini);
        const ProjectLoad l = loadProject(uiprj);
        QVERIFY(l.ok);
        QCOMPARE(l.input.projectDir, QDir(root()).absolutePath() + "/");
        QCOMPARE(l.input.pageLines.size(), 1);
        QCOMPARE(runTool({uiprj, "--time", "yesterday"}), BuildExit::Usage);
        QCOMPARE(runTool({}), BuildExit::Usage);
        QVERIFY(!QFile::exists(root() + "Morvane_Flash.bin"));
        QCOMPARE(runTool({uiprj}), BuildExit::Ok);
        QVERIFY(QFile::exists(root() + "Morvane_Flash.bin"));
    }
};

QTEST_GUILESS_MAIN(TestMakeBin)
#include "tst_make_bin.moc"
