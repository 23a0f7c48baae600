// The constant pinyin table that the build copies into the flash image:
// its layout (records, runs, padding) and facts about Chinese checked by
// hand against the GB2312 code chart, independent of the generator.

#include "CoreTestSupport.h"
#include "build/FlashLayout.h"

#include <cstring>

namespace {

// 421 records of 16 bytes: the syllable in 7 bytes with NUL padding, the
// start and length of its run (big-endian, in 2-byte units), 5 zero bytes.
// The runs of GB2312 codes start at 0x2000.
const int kTableSize = 0x11C50, kRecordSize = 16, kRecordCount = 421, kCharsByteOffset = 0x2000;

QByteArray readData(const char *name) { return core::readAll(VANTILE_SOURCE_DIR "/src/build/data/" + QLatin1String(name)); }

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

} // namespace

class TestPinyinTable : public QObject
{
    Q_OBJECT

    QByteArray table;
    QVector<QByteArray> syllables;       // in record order
    QVector<int> starts, lengths;        // of their runs
    QMap<QByteArray, QVector<int>> runs; // syllable -> codes

    QVector<int> run(const char *syllable) const { return runs.value(QByteArray(syllable)); }

private slots:
    void initTestCase()
    {
        table = readData("PinyinTable.bin");
        QCOMPARE(table.size(), kTableSize);
        for (int at = 0; at < kRecordCount * kRecordSize; at += kRecordSize) {
            syllables << QByteArray(table.constData() + at, int(strnlen(table.constData() + at, 7)));
            starts << be16(table, at + 7);
            lengths << qMin(be16(table, at + 9), kTableSize / 2 - starts.last());
            for (int k = starts.last(); k < starts.last() + lengths.last(); ++k)
                runs[syllables.last()] << be16(table, 2 * k);
        }
    }

    void recordsAndRunsLaidOut()
    {
        // compiled in as a resource, byte for byte, with its licence note beside it
        QCOMPARE(vantile::Flash::pinyinTable(), table);
        QVERIFY(readData("PINYIN-LICENSE.txt").contains("Permission is hereby granted"));
        int next = kCharsByteOffset / 2; // each run follows the one before
        for (int i = 0; i < kRecordCount; ++i) {
            const int at = i * kRecordSize;
            const QByteArray &syllable = syllables[i];
            QVERIFY2(!syllable.isEmpty(), qPrintable(QString::number(i)));
            for (char ch : syllable)
                QVERIFY2(ch >= 'a' && ch <= 'z', syllable.constData());
            QCOMPARE(table.mid(at + syllable.size(), 7 - syllable.size()), QByteArray(7 - syllable.size(), '\0'));
            QCOMPARE(table.mid(at + 11, 5), QByteArray(5, '\0'));
            // syllables ascend; the punctuation record "bd" comes last
            if (i > 0 && i < kRecordCount - 1)
                QVERIFY2(std::strcmp(syllables[i - 1].constData(), syllable.constData()) < 0, syllable.constData());
            QVERIFY2(starts[i] == next && be16(table, at + 9) == lengths[i], syllable.constData());
            next += lengths[i];
        }
        QCOMPARE(syllables[0] + syllables[1] + syllables[419] + syllables[420], QByteArray("aaizuobd"));
        // zeros between the records and the characters, and after the last run
        const int recordsEnd = kRecordCount * kRecordSize;
        QCOMPARE(table.mid(recordsEnd, kCharsByteOffset - recordsEnd), QByteArray(kCharsByteOffset - recordsEnd, '\0'));
        QCOMPARE(table.mid(2 * next), QByteArray(kTableSize - 2 * next, '\0'));
    }

    void codesAreGb2312AndCoverEveryHanzi()
    {
        QSet<int> present;
        int total = 0;
        for (const QByteArray &syllable : syllables) {
            QSet<int> seen;
            for (int code : runs.value(syllable)) {
                // a syllable's run is all hanzi, "bd" is all symbols of rows 1 to 9
                const int hi = code >> 8, lo = code & 0xFF;
                const bool fits = syllable == "bd" ? hi >= 0xA1 && hi <= 0xA9 && lo >= 0xA1 && lo <= 0xFE
                                                   : isGbHanzi(code);
                QVERIFY2(fits && !seen.contains(code), qPrintable(syllable + " " + QByteArray::number(code, 16)));
                seen.insert(code);
                present.insert(code);
            }
            total += syllable == "bd" ? 0 : seen.size();
        }
        int hanzi = 0;
        for (int code = 0xB0A1; code <= 0xF7FE; ++code) {
            if (isGbHanzi(code)) {
                ++hanzi;
                QVERIFY2(present.contains(code), qPrintable(QByteArray::number(code, 16)));
            }
        }
        QCOMPARE(hanzi, 6763); // 3755 of level 1 and 3008 of level 2
        // polyphones appear under each reading: more entries than hanzi
        QVERIFY2(total > 6763, qPrintable(QString::number(total)));
    }

    void knownReadings()
    {
        // 中 啊 绿 (ü is v), 嗯 (outside the initial-final grid), 行 under xíng and háng
        const QList<QPair<const char *, int>> readings = {
            {"zhong", 0xD6D0}, {"a", 0xB0A1}, {"lv", 0xC2CC}, {"ng", 0xE0C5}, {"xing", 0xD0D0}, {"hang", 0xD0D0},
        };
        for (const auto &r : readings)
            QVERIFY2(run(r.first).contains(r.second), r.first);
        // not filed under a wrong syllable; toneless: 中 zhōng and zhòng are one entry
        QVERIFY(!run("ni").contains(0xD6D0) && run("zhong").count(0xD6D0) == 1);
        // nothing that is not a syllable, and no "ue" spelling of ü
        for (const char *s : {"v", "zhi1", "lue"})
            QVERIFY2(!runs.contains(QByteArray(s)), s);
        // The most used character leads its run, which code order would not
        // do: 得 (B5C3) < 的 (B5C4). The punctuation starts with ， and 。
        QCOMPARE(run("de").value(0), 0xB5C4);
        QCOMPARE(run("bd").mid(0, 2), (QVector<int>{0xA3AC, 0xA1A3}));
    }
};

QTEST_GUILESS_MAIN(TestPinyinTable)
#include "tst_pinyin_table.moc"
