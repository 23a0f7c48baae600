// The Modbus command list: command.list written and read back, damaged and
// GBK files, the 16-byte command records worked out by hand, the function
// check, the capacity cut of the command area, and a master-mode build.

#include "CoreTestSupport.h"
#include "build/CommandList.h"
#include "build/MakeBin.h"

using namespace core;

namespace {

// Register, WriteAddr, Quantity, Operation and Response(ms) high byte first.
const char *const kLineA = "1,0x01,0x03,0x1000,0x2000,10,0x02,5,3,500,0x1234;read";
const char *const kRecordA = "A5 01 03 1000 2000 000A 0002 05 03 01F4 34"; // 500 = 0x01F4, Reserve's low byte
const QByteArray kGbkTemperature("\xCE\xC2\xB6\xC8"); // "温度" in GBK

CommandRow row(bool select, const QStringList &cells, const QString &description)
{
    CommandRow r;
    r.select = select;
    r.cells = cells;
    r.description = description;
    return r;
}

// MakeCommandBlock over a file (none for a null one), as master mode runs it.
struct CommandStep : BuildDir {
    explicit CommandStep(const QByteArray &file)
    {
        if (!file.isNull())
            put("command.list", file);
        ctx.commandArea = QByteArray(0x2000, '\0');
        CommandList::MakeCommandBlock(ctx);
    }
    quint32 used() const { return directory.value(BlockDirectory::CommandTableSize); }
};

} // namespace

class TestCommandList : public QObject
{
    Q_OBJECT
private slots:
    void records_data()
    {
        addColumns<QByteArray, QByteArray, QString>("file", "records", "errors");
        QTest::newRow("hex and decimal") << QByteArray(kLineA) << hex(kRecordA) << QString();
        // 0x1FF -> FF, 0xABCDE -> BCDE, 300 -> 2C, 0x7FFFF -> FFFF: each field cut to its width
        QTest::newRow("widths") << QByteArray("0,0x1FF,16,0xABCDE,65535,0,3,300,0x0,0x7FFFF,0;")
                                << hex("A5 FF 10 BCDE FFFF 0000 0003 2C 00 FFFF 00") << QString();
        QTest::newRow("function 0") << QByteArray("1,0x01,0,1,2,3,0,0,0,100,0x00;\n") + kLineA
                                    << hex(kRecordA) << "Wrong command index:1,0x01,0,1,2,3,0,0,0,100,0x00;\n";
        QTest::newRow("function 7, 0x0F") << QByteArray("1,2,7,1,2,3,0,0,0,1,0;\r\n1,2,0x0F,1,2,3,0,0,0,1,0;\r\n")
                                          << hex("A5 02 0F 0001 0002 0003 0000 00 00 0001 00")
                                          << "Wrong command index:1,2,7,1,2,3,0,0,0,1,0;\n";
        QTest::newRow("truncated line") << QByteArray(kLineA) + "\n1,0x01,0x03,0x10" << hex(kRecordA)
                                        << "Wrong command line:1,0x01,0x03,0x10\n";
        QTest::newRow("no file") << QByteArray() << QByteArray() << QString();
        QTest::newRow("GBK description") << QByteArray(kLineA) + kGbkTemperature + "\n" << hex(kRecordA) << QString();
    }
    void records()
    {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, records);
        CommandStep step(file);
        QCOMPARE(step.ctx.commandArea, records + QByteArray(0x2000 - records.size(), '\0'));
        QCOMPARE(step.used(), quint32(records.size()));
        QTEST(step.ctx.errorText, "errors");
        QCOMPARE(step.ctx.buildLog.contains("Open fail:" + step.ctx.path("command.list")), file.isNull());
    }

    // 513 good commands behind a function 0: the first 512 fill the 0x2000
    // bytes, the wrong one takes no room, the last is cut without a word.
    void capacityCut()
    {
        QByteArray file("1,1,0,0,0,0,0,0,0,0,0;\n");
        for (int i = 0; i < 513; ++i)
            file += QStringLiteral("1,1,3,%1,0,1,0,0,0,0,0;\n").arg(i).toUtf8();
        CommandStep step(file);
        QCOMPARE(step.used(), 0x2000u);
        QCOMPARE(step.ctx.commandArea.mid(0, 16), hex("A5 01 03 0000 0000 0001 0000 00 00 0000 00"));
        QCOMPARE(step.ctx.commandArea.mid(511 * 16, 16), hex("A5 01 03 01FF 0000 0001 0000 00 00 0000 00"));
        QCOMPARE(step.ctx.errorText, QStringLiteral("Wrong command index:1,1,0,0,0,0,0,0,0,0,0;\n"));
    }

    // Empty Address and Reserve are written 0xA5 and 0x00, a description
    // holding ";" in the hex form (61 3B 62), a blank row not at all.
    void roundTrip()
    {
        const QList<CommandRow> rows{
            row(true, {"0x01", "0x03", "0x0000", "0x1000", "2", "0x00", "0", "1", "100", "0x00"}, "温度"),
            row(false, {"", "0x06", "", "", "", "", "", "", "", ""}, "a;b"),
            row(true, {"", "", " "}, QString())};
        const QByteArray text = "1,0x01,0x03,0x0000,0x1000,2,0x00,0,1,100,0x00;\xE6\xB8\xA9\xE5\xBA\xA6\n"
                                "0,0xA5,0x06,,,,,,,,0x00;*Hex:613B62\n";
        QCOMPARE(CommandList::encode(rows), text);
        const CommandList::ReadResult back = CommandList::parse(text);
        QVERIFY(back.damaged.isEmpty() && !back.wasGbk);
        QCOMPARE(back.rows.size(), 2);
        QCOMPARE(back.rows[0].cells, rows[0].cells);
        QCOMPARE(back.rows[1].description, QStringLiteral("a;b"));
        QCOMPARE(CommandList::encode(back.rows), text);
        // the same list in GBK reads as the same rows
        QByteArray gbk = text;
        gbk.replace("\xE6\xB8\xA9\xE5\xBA\xA6", kGbkTemperature);
        const CommandList::ReadResult fromGbk = CommandList::parse(gbk);
        QVERIFY(fromGbk.wasGbk);
        QCOMPARE(CommandList::encode(fromGbk.rows), text);
    }

    // Damaged lines are named, and written back they still hold every
    // character they had.
    void damagedLines()
    {
        const QByteArray file = "1,0x01,0x03,1,2,3,0,0,0,100,0x00,extra;x\n\n1,0x02,0x03,0x00";
        const CommandList::ReadResult r = CommandList::parse(file);
        QCOMPARE(r.damaged, (QStringList{"Line 1: 1,0x01,0x03,1,2,3,0,0,0,100,0x00,extra;x", "Line 3: 1,0x02,0x03,0x00"}));
        QCOMPARE(CommandList::encode(r.rows), QByteArray("1,0x01,0x03,1,2,3,0,0,0,100,0x00,extra;x\n"
                                                         "1,0x02,0x03,0x00,,,,,,,0x00;\n"));
    }

    // A whole build with "Master mode": the area at A + 0xC000 holds the
    // records, directory 0x48/0x4C say where and how much.
    void masterModeBuild()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/";
        ProjectSettings s;
        s.modbusMaster = true;
        writeFile(root + "m.uiprj", "\xEF\xBB\xBFPage0000:RGBColor(0,0,0);A;RGBColor(0,0,0);\n");
        writeFile(root + "m.ini", s.toIni());
        writeFile(root + "Plugin/Page0000.cfg", "\xEF\xBB\xBF");
        writeFile(root + "command.list", QByteArray(kLineA) + kGbkTemperature + "\n0,1,0,0,0,0,0,0,0,0,0;\n"
                                             "1,0x02,0x10,0x0100,0x3000,4,0x01,0,2,1000,0;\n");
        MakeBin driver;
        installStandardBuild(driver);
        const BuildResult r = driver.run(loadProject(root + "m.uiprj").input);
        const QByteArray image = readAll(root + "Morvane_Flash.bin");
        QVERIFY(r.imageWritten);
        // 1000 = 0x03E8; the function 0 line takes no room
        const QByteArray records = hex(kRecordA) + hex("A5 02 10 0100 3000 0004 0001 00 02 03E8 00");
        QCOMPARE(le32(image, 0x48), 0x180u + 0xC000u);
        QCOMPARE(le32(image, 0x4C), 32u);
        QCOMPARE(image.mid(0xC180, 0x2000), records + QByteArray(0x2000 - 32, '\0'));
        QCOMPARE(image.mid(0xE180, 0x2000), ff(0x2000));
        QCOMPARE(r.complaints(), QStringList{"Wrong command index:0,1,0,0,0,0,0,0,0,0,0;"});
    }
};

QTEST_GUILESS_MAIN(TestCommandList)
#include "tst_command_list.moc"
