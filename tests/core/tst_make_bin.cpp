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

const QDateTime kTime(QDate(2024, 3, 9), QTime(14, 5, 7));

// A two-page project "small" in dir, with these settings.
BuildInput makeProject(const QString &dir, const ProjectSettings &s)
{
    const QString root = dir + QStringLiteral("/");
    writeFile(root + "small.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n"
                                    "Page0001:RGBColor(1,2,3);B;RGBColor(1,2,3);\n");
    writeFile(root + "small.ini", s.toIni());
    writeFile(root + "Plugin/Page0000.cfg", "\xEF\xBB\xBF");
    writeFile(root + "Plugin/Page0001.cfg", "\xEF\xBB\xBF");
    const ProjectLoad load = loadProject(root + "small.uiprj");
    return load.input;
}

ProjectSettings smallSettings()
{
    ProjectSettings s;
    s.xsize = QStringLiteral("800");
    s.ysize = QStringLiteral("480");
    s.volume = QStringLiteral("20");
    s.languageNum = QStringLiteral("1");
    s.flashSize = 0; // 2 MB
    return s;
}

// A pinyin table whose first record is "a", the rest a pattern.
QByteArray testPinyin()
{
    QByteArray t(int(Flash::kPinyinSize), '\0');
    t[0] = 'a';
    t[7] = 0x10; // start 0x1000, big-endian
    for (int i = 16; i < t.size(); ++i)
        t[i] = char((i * 7) & 0xFF);
    return t;
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

// The image's CRC as the panel checks it: bytes 0x174..0x17F as 0xFF.
void verifyStamp(const QByteArray &image)
{
    QByteArray probe = image;
    probe.replace(0x174, 12, QByteArray(12, char(0xFF)));
    const quint32 crc = slowCrc(probe);
    QCOMPARE(le32(image, 0x174), quint32(image.size()));
    QCOMPARE(le32(image, 0x178), crc);
    QCOMPARE(le32(image, 0x17C), ~crc);
}

} // namespace

class TestMakeBin : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_appDir;

private slots:
    void initTestCase()
    {
        QVERIFY(m_appDir.isValid());
        AppPaths::setAppDirOverride(m_appDir.path());
    }

    // --- the front of the image ------------------------------------------
    void plainProjectImage()
    {
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings());
        QCOMPARE(in.pageLines.size(), 2);
        MakeBin driver;
        BuildOptions o;
        o.fixedTime = kTime;
        const BuildResult r = driver.run(in, o);
        QVERIFY(r.imageWritten);
        const QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        // Nothing behind the variable image: 0x180 + 0x10000 bytes.
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(le32(image, 0x00), 0x180u);
        QCOMPARE(le32(image, 0x08), 0x10180u);
        QCOMPARE(le32(image, 0x0C), 0u);          // no page block yet
        QCOMPARE(le32(image, 0x10), 0u);          // absent blocks: fields stay 0
        QCOMPARE(le32(image, 0x14), 0u);
        QCOMPARE(le32(image, 0x40), 0u);          // no pinyin table
        QCOMPARE(le32(image, 0x44), 0u);
        QCOMPARE(le32(image, 0x48), 0xFFFFFFFFu); // no Modbus master
        QCOMPARE(le32(image, 0x4C), 0u);
        for (int at : {0x04, 0x38, 0x3C, 0x68, 0x7C})
            QCOMPARE(le32(image, at), 0u);
        // The settings block at 0x80: 2024 -> 1, volume 20 -> 16, 800 x 480.
        QCOMPARE(quint8(image[0x80]), quint8(1));
        QCOMPARE(quint8(image[0x80 + 63]), quint8(16));
        QCOMPARE(image.mid(0x80 + 16, 4), QByteArray("\x20\x03\xE0\x01", 4));
        QCOMPARE(image.mid(0x80 + 12, 2), QByteArray("\x5A\xA5", 2));
        QVERIFY(UiMessageBlock::checksumHolds(image.mid(0x80, 256), 0x5E21B7C4u));
        // 0x180 is the first byte of the (empty) variable image.
        QCOMPARE(image.mid(0x180, 0x10000), QByteArray(0x10000, '\0'));
        verifyStamp(image);
        QCOMPARE(r.imageSize, qint64(0x10180));
        QCOMPARE(le32(image, 0x178), r.imageCrc);
    }

    void gbkCodeMovesTheVariableImage()
    {
        QTemporaryDir dir;
        ProjectSettings s = smallSettings();
        s.gbkCode = true;
        const BuildInput in = makeProject(dir.path(), s);
        MakeBin driver;
        BuildOptions o;
        o.fixedTime = kTime;
        o.pinyinTable = testPinyin();
        BuildResult r = driver.run(in, o);
        QVERIFY(r.imageWritten);
        QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 0x11DD0 + 0x10000);
        QCOMPARE(le32(image, 0x00), 0x11DD0u);
        QCOMPARE(le32(image, 0x08), 0x21DD0u);
        QCOMPARE(le32(image, 0x40), 0x180u);
        QCOMPARE(le32(image, 0x44), 0x11C50u);
        QCOMPARE(image[0x180], 'a');
        QCOMPARE(image.mid(0x180, 0x11C50), testPinyin());
        QCOMPARE(image.mid(0x11DD0, 0x10000), QByteArray(0x10000, '\0'));
        verifyStamp(image);

        // The same session without the option: the table is gone, its two
        // directory fields stay as they were.
        ProjectSettings off = in.settings;
        off.gbkCode = false;
        BuildInput in2 = in;
        in2.settings = off;
        r = driver.run(in2, o);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(le32(image, 0x00), 0x180u);
        QCOMPARE(le32(image, 0x40), 0x180u);
        QCOMPARE(le32(image, 0x44), 0x11C50u);
        QCOMPARE(image[0x180], '\0');
        // A new session starts with them at 0.
        MakeBin fresh;
        fresh.run(in2, o);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(le32(image, 0x40), 0u);
        QCOMPARE(le32(image, 0x44), 0u);
    }

    void builtInPinyinTable()
    {
        QTemporaryDir dir;
        ProjectSettings s = smallSettings();
        s.gbkCode = true;
        const BuildInput in = makeProject(dir.path(), s);
        MakeBin driver;
        const BuildResult r = driver.run(in);
        const QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 0x21DD0);
        const QByteArray table = Flash::pinyinTable();
        QVERIFY(!r.pinyinMissing);
        QCOMPARE(table.size(), 0x11C50);
        QCOMPARE(image[0x180], 'a');
        QCOMPARE(image.mid(0x180, 0x11C50), table);
    }

    void modbusMasterArea()
    {
        QTemporaryDir dir;
        ProjectSettings s = smallSettings();
        s.modbusMaster = true;
        const BuildInput in = makeProject(dir.path(), s);
        MakeBin driver;
        // Without the command step the area is empty and the table size 0.
        driver.run(in);
        QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 0x10180);
        QCOMPARE(le32(image, 0x48), 0xC180u);
        QCOMPARE(le32(image, 0x4C), 0u);
        QCOMPARE(image.mid(0x180, 0xE000), QByteArray(0xE000, '\0'));  // variables and command area
        QCOMPARE(image.mid(0xE180, 0x2000), QByteArray(0x2000, char(0xFF))); // gap up to the page block
        QCOMPARE(quint8(image[0x80 + 10]) & 0x01, 0x01);

        // A command step fills the area and says how much it used.
        driver.setStep(BuildStep::CommandTable, [](BuildContext &ctx) {
            const QByteArray rec("\xA5\x01\x03\x00\x10\x00\x20\x00\x02\x00\x00\x01\x02\x00\x64\x00", 16);
            ctx.commandArea.replace(0, 16, rec);
            ctx.directory->set(BlockDirectory::CommandTableSize, 16);
        });
        driver.run(in);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(le32(image, 0x4C), 16u);
        QCOMPARE(image.mid(0xC180, 16), QByteArray("\xA5\x01\x03\x00\x10\x00\x20\x00\x02\x00\x00\x01\x02\x00\x64\x00", 16));
        QCOMPARE(image.mid(0xC190, 0x1FF0), QByteArray(0x1FF0, '\0'));
        verifyStamp(image);
    }

    // --- builders plugged in ------------------------------------------------
    void buildersChainTheirBlocks()
    {
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings());
        qint64 pageSize = 100, fontSize = 37, langSize = 5, iconSize = 0;
        auto *page = new FakeBuilder(Block::Page, BlockDirectory::PageBlockAddress, BlockDirectory::PageCount,
                                     &pageSize, 'P');
        auto *font = new FakeBuilder(Block::Font, BlockDirectory::FontAddress, BlockDirectory::FontCount,
                                     &fontSize, 'F');
        auto *lang = new FakeBuilder(Block::Language, BlockDirectory::LanguageAddress,
                                     BlockDirectory::LanguageCount, &langSize, 'L');
        auto *icon = new FakeBuilder(Block::Icon, BlockDirectory::IconAddress, BlockDirectory::IconCount,
                                     &iconSize, 'I');
        MakeBin driver;
        driver.setBuilder(std::unique_ptr<BlockBuilder>(page));
        driver.setBuilder(std::unique_ptr<BlockBuilder>(font));
        driver.setBuilder(std::unique_ptr<BlockBuilder>(lang));
        driver.setBuilder(std::unique_ptr<BlockBuilder>(icon));
        QVERIFY(driver.hasBuilder(Block::Font));
        QVERIFY(!driver.hasBuilder(Block::Wav));
        // A stale block file of a builder that writes nothing is not used.
        writeFile(dir.filePath("Icon/icon_all.bin"), "stale");
        const BuildResult r = driver.run(in);
        QVERIFY(r.imageWritten);
        QVERIFY(r.complaints().isEmpty());
        const QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        // 0x10180 page, +100 = 0x101E4 font, +37 = 0x10209 language, +5 = 0x1020E.
        QCOMPARE(page->seenAddress, qint64(0x10180));
        QCOMPARE(font->seenAddress, qint64(0x101E4));
        QCOMPARE(lang->seenAddress, qint64(0x10209));
        QCOMPARE(icon->seenAddress, qint64(0x1020E));
        QCOMPARE(image.size(), 0x1020E);
        QCOMPARE(le32(image, 0x08), 0x10180u);
        QCOMPARE(le32(image, 0x10), 0x101E4u);
        QCOMPARE(le32(image, 0x14), 3u);
        QCOMPARE(le32(image, 0x50), 0x10209u);
        QCOMPARE(le32(image, 0x30), 0x1020Eu);
        QCOMPARE(le32(image, 0x18), 0u); // Wav has no builder
        QCOMPARE(image.mid(0x10180, 100), QByteArray(100, 'P'));
        QCOMPARE(image.mid(0x101E4, 37), QByteArray(37, 'F'));
        QCOMPARE(image.mid(0x10209, 5), QByteArray(5, 'L'));
        verifyStamp(image);
        // Intermediate block files are gone; the language file stays.
        QVERIFY(!QFile::exists(dir.filePath("Plugin/Page_para_all.bin")));
        QVERIFY(!QFile::exists(dir.filePath("FontBin/Font_all.bin")));
        QVERIFY(!QFile::exists(dir.filePath("Icon/icon_all.bin")));
        QVERIFY(QFile::exists(dir.filePath("MultiLanguage/MultiLanguage.bin")));
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
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings());
        MakeBin driver;
        // Page headings alone are no complaint.
        driver.setStep(BuildStep::PreBuildChecks, [](BuildContext &ctx) { ctx.errorText += "Page0:\nPage1:\n"; });
        BuildResult r = driver.run(in);
        QCOMPARE(readAll(dir.filePath("Make_error_info.txt")), QByteArray("Page0:\nPage1:\n"));
        QVERIFY(r.complaints().isEmpty());
        QCOMPARE(BuildExit::forResult(r, true), BuildExit::Ok);

        // A builder whose file and address step disagree is reported.
        qint64 size = 10;
        driver.setBuilder(std::make_unique<FakeBuilder>(Block::Wav, BlockDirectory::WavAddress,
                                                        BlockDirectory::WavCount, &size, 'W', 2));
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
        QVERIFY(readAll(dir.filePath("Make_error_info.txt")).startsWith("Page0:\nlabel3 write address"));
        BuildResult none;
        QCOMPARE(BuildExit::forResult(none, false), BuildExit::NoImage);
    }

    // --- OTA -------------------------------------------------------------------
    void otaKeepsAddressesAndMovesGrownBlocks()
    {
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings()); // 128 KB alignment
        OtaAddresses addr;
        addr.enabled = true;
        addr[Material::Font].reserveKb = "64";
        addr[Material::Wav].reserveKb = "0";
        QVERIFY(addr.save(dir.filePath("Addr_Info.txt")));
        qint64 fontSize = 1000, wavSize = 10;
        auto *font = new FakeBuilder(Block::Font, BlockDirectory::FontAddress, BlockDirectory::FontCount,
                                     &fontSize, 'F');
        auto *wav = new FakeBuilder(Block::Wav, BlockDirectory::WavAddress, BlockDirectory::WavCount, &wavSize, 'W');
        MakeBin driver;
        driver.setBuilder(std::unique_ptr<BlockBuilder>(font));
        driver.setBuilder(std::unique_ptr<BlockBuilder>(wav));

        // Font at round(0x10180) = 0x20000, end round(0x20000 + 1000 + 64 KB) = 0x40000.
        // Language: no reserve, ends at 0x40000. Wav at 0x40000, end round(0x4000A) = 0x60000.
        BuildResult r = driver.run(in);
        QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 0x60000);
        QCOMPARE(le32(image, 0x10), 0x20000u);
        QCOMPARE(le32(image, 0x18), 0x40000u);
        QCOMPARE(image.mid(0x10180, 0x20000 - 0x10180), QByteArray(0x20000 - 0x10180, char(0xFF)));
        QCOMPARE(image.mid(0x20000, 1000), QByteArray(1000, 'F'));
        QCOMPARE(image.mid(0x203E8, 0x40000 - 0x203E8), QByteArray(0x40000 - 0x203E8, char(0xFF)));
        QCOMPARE(image.mid(0x40000, 10), QByteArray(10, 'W'));
        QCOMPARE(image.mid(0x4000A), QByteArray(0x60000 - 0x4000A, char(0xFF)));
        verifyStamp(image);
        OtaAddresses saved = OtaAddresses::load(dir.filePath("Addr_Info.txt"));
        QVERIFY(saved.enabled);
        QCOMPARE(saved[Material::Font].start, QString("131072"));
        QCOMPARE(saved[Material::Font].end, QString("262144"));
        QCOMPARE(saved[Material::Font].currentSize, QString("1000"));
        QCOMPARE(saved[Material::Language].start, QString("262144"));
        QCOMPARE(saved[Material::Language].end, QString("262144"));
        QCOMPARE(saved[Material::Wav].start, QString("262144"));
        QCOMPARE(saved[Material::Wav].end, QString("393216"));
        QCOMPARE(saved[Material::StaticText].end, QString("393216"));
        QVERIFY(saved == r.ota);

        // The font shrank: every address stays, its pad grows.
        fontSize = 500;
        driver.run(in);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 0x60000);
        QCOMPARE(le32(image, 0x10), 0x20000u);
        QCOMPARE(le32(image, 0x18), 0x40000u);
        QCOMPARE(image.mid(0x201F4, 0x40000 - 0x201F4), QByteArray(0x40000 - 0x201F4, char(0xFF)));
        QCOMPARE(image.mid(0x40000, 10), QByteArray(10, 'W'));

        // The font grew beyond its end: round(0x20000 + 200000 + 64 KB) = 0x80000,
        // and the later blocks move with it.
        fontSize = 200000;
        driver.run(in);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(le32(image, 0x10), 0x20000u);
        QCOMPARE(le32(image, 0x18), 0x80000u);
        QCOMPARE(image.size(), 0xA0000);
        saved = OtaAddresses::load(dir.filePath("Addr_Info.txt"));
        QCOMPARE(saved[Material::Font].end, QString::number(0x80000));
        QCOMPARE(saved[Material::Wav].start, QString::number(0x80000));

        // A new session takes the saved addresses as the previous build's:
        // with the font small again nothing moves back.
        fontSize = 500;
        MakeBin next;
        next.setBuilder(std::make_unique<FakeBuilder>(Block::Font, BlockDirectory::FontAddress,
                                                      BlockDirectory::FontCount, &fontSize, 'F'));
        next.setBuilder(std::make_unique<FakeBuilder>(Block::Wav, BlockDirectory::WavAddress,
                                                      BlockDirectory::WavCount, &wavSize, 'W'));
        next.run(in);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(le32(image, 0x18), 0x80000u);
        QCOMPARE(image.size(), 0xA0000);

        // A changed reserve (against this session's last build) moves the
        // block's end: 0x201F4 + 16 KB -> 0x40000, and Wav follows since the
        // block before it moved: 0x40000, end round(0x4000A) = 0x60000.
        addr = OtaAddresses::load(dir.filePath("Addr_Info.txt"));
        addr[Material::Font].reserveKb = "16";
        QVERIFY(addr.save(dir.filePath("Addr_Info.txt")));
        r = next.run(in);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(le32(image, 0x10), 0x20000u);
        QCOMPARE(le32(image, 0x18), 0x40000u);
        QCOMPARE(image.size(), 0x60000);
        QCOMPARE(r.ota[Material::Font].end, QString::number(0x40000));
        QCOMPARE(r.ota[Material::Font].reserveKb, QString("16"));
        verifyStamp(image);
    }

    // --- flash size ---------------------------------------------------------
    void flashSizeBoundary()
    {
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings()); // 2 MB = 2097152
        qint64 size = 2097152 - 0x10180;
        MakeBin driver;
        driver.setBuilder(std::make_unique<FakeBuilder>(Block::Picture, BlockDirectory::PictureAddress,
                                                        BlockDirectory::PictureCount, &size, 'X'));
        QStringList notices;
        driver.setNotifier([&notices](const QString &t, const QString &m) { notices << t + "|" + m; });
        BuildResult r = driver.run(in);
        QVERIFY(r.imageWritten);
        QCOMPARE(r.imageSize, qint64(2097152));
        QVERIFY(!r.overFlash);
        QVERIFY(!notices.join(' ').contains("Warning"));
        QVERIFY(!r.log.join('\n').contains("Flash max size"));
        QCOMPARE(notices, QStringList{"Note|Morvane_Flash.bin is ready!"});

        size += 1;
        notices.clear();
        r = driver.run(in);
        QVERIFY(r.imageWritten);
        QVERIFY(r.overFlash);
        QVERIFY(r.log.contains("Flash max size2097152< bin size2097153"));
        QCOMPARE(notices,
                 QStringList({"Warning|Morvane_Flash.bin is over spi flash!", "Note|Morvane_Flash.bin is ready!"}));
        const QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        QCOMPARE(image.size(), 2097153);
        verifyStamp(image);
        QCOMPARE(BuildExit::forResult(r, false), BuildExit::Ok);
        QCOMPARE(BuildExit::forResult(r, true), BuildExit::Strict);
    }

    void smallChunksGiveTheSameImage()
    {
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings());
        qint64 size = 5000;
        MakeBin driver;
        driver.setBuilder(std::make_unique<FakeBuilder>(Block::Gif, BlockDirectory::GifAddress,
                                                        BlockDirectory::GifCount, &size, 'G'));
        BuildOptions o;
        o.fixedTime = kTime;
        driver.run(in, o);
        const QByteArray whole = readAll(dir.filePath("Morvane_Flash.bin"));
        o.chunkSize = 333;
        driver.run(in, o);
        QCOMPARE(readAll(dir.filePath("Morvane_Flash.bin")), whole);
        verifyStamp(whole);
    }

    // --- time ------------------------------------------------------------------
    void buildTimeSources()
    {
        QTemporaryDir dir;
        ProjectSettings s = smallSettings();
        s.compilationTimeFixed = true;
        s.compileDateTime = QDateTime(QDate(2022, 12, 31), QTime(23, 59, 59));
        const BuildInput in = makeProject(dir.path(), s);
        QVERIFY(in.settings.compilationTimeFixed);
        MakeBin driver;
        // The project's fixed timestamp: 2022 -> 0, 12, 31, 86399 = 0x01517F.
        BuildResult r = driver.run(in);
        QCOMPARE(readAll(dir.filePath("Morvane_Flash.bin")).mid(0x80, 6), QByteArray("\x00\x0C\x1F\x7F\x51\x01", 6));
        QCOMPARE(r.buildTime, s.compileDateTime);
        // An explicit time wins: 2024-03-09 14:05:07 -> 1, 3, 9, 50707 = 0xC613.
        BuildOptions o;
        o.fixedTime = kTime;
        r = driver.run(in, o);
        QCOMPARE(readAll(dir.filePath("Morvane_Flash.bin")).mid(0x80, 6), QByteArray("\x01\x03\x09\x13\xC6\x00", 6));
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
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings());
        const QString root = dir.path() + "/";
        QDir(root).rmdir("Video"); // made again by the build
        writeFile(root + "Morvane_Flash.uibin", "old");
        writeFile(root + "Morvane_Flash.tmp", "old");
        writeFile(root + "SerialPortCommands.csv", "old");
        writeFile(root + "Plugin/Page0000.bin", "x");
        writeFile(root + "Plugin/x.tmp", "x");
        writeFile(root + "Gif/0001_a.gif", "GIF89a");
        writeFile(root + "Gif/0001_a.bin", "x");
        writeFile(root + "Picture/0000_a_img.bin", "x");
        writeFile(root + "Icon/0003_b.tmp", "x");
        writeFile(root + "FontBin/00_font.bin", "font");
        writeFile(root + "FontBin/Font_all.bin", "x");
        writeFile(root + "WavBin/Wav_all.bin", "x");
        writeFile(root + "WavBin/0001_Wav.bin", "wav");
        MakeBin driver;
        QStringList logged;
        driver.setLogSink([&logged](const QString &l) { logged << l; });
        BuildOptions o;
        o.fixedTime = kTime;
        const BuildResult r = driver.run(in, o);
        QVERIFY(r.imageWritten);
        for (const char *d : {"Picture", "FontBin", "Gif", "Icon", "Music", "Plugin", "Video", "WavBin", "MultiLanguage"})
            QVERIFY2(QDir(root + d).exists(), d);
        for (const char *gone : {"Morvane_Flash.uibin", "Morvane_Flash.tmp", "SerialPortCommands.csv",
                                 "Plugin/Page0000.bin", "Plugin/x.tmp", "Gif/0001_a.bin", "Picture/0000_a_img.bin",
                                 "Icon/0003_b.tmp", "FontBin/Font_all.bin", "WavBin/Wav_all.bin"})
            QVERIFY2(!QFile::exists(root + gone), gone);
        for (const char *kept : {"Gif/0001_a.gif", "FontBin/00_font.bin", "WavBin/0001_Wav.bin",
                                 "Plugin/Page0000.cfg", "small.ini", "small.uiprj", "Addr_Info.txt"})
            QVERIFY2(QFile::exists(root + kept), kept);
        // The log as saved ends with "Make Morvane_Flash.bin"; the last line comes after.
        QCOMPARE(readAll(root + "Make_info.txt"),
                 QByteArray("2024/03/09 14:05:07\nStart to make bin...\nGet UI message\n\nMake Morvane_Flash.bin"));
        QCOMPARE(logged.last(), QString("Generate \"Morvane_Flash.bin\" file on 2024/03/09 14:05:07"));
        QCOMPARE(logged, r.log);
        QCOMPARE(readAll(root + "Make_error_info.txt"), QByteArray());
        QCOMPARE(AppPaths::readOneLine(AppPaths::currentBinPathFile()), QDir(root).absoluteFilePath("Morvane_Flash.bin"));
    }

    void cleanProjectRemovesOutputs()
    {
        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), smallSettings());
        const QString root = dir.path() + "/";
        MakeBin driver;
        driver.run(in);
        writeFile(root + "TouchWidget.csv", "x");
        writeFile(root + "Plugin/Page0001.cfc", "x");
        writeFile(root + "MultiLanguage/MultiLanguage.bin", "x");
        writeFile(root + "Picture/0000_a.png", "png");
        QStringList logged;
        MakeBin::cleanProject(root, [&logged](const QString &l) { logged << l; });
        QCOMPARE(logged, QStringList{"Clean project - Done"});
        for (const char *gone : {"Morvane_Flash.bin", "Make_info.txt", "Make_error_info.txt", "TouchWidget.csv",
                                 "Plugin/Page0001.cfc", "MultiLanguage/MultiLanguage.bin"})
            QVERIFY2(!QFile::exists(root + gone), gone);
        for (const char *kept : {"small.uiprj", "small.ini", "Plugin/Page0000.cfg", "Picture/0000_a.png", "Addr_Info.txt"})
            QVERIFY2(QFile::exists(root + kept), kept);
    }

    // --- opening -----------------------------------------------------------------
    void loadProjectRefusals()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/";
        ProjectLoad l = loadProject(root + "none.uiprj");
        QVERIFY(!l.ok);
        QVERIFY(l.reason.contains("none.uiprj"));

        writeFile(root + "a.uiprj", "Page0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
        l = loadProject(root + "a.uiprj");
        QVERIFY(!l.ok);
        QVERIFY(l.reason.contains("a.ini"));

        ProjectSettings newer;
        newer.supplierVer = "V3.21";
        writeFile(root + "a.ini", newer.toIni());
        l = loadProject(root + "a.uiprj");
        QVERIFY(!l.ok);
        QVERIFY(l.reason.contains("(V3.21)"));
        QVERIFY(l.reason.contains("V3.10"));

        writeFile(root + "a.ini", ProjectSettings().toIni());
        l = loadProject(root + "a.uiprj");
        QVERIFY(l.ok);
        QCOMPARE(l.input.projectDir, QDir(root).absolutePath() + "/");
        QCOMPARE(l.input.pageLines.size(), 1);

        // Sealed with another key: illegal for this one.
        writeFile(root + "a.uiprj", SealedFile::seal({"Page0000:RGBColor(0,0,0);A;RGBColor(0,0,0);"}, 0x12345678u));
        l = loadProject(root + "a.uiprj");
        QVERIFY(!l.ok);
        QVERIFY(l.reason.contains("illegal"));

        writeFile(root + "a.uiprj", "\xEF\xBB\xBF\n");
        l = loadProject(root + "a.uiprj");
        QVERIFY(!l.ok);
        QVERIFY(l.reason.contains("null uiprj"));
    }

    // --- the command line ------------------------------------------------------
    void toolBuildsTheDemoTwiceIdentically()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/demo/";
        QDirIterator it(QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo"), QDir::Files, QDirIterator::Subdirectories);
        const QString src = QStringLiteral(VANTILE_SOURCE_DIR "/examples/demo/");
        while (it.hasNext()) {
            const QString f = it.next();
            QVERIFY(writeFile(root + f.mid(src.size()), readAll(f)));
        }
        const QStringList outputs = {"Morvane_Flash.bin", "Make_info.txt", "Make_error_info.txt", "Addr_Info.txt"};
        QList<QByteArray> first;
        for (int round = 0; round < 2; ++round) {
            QProcess p;
            p.start(QStringLiteral(VANTILE_BUILD_TOOL),
                    {root + "demo.uiprj", "--time", "2024-03-09 14:05:07", "--strict"});
            QVERIFY(p.waitForFinished(60000));
            QCOMPARE(p.exitStatus(), QProcess::NormalExit);
            QCOMPARE(p.exitCode(), 0);
            const QByteArray out = p.readAllStandardOutput();
            QVERIFY(out.contains("Make Morvane_Flash.bin"));
            QVERIFY(out.startsWith("2024/03/09 14:05:07\n"));
            QVERIFY(p.readAllStandardError().isEmpty());
            QVERIFY(!QFile::exists(root + "Morvane_Flash.tmp"));
            for (int i = 0; i < outputs.size(); ++i) {
                const QByteArray bytes = readAll(root + outputs[i]);
                QVERIFY2(QFile::exists(root + outputs[i]), qPrintable(outputs[i]));
                if (round == 0)
                    first << bytes;
                else
                    QVERIFY2(bytes == first[i], qPrintable(outputs[i]));
            }
        }
        const QByteArray image = first[0];
        // the blocks follow the page block's start at A + 0x10000 (A = 0x180)
        QVERIFY(image.size() > 0x10180);
        QCOMPARE(image.mid(0x80, 6), QByteArray("\x01\x03\x09\x13\xC6\x00", 6));
        QCOMPARE(quint8(image[0x80 + 63]), quint8(10)); // the demo's volume
        verifyStamp(image);
    }

    void toolRefusesWhatItCannotOpen()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/";
        auto runTool = [](const QStringList &args, QByteArray *err) {
            QProcess p;
            p.start(QStringLiteral(VANTILE_BUILD_TOOL), args);
            p.waitForFinished(60000);
            *err = p.readAllStandardError();
            return p.exitCode();
        };
        QByteArray err;
        QCOMPARE(runTool({root + "missing.uiprj"}, &err), BuildExit::CannotOpen);
        QVERIFY(err.contains("missing.uiprj"));
        QCOMPARE(err.count('\n'), 1);

        ProjectSettings newer;
        newer.supplierVer = "V3.21";
        writeFile(root + "p.uiprj", "Page0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
        writeFile(root + "p.ini", newer.toIni());
        QCOMPARE(runTool({root + "p.uiprj"}, &err), BuildExit::CannotOpen);
        QVERIFY(err.contains("V3.21"));
        QCOMPARE(err.count('\n'), 1);
        QVERIFY(!QFile::exists(root + "Morvane_Flash.bin"));

        writeFile(root + "p.ini", ProjectSettings().toIni());
        QCOMPARE(runTool({root + "p.uiprj", "--time", "yesterday"}, &err), BuildExit::Usage);
        QCOMPARE(runTool({}, &err), BuildExit::Usage);
        QVERIFY(!QFile::exists(root + "Morvane_Flash.bin"));
        QCOMPARE(runTool({root + "p.uiprj"}, &err), BuildExit::Ok);
        QVERIFY(QFile::exists(root + "Morvane_Flash.bin"));
    }
};

QTEST_GUILESS_MAIN(TestMakeBin)
#include "tst_make_bin.moc"
