// The constant pinyin table that the build copies into the flash image:
// its layout (records, runs, padding) and facts about Chinese checked by
// hand against the GB2312 code chart, independent of the generator.

#include "build/FlashLayout.h"

#include <QFile>
#include <QMap>
#include <QSet>
#include <QVector>
#include <QtTest>

#include <cstring>

namespace {

const int kTableSize = 0x11C50;
const int kRecordSize = 16;
const int kRecordCount = 421;
const int kCharsByteOffset = 0x2000;

struct Record {
    QByteArray syllable;
    int start = 0;  // in 2-byte units from the start of the table
    int length = 0; // in 2-byte units
};

QByteArray readData(const char *name)
{
    QFile f(QStringLiteral(VANTILE_SOURCE_DIR "/src/build/data/") + QLatin1String(name));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

int be16(const QByteArray &b, int at)
{
    return quint8(b[at]) << 8 | quint8(b[at + 1]);
}

// GB2312 hanzi: rows 0xB0..0xF7, cells 0xA1..0xFE, less 0xD7FA..0xD7FE.
bool isGbHanzi(int code)
{
    const int hi = code >> 8, lo = code & 0xFF;
    return hi >= 0xB0 && hi <= 0xF7 && lo >= 0xA1 && lo <= 0xFE && !(hi == 0xD7 && lo >= 0xFA);
}

QByteArray hexCode(int code)
{
    return QByteArray::number(code, 16);
}

} // namespace

class TestPinyinTable : public QObject
{
    Q_OBJECT

    QByteArray table;
    QVector<Record> records;
    QMap<QByteArray, QVector<int>> runs; // syllable -> codes

    QVector<int> run(const char *syllable) const { return runs.value(QByteArray(syllable)); }

private slots:
    void initTestCase()
    {
        table = readData("PinyinTable.bin");
        QCOMPARE(table.size(), kTableSize);
        for (int i = 0; i < kRecordCount; ++i) {
            const int at = i * kRecordSize;
            Record r;
            r.syllable = QByteArray(table.constData() + at, int(strnlen(table.constData() + at, 7)));
            r.start = be16(table, at + 7);
            r.length = be16(table, at + 9);
            records.append(r);
            QVector<int> codes;
            for (int k = 0; k < r.length && 2 * (r.start + k) + 1 < table.size(); ++k)
                codes.append(be16(table, 2 * (r.start + k)));
            runs.insert(r.syllable, codes);
        }
    }

    void theProgramCarriesTheTable()
    {
        // compiled in as a resource, byte for byte, with its licence note beside it
        QCOMPARE(vantile::Flash::pinyinTable(), table);
        const QByteArray note = readData("PINYIN-LICENSE.txt");
        QVERIFY(note.contains("Unihan"));
        QVERIFY(note.contains("Permission is hereby granted"));
    }

    void recordsAreWellFormedAndAscend()
    {
        for (int i = 0; i < kRecordCount; ++i) {
            const int at = i * kRecordSize;
            const Record &r = records[i];
            QVERIFY2(!r.syllable.isEmpty(), qPrintable(QString::number(i)));
            for (char ch : r.syllable)
                QVERIFY2(ch >= 'a' && ch <= 'z', r.syllable.constData());
            // NUL padding after the syllable, and five zero bytes at the end
            QCOMPARE(table.mid(at + r.syllable.size(), 7 - r.syllable.size()), QByteArray(7 - r.syllable.size(), '\0'));
            QCOMPARE(table.mid(at + 11, 5), QByteArray(5, '\0'));
            // syllables ascend, the punctuation record "bd" comes last
            if (i > 0 && i < kRecordCount - 1)
                QVERIFY2(std::strcmp(records[i - 1].syllable.constData(), r.syllable.constData()) < 0,
                         r.syllable.constData());
        }
        QCOMPARE(records[0].syllable + records[1].syllable + records[2].syllable + records[3].syllable,
                 QByteArray("aaianang"));
        QCOMPARE(records[418].syllable, QByteArray("zun"));
        QCOMPARE(records[419].syllable, QByteArray("zuo"));
        QCOMPARE(records.last().syllable, QByteArray("bd"));
    }

    void runsAreContiguousFromTheCharacterArea()
    {
        QCOMPARE(2 * records.first().start, kCharsByteOffset);
        for (int i = 1; i < kRecordCount; ++i)
            QVERIFY2(records[i].start == records[i - 1].start + records[i - 1].length,
                     records[i].syllable.constData());
        const int end = records.last().start + records.last().length;
        QVERIFY(2 * end <= kTableSize);
        // padding between the records and the characters, and after the last run
        const int recordsEnd = kRecordCount * kRecordSize;
        QCOMPARE(table.mid(recordsEnd, kCharsByteOffset - recordsEnd), QByteArray(kCharsByteOffset - recordsEnd, '\0'));
        QCOMPARE(table.mid(2 * end), QByteArray(kTableSize - 2 * end, '\0'));
    }

    void codesAreGb2312AndCoverEveryHanzi()
    {
        QSet<int> present;
        int total = 0;
        for (const Record &r : records) {
            QSet<int> seen;
            for (int code : runs.value(r.syllable)) {
                // a syllable's run is all hanzi, "bd" is all symbols of rows 1 to 9
                const bool fits = r.syllable == "bd" ? (code >> 8) >= 0xA1 && (code >> 8) <= 0xA9
                                                           && (code & 0xFF) >= 0xA1 && (code & 0xFF) <= 0xFE
                                                     : isGbHanzi(code);
                QVERIFY2(fits, qPrintable(r.syllable + " " + hexCode(code)));
                QVERIFY2(!seen.contains(code), qPrintable(r.syllable + " twice " + hexCode(code)));
                seen.insert(code);
                present.insert(code);
            }
            if (r.syllable != "bd")
                total += r.length;
        }
        int hanzi = 0;
        for (int code = 0xB0A1; code <= 0xF7FE; ++code) {
            if (!isGbHanzi(code))
                continue;
            ++hanzi;
            QVERIFY2(present.contains(code), qPrintable(hexCode(code)));
        }
        QCOMPARE(hanzi, 6763); // 3755 of level 1 and 3008 of level 2
        // polyphones appear under each reading: more entries than hanzi
        QVERIFY2(total > 6763, qPrintable(QString::number(total)));
    }

    void knownReadings()
    {
        const QList<QPair<const char *, int>> readings = {
            {"zhong", 0xD6D0}, {"zhong", 0xD6D3}, {"ni", 0xC4E3}, {"a", 0xB0A1},  // 中 钟 你 啊
            {"hao", 0xBAC3},   {"wo", 0xCED2},                                     // 好 我
            {"lv", 0xC2CC},    {"nv", 0xC5AE},    {"lve", 0xC2D4}, {"nve", 0xC5B0}, // ü is v: 绿 女 略 虐
            // interjections with syllables outside the initial-final grid: 嗯 嗯 呒 哼 哟 咯 诶
            {"ng", 0xE0C5}, {"n", 0xE0C5}, {"m", 0xDFBC}, {"hng", 0xBADF}, {"yo", 0xD3B4}, {"lo", 0xBFA9},
            {"ei", 0xDAC0},
            // polyphones under each reading: 行 xíng háng, 长 cháng zhǎng, 重 zhòng chóng,
            // 了 le liǎo, 和 hé huo, 乐 yuè lè
            {"xing", 0xD0D0}, {"hang", 0xD0D0}, {"chang", 0xB3A4}, {"zhang", 0xB3A4}, {"zhong", 0xD6D8},
            {"chong", 0xD6D8}, {"le", 0xC1CB}, {"liao", 0xC1CB}, {"he", 0xBACD}, {"huo", 0xBACD},
            {"yue", 0xC0D6}, {"le", 0xC0D6},
        };
        for (const auto &r : readings)
            QVERIFY2(run(r.first).contains(r.second), qPrintable(QByteArray(r.first) + " " + hexCode(r.second)));
        // not filed under a wrong syllable; toneless: 中 zhōng and zhòng are one entry
        QVERIFY(!run("zhong").contains(0xC4E3));
        QVERIFY(!run("ni").contains(0xD6D0));
        QCOMPARE(run("zhong").count(0xD6D0), 1);
    }

    void commonCharactersComeFirst()
    {
        // The most used character leads its run. Plain code order would
        // not do: 得 (B5C3) < 的 (B5C4), 匙 (B3D7) < 是, 挝 (CECE) < 我,
        // 泥 (C4E0) < 你.
        QCOMPARE(run("de").value(0), 0xB5C4);    // 的
        QCOMPARE(run("shi").value(0), 0xCAC7);   // 是
        QCOMPARE(run("zhong").value(0), 0xD6D0); // 中
        QCOMPARE(run("wo").value(0), 0xCED2);    // 我
        QCOMPARE(run("ni").value(0), 0xC4E3);    // 你
        QVERIFY(run("zhong").indexOf(0xD6D0) < run("zhong").indexOf(0xD6D3)); // 中 before 钟
    }

    void syllablesPresentAndAbsent()
    {
        for (const char *s : {"a", "ai", "zhuang", "shuang", "chuang", "jiong", "qiong", "xiong", "lia", "dia", "miu",
                              "diu", "nou", "o", "e", "er", "r", "kei", "den", "zuo", "zun"})
            QVERIFY2(runs.contains(QByteArray(s)), s);
        // nothing that is not a syllable, and no "ue" spelling of ü
        for (const char *s : {"v", "i", "u", "bd2", "zhi1", "ju:", "xv", "lue", "nue"})
            QVERIFY2(!runs.contains(QByteArray(s)), s);
    }

    void punctuationRecord()
    {
        const QVector<int> bd = run("bd");
        QVERIFY(bd.size() >= 10);
        QCOMPARE(bd.value(0), 0xA3AC); // ，
        QCOMPARE(bd.value(1), 0xA1A3); // 。
        for (int code : {0xA1A2, 0xA3BF, 0xA3A1, 0xA1B0, 0xA1B1, 0xA1B6}) // 、？！“”《
            QVERIFY2(bd.contains(code), qPrintable(hexCode(code)));
    }
};

QTEST_GUILESS_MAIN(TestPinyinTable)
#include "tst_pinyin_table.moc"
