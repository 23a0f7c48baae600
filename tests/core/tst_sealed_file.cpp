// The sealed storage form: header, four-bit rotation, keyed CRC,
// classification, and what survives a round trip.

#include "CoreTestSupport.h"
#include "project/SealedFile.h"
#include "project/TextFiles.h"

using namespace core;

namespace {

const quint32 kOtherKey = 0x12345678u;

} // namespace

class TestSealedFile : public QObject
{
    Q_OBJECT
private slots:
    void crcMatchesIndependentComputation()
    {
        // start 0 and no complement, so not the usual check value 0xCBF43926
        QCOMPARE(SealedFile::crc32("123456789"), slowCrc("123456789"));
        QCOMPARE(SealedFile::crc32(QByteArray()), 0u);
        QCOMPARE(SealedFile::crc32(QByteArray(1, '\x01')), 0x77073096u); // the table entry for 1
    }

    void rotationByHand()
    {
        // "AB" = 0x41 0x42 -> 0x14 (low of A, high of B), 0x24 (low of B, high of A)
        QCOMPARE(SealedFile::rotate("AB"), QByteArray("\x14\x24"));
        QCOMPARE(SealedFile::unrotate("\x14\x24"), QByteArray("AB"));
        QCOMPARE(SealedFile::rotate(QByteArray()), QByteArray());
        QCOMPARE(SealedFile::rotate("\xF0"), QByteArray("\x0F"));
    }

    void headerLayout()
    {
        quint32 crc = 0;
        const QByteArray file = SealedFile::seal({QStringLiteral("Page:a;")}, kOtherKey, &crc);
        QCOMPARE(file.size(), 16 + 8); // "Page:a;" and a line feed
        QCOMPARE(file.left(2), QByteArray("UI"));
        QCOMPARE(le32(file, 2), 0x5E21B7C4u);
        QCOMPARE(le32(file, 6), 8u);
        QCOMPARE(le32(file, 10), crc);
        QCOMPARE(file.mid(14, 2), QByteArray("\r\n"));
        QCOMPARE(SealedFile::unrotate(file.mid(16)), QByteArray("Page:a;\n"));
        // the CRC covers the file with the filler and the key in place
        QByteArray check = file;
        check.replace(6, 8, "\x52\x1D\x3F\x6B" "\x78\x56\x34\x12", 8); // filler, key 0x12345678
        QCOMPARE(slowCrc(check), crc);
    }

    void asciiRoundTripByteForByte()
    {
        QTemporaryDir dir;
        const QString path = dir.path() + "/Page0000.cfg";
        const QStringList lines = {QStringLiteral("Page:,0x0000,,0x0000,,0x0000,,0x0000,;RGBColor(0,0,0);p;Disable;0;0;Disable;"),
                                   QStringLiteral("button_0:100,50,120,40,0x0020,0001_a.png,0002_b.png,2,button_0,Disable,Disable,0x0000,0xFFFF,1;")};
        QStringList logged;
        QVERIFY(SealedFile::writeLines(path, lines, kOtherKey, [&](const QString &l) { logged << l; }));
        QVERIFY(logged.first().startsWith(QStringLiteral("Save crc: 0x")));
        QCOMPARE(logged.first().size(), 12 + 8);
        const QByteArray first = readAll(path);
        SealedFile::Class cls = SealedFile::Plain;
        const QStringList back = SealedFile::readLines(path, kOtherKey, &cls);
        QCOMPARE(cls, SealedFile::Sealed);
        QCOMPARE(back, lines);
        QVERIFY(SealedFile::writeLines(path, back, kOtherKey));
        QCOMPARE(readAll(path), first);
    }

    void builtInKeyWritesPlain()
    {
        // the built-in key writes plain text with its byte order mark, any
        // other key the sealed form, which keeps ASCII only
        QTemporaryDir dir;
        const QString path = dir.path() + "/p.cfg";
        const QString sealed = dir.path() + "/s.cfg";
        const QStringList lines = {QStringLiteral("label_0:名称x;"), QStringLiteral("b")};
        QVERIFY(SealedFile::writeLines(path, lines, SealedFile::kBuiltInKey));
        QCOMPARE(readAll(path), QByteArray("\xEF\xBB\xBF" "label_0:\xE5\x90\x8D\xE7\xA7\xB0x;\nb\n"));
        QCOMPARE(SealedFile::classify(path, SealedFile::kBuiltInKey), SealedFile::Plain);
        QCOMPARE(SealedFile::readLines(path, SealedFile::kBuiltInKey), lines);
        QVERIFY(SealedFile::writeLines(sealed, lines, kOtherKey));
        QCOMPARE(SealedFile::readLines(sealed, kOtherKey), QStringList({QStringLiteral("label_0:x;"), QStringLiteral("b")}));
        QVERIFY(SealedFile::writeLines(path, {}, SealedFile::kBuiltInKey));
        QCOMPARE(readAll(path), QByteArray("\xEF\xBB\xBF"));
    }

    void classification()
    {
        const QByteArray file = SealedFile::seal({QStringLiteral("Page:x;"), QStringLiteral("icon_1:1,2;")}, kOtherKey);
        QCOMPARE(SealedFile::classifyBytes(file, kOtherKey), SealedFile::Sealed);
        // another key: header is ours, CRC fails
        QCOMPARE(SealedFile::classifyBytes(file, 0x11111111u), SealedFile::Illegal);
        QByteArray flipped = file;
        flipped[20] = char(flipped[20] ^ 0x01);
        QCOMPARE(SealedFile::classifyBytes(flipped, kOtherKey), SealedFile::Illegal);
        // bytes 2 to 5 changed too: no longer our header, read as plain text
        QByteArray foreign = flipped;
        foreign[2] = 'Z';
        QCOMPARE(SealedFile::classifyBytes(foreign, kOtherKey), SealedFile::Plain);

        // on disk: an illegal file gives no lines; no file is plain and not read
        QTemporaryDir dir;
        const QString path = dir.path() + "/c.cfg";
        QVERIFY(TextFiles::writeAtomically(path, flipped));
        QCOMPARE(SealedFile::classify(path, kOtherKey), SealedFile::Illegal);
        SealedFile::Class cls = SealedFile::Plain;
        bool ok = false;
        QVERIFY(SealedFile::readLines(path, kOtherKey, &cls, &ok).isEmpty());
        QCOMPARE(cls, SealedFile::Illegal);
        QVERIFY(ok);
        const QString missing = dir.path() + "/missing";
        QCOMPARE(SealedFile::classify(missing, kOtherKey), SealedFile::Plain);
        QVERIFY(SealedFile::readLines(missing, kOtherKey, &cls, &ok).isEmpty() && !ok);
    }

    void truncatedSealedFileReadsWhatIsThere()
    {
        // a length field larger than the file is limited to the bytes present
        QByteArray file = SealedFile::seal({QStringLiteral("abcdef")}, kOtherKey);
        file[6] = char(0xFF);
        file[7] = char(0xFF);
        const QStringList lines = SealedFile::readSealed(file);
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first(), QStringLiteral("abcdef"));
        QVERIFY(SealedFile::readSealed(file.left(18)).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSealedFile)
#include "tst_sealed_file.moc"
