// Fixed material addresses for updates over the air: the chain the OTA
// dialog recomputes against the file it opened, the text of Addr_Info.txt,
// builds that place their blocks where the dialog said or move them when a
// block grew, and a damaged Addr_Info.txt.

#include "CoreTestSupport.h"
#include "build/MakeBin.h"
#include "build/OtaPlacement.h"

using namespace core;

namespace {

// A one-page 64 x 48 project, 16 MB of flash, with a sound of wavBytes.
BuildInput makeProject(const QString &dir, int wavBytes)
{
    writeFile(dir + "/ota.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
    writeFile(dir + "/ota.ini", "[INFO]\nSupplierVer: V3.20\nXSIZE: 64\nYSIZE: 48\nLanguageNum:1\n");
    writeFile(dir + "/Plugin/Page0000.cfg", "\xEF\xBB\xBF");
    writeFile(dir + "/WavBin/0000_beepWav.bin", QByteArray(wavBytes, 'W'));
    return loadProject(dir + "/ota.uiprj").input;
}

} // namespace

class TestOtaAddresses : public QObject
{
    Q_OBJECT
private slots:
    // The dialog's Enter: from the Font start on, each block's end by the
    // tail rule, the next start there. With nothing remembered every end is
    // proposed; an unchecked box writes every line as it stands.
    void recomputedChainAndItsText()
    {
        OtaAddresses a = OtaAddresses::fromText("isChecked:false\nFont_StartAddr:131073\nFont_CurrentSize:100\n"
                                                "Font_ReserveLength:128\nWAV_CurrentSize:300000\n"
                                                "WAV_ReserveLength:256\nIcon_Num:3\n");
        // Font 131073 -> 0x40000 (262144); 0x40064 + 128 KB = 0x60064, up to
        // 0x80000 (524288). MultiLanguage empty, no reserve: ends there. WAV
        // 0x80000 + 300000 (0x493E0) + 256 KB = 0x1093E0, up to 0x120000
        // (1179648); the rest are empty at 0x120000.
        QCOMPARE(recomputeBlocks(a, OtaMemory(), 0x20000).size(), kMaterialCount);
        const QByteArray expected =
            "[INFO]\nisChecked:false\nFont_StartAddr:262144\nMultiLanguage_StartAddr:524288\n"
            "WAV_StartAddr:524288\nGIF_StartAddr:1179648\nImage_StartAddr:1179648\n"
            "Icon_StartAddr:1179648\nText_StartAddr:1179648\nFont_EndAddr:524288\n"
            "MultiLanguage_EndAddr:524288\nWAV_EndAddr:1179648\nGIF_EndAddr:1179648\n"
            "Image_EndAddr:1179648\nIcon_EndAddr:1179648\nText_EndAddr:1179648\n"
            "Font_CurrentSize:100\nMultiLanguage_CurrentSize:\nWAV_CurrentSize:300000\nGIF_CurrentSize:\n"
            "Image_CurrentSize:\nIcon_CurrentSize:\nText_CurrentSize:\nFont_ReserveLength:128\n"
            "MultiLanguage_ReserveLength:\nWAV_ReserveLength:256\nGIF_ReserveLength:\nImage_ReserveLength:\n"
            "Icon_ReserveLength:\nText_ReserveLength:\nWAV_Num:\nGIF_Num:\nImage_Num:\nIcon_Num:3\n";
        QCOMPARE(a.toText(), expected);
        QStringList problems;
        QVERIFY(OtaAddresses::fromText(expected, &problems) == a && problems.isEmpty());

        // Against itself nothing moves. WAV down to 128 KB: 0xC93E0 +
        // 0x20000 = 0xE93E0, up to 0x100000 (1048576); the blocks behind
        // follow it down, those before keep their ends.
        const OtaMemory saved = OtaMemory::of(a);
        QList<bool> kept;
        for (const TailOutcome &t : recomputeBlocks(a, saved, 0x20000))
            kept << t.kept;
        QCOMPARE(kept, QList<bool>({true, true, true, true, true, true, true}));
        a[Material::Wav].reserveKb = "128";
        kept.clear();
        for (const TailOutcome &t : recomputeBlocks(a, saved, 0x20000))
            kept << t.kept;
        QCOMPARE(kept, QList<bool>({true, true, false, false, false, false, false}));
        QCOMPARE(QStringList({a[Material::Language].end, a[Material::Wav].end, a[Material::Gif].start}),
                 QStringList({"524288", "1048576", "1048576"}));
    }

    // Build, then the dialog's change or a grown sound, then build again in
    // the same session.
    void buildPlacesBlocks_data()
    {
        addColumns<int, QByteArray, QString, quint32, QString>("wavBytes", "entry", "wavReserve", "gifAddress",
                                                               "note");
        // First build, nothing remembered: Font at round(page blocks) =
        // 0x20000, empty, + 128 KB = 0x40000 MultiLanguage, empty, + 128 KB =
        // 0x60000 WAV: 8 + 100 bytes, 0x6006C + 128 KB, up to 0xA0000 GIF.
        // The sound shrank: every end stays. The WAV block is its one entry
        // (address 0x60008, size; little-endian), then the sound.
        QTest::newRow("shrank") << 50 << hex("08000600 32000000") << QString() << 0xA0000u << QString();
        // Typed 256 KB: 0x6006C + 0x40000, up to 0xC0000.
        QTest::newRow("reserve raised") << 100 << hex("08000600 64000000") << "256" << 0xC0000u << QString();
        // 0x60000 + 8 + 0x40000 = 0xA0008 (655368) > 0xA0000 (655360):
        // 0xA0008 + 128 KB, up to 0xE0000.
        QTest::newRow("sound grew") << 0x40000 << hex("08000600 00000400") << QString() << 0xE0000u
                                    << "The WAV block ends at 655368, beyond its previous end 655360";
    }
    void buildPlacesBlocks()
    {
        QFETCH(int, wavBytes);
        QFETCH(QByteArray, entry);
        QFETCH(QString, wavReserve);
        QFETCH(quint32, gifAddress);
        QFETCH(QString, note);
        QTemporaryDir dir;
        const QString addrPath = dir.filePath("Addr_Info.txt");
        BuildInput in = makeProject(dir.path(), 100);
        writeFile(addrPath, "isChecked:true\nFont_ReserveLength:128\nMultiLanguage_ReserveLength:128\n"
                            "WAV_ReserveLength:128\nGIF_ReserveLength:128\nImage_ReserveLength:2048\n"
                            "Icon_ReserveLength:128\n");
        MakeBin driver;
        installStandardBuild(driver);
        BuildResult r = driver.run(in);
        QByteArray image = readAll(dir.filePath("Morvane_Flash.bin"));
        // directory: Font 0x10, MultiLanguage 0x50, WAV 0x18, GIF 0x28
        QCOMPARE(QList<quint32>({le32(image, 0x10), le32(image, 0x50), le32(image, 0x18), le32(image, 0x28)}),
                 QList<quint32>({0x20000u, 0x40000u, 0x60000u, 0xA0000u}));
        QCOMPARE(OtaAddresses::load(addrPath)[Material::Wav].end, QString("655360"));

        // The dialog opens on the file, takes the typed reserve with Enter and saves.
        OtaAddresses dialog = OtaAddresses::load(addrPath);
        const OtaMemory opened = OtaMemory::of(dialog);
        if (!wavReserve.isEmpty())
            dialog[Material::Wav].reserveKb = wavReserve;
        recomputeBlocks(dialog, opened, 0x20000);
        QVERIFY(dialog.save(addrPath));

        writeFile(dir.filePath("WavBin/0000_beepWav.bin"), QByteArray(wavBytes, 'W'));
        in = loadProject(dir.filePath("ota.uiprj")).input;
        r = driver.run(in);
        image = readAll(dir.filePath("Morvane_Flash.bin"));
        QVERIFY(r.imageWritten);
        QCOMPARE(QList<quint32>({le32(image, 0x10), le32(image, 0x50), le32(image, 0x18), le32(image, 0x1C),
                                 le32(image, 0x28)}),
                 QList<quint32>({0x20000u, 0x40000u, 0x60000u, 1u, gifAddress}));
        QCOMPARE(image.mid(0x60000, 9), entry + "W");
        const QStringList notes = r.log.filter("beyond its previous end");
        QCOMPARE(notes.isEmpty() ? QString() : notes.first().left(note.size()), note);
        QVERIFY(r.complaints().isEmpty()); // a grown block is no error
        if (wavBytes <= 100) // sizes as the dialog saw them: the build's addresses are the dialog's
            for (int i = 0; i < kMaterialCount; ++i)
                QCOMPARE(r.ota.blocks[i].start + "-" + r.ota.blocks[i].end,
                         dialog.blocks[i].start + "-" + dialog.blocks[i].end);
        const OtaAddresses saved = OtaAddresses::load(addrPath);
        QCOMPARE(QStringList({saved[Material::Wav].currentSize, saved.wavNum, saved[Material::Gif].start}),
                 QStringList({QString::number(8 + wavBytes), "1", QString::number(gifAddress)}));
    }

    void damagedAddrInfo_data()
    {
        addColumns<QByteArray, QString, bool>("line", "problem", "enabled");
        QTest::newRow("reserve") << QByteArray("WAV_ReserveLength:12a") << "is not a decimal number" << true;
        QTest::newRow("address") << QByteArray("Font_StartAddr:0xZZ") << "is not an address" << true;
        QTest::newRow("unknown key") << QByteArray("Font_Reserve:5") << "unknown key \"Font_Reserve:\"" << true;
        QTest::newRow("binary") << QByteArray("\x00\xFF\xFE", 3) << "is not \"key:value\"" << true;
        QTest::newRow("isChecked") << QByteArray("isChecked:yes") << "is neither true nor false" << false;
    }
    // What can be read is read, each bad line is named; a build says so
    // and leaves the file as the user wrote it.
    void damagedAddrInfo()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, problem);
        QFETCH(bool, enabled);
        const QByteArray text = "[INFO]\nisChecked:true\nText_ReserveLength:64\n" + line + "\n";
        QStringList problems;
        const OtaAddresses a = OtaAddresses::fromText(text, &problems);
        QCOMPARE(problems.size(), 1);
        QVERIFY2(problems[0].startsWith("line 4: ") && problems[0].contains(problem), qPrintable(problems[0]));
        QCOMPARE(a.enabled, enabled);
        QCOMPARE(a[Material::StaticText].reserveKb, QString("64"));
        QVERIFY(a[Material::Wav].reserveKb.isEmpty() && a[Material::Font].start.isEmpty());

        QTemporaryDir dir;
        const BuildInput in = makeProject(dir.path(), 10);
        writeFile(dir.filePath("Addr_Info.txt"), text);
        const BuildResult r = MakeBin().run(in);
        QVERIFY(r.imageWritten && r.complaints().contains("Addr_Info.txt " + problems[0]));
        QCOMPARE(readAll(dir.filePath("Addr_Info.txt")), text);
    }
};

QTEST_GUILESS_MAIN(TestOtaAddresses)
#include "tst_ota_addresses.moc"
