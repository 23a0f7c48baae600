// The constant pinyin table that the build copies into the flash image:
// its layout (records, runs, padding) and facts about Chinese checked by
// hand against the GB2312 code chart, independent of the generator.

#include <QFile>
#include <QMap>
#include <QSet>
#include <QVector>
#include <QXmlStreamReader>
#include <QtTest>

#include <cstring>

namespace {

const int kTableSize = 0x11C50;
const int kRecordSize = 16;
const int kRecordCount = 421;
const int kCharsByteOffset = 0x2000;

struct Record
{
    QByteArray syllable;
    int start = 0;  // in 2-byte units from the start of the table
    int length = 0; // in 2-byte units
};

QString dataPath(const char *name)
{
    return QStringLiteral(VANTILE_SOURCE_DIR "/src/build/data/") + QLatin1String(name);
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
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
        table = readAll(dataPath("PinyinTable.bin"));
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

    void sizeIsFixed() { QCOMPARE(table.size(), 0x11C50); }

    void recordsAreWellFormed()
    {
        for (int i = 0; i < kRecordCount; ++i) {
            const int at = i * kRecordSize;
            const Record &r = records[i];
            QVERIFY2(!r.syllable.isEmpty(), qPrintable(QString::number(i)));
            for (char ch : r.syllable)
                QVERIFY2(ch >= 'a' && ch <= 'z', r.syllable.constData());
            // NUL padding after the syllable, and five zero bytes at the end
            for (int k = r.syllable.size(); k < 7; ++k)
                QCOMPARE(int(table[at + k]), 0);
            for (int k = 11; k < 16; ++k)
                QCOMPARE(int(table[at + k]), 0);
        }
    }

    void syllablesAscendWithPunctuationLast()
    {
        QCOMPARE(records.size(), 421);
        QCOMPARE(records.first().syllable, QByteArray("a"));
        QCOMPARE(records[1].syllable, QByteArray("ai"));
        QCOMPARE(records[2].syllable, QByteArray("an"));
        QCOMPARE(records[3].syllable, QByteArray("ang"));
        QCOMPARE(records[419].syllable, QByteArray("zuo"));
        QCOMPARE(records[418].syllable, QByteArray("zun"));
        QCOMPARE(records.last().syllable, QByteArray("bd"));
        for (int i = 1; i < 420; ++i)
            QVERIFY2(std::strcmp(records[i - 1].syllable.constData(), records[i].syllable.constData()) < 0,
                     records[i].syllable.constData());
    }

    void runsAreContiguousFromTheCharacterArea()
    {
        QCOMPARE(records.first().start, 0x1000);
        QCOMPARE(2 * records.first().start, kCharsByteOffset);
        for (int i = 1; i < kRecordCount; ++i)
            QVERIFY2(records[i].start == records[i - 1].start + records[i - 1].length,
                     records[i].syllable.constData());
        const int end = records.last().start + records.last().length;
        QVERIFY(2 * end <= kTableSize);
        // padding between the records and the characters, and after the last run
        for (int b = kRecordCount * kRecordSize; b < kCharsByteOffset; ++b)
            QVERIFY2(table.at(b) == '\0', qPrintable(QString::number(b, 16)));
        for (int b = 2 * end; b < kTableSize; ++b)
            QVERIFY2(table.at(b) == '\0', qPrintable(QString::number(b, 16)));
    }

    void everyCodeIsTwoByteGb2312()
    {
        for (const Record &r : records) {
            QSet<int> seen;
            for (int code : runs.value(r.syllable)) {
                const int hi = code >> 8, lo = code & 0xFF;
                QVERIFY2(hi >= 0xA1 && hi <= 0xFE && lo >= 0xA1 && lo <= 0xFE,
                         qPrintable(r.syllable + " " + QByteArray::number(code, 16)));
                // a syllable's run is all hanzi, "bd" is all symbols of rows 1 to 9
                if (r.syllable == "bd")
                    QVERIFY2(hi <= 0xA9, qPrintable(QByteArray::number(code, 16)));
                else
                    QVERIFY2(isGbHanzi(code), qPrintable(r.syllable + " " + QByteArray::number(code, 16)));
                QVERIFY2(!seen.contains(code), qPrintable(r.syllable + " twice " + QByteArray::number(code, 16)));
                seen.insert(code);
            }
        }
    }

    void everyGb2312HanziHasAReading()
    {
        QSet<int> present;
        for (const Record &r : records)
            for (int code : runs.value(r.syllable))
                present.insert(code);
        int hanzi = 0;
        for (int hi = 0xB0; hi <= 0xF7; ++hi)
            for (int lo = 0xA1; lo <= 0xFE; ++lo) {
                const int code = hi << 8 | lo;
                if (!isGbHanzi(code))
                    continue;
                ++hanzi;
                QVERIFY2(present.contains(code), qPrintable(QByteArray::number(code, 16)));
            }
        QCOMPARE(hanzi, 6763); // 3755 of level 1 and 3008 of level 2
    }

    void knownReadings()
    {
        QVERIFY(run("zhong").contains(0xD6D0)); // 中
        QVERIFY(run("zhong").contains(0xD6D3)); // 钟
        QVERIFY(run("ni").contains(0xC4E3));    // 你
        QVERIFY(run("a").contains(0xB0A1));     // 啊
        QVERIFY(run("hao").contains(0xBAC3));   // 好
        QVERIFY(run("wo").contains(0xCED2));    // 我
        // ü is spelled v
        QVERIFY(run("lv").contains(0xC2CC));  // 绿
        QVERIFY(run("nv").contains(0xC5AE));  // 女
        QVERIFY(run("lve").contains(0xC2D4)); // 略
        QVERIFY(run("nve").contains(0xC5B0)); // 虐
        QVERIFY(!runs.contains("lue"));
        QVERIFY(!runs.contains("nue"));
        // interjections with syllables outside the initial-final grid
        QVERIFY(run("ng").contains(0xE0C5));  // 嗯
        QVERIFY(run("n").contains(0xE0C5));   // 嗯
        QVERIFY(run("m").contains(0xDFBC));   // 呒
        QVERIFY(run("hng").contains(0xBADF)); // 哼
        QVERIFY(run("yo").contains(0xD3B4));  // 哟
        QVERIFY(run("lo").contains(0xBFA9));  // 咯
        QVERIFY(run("ei").contains(0xDAC0));  // 诶
        // characters are not filed under a wrong syllable
        QVERIFY(!run("zhong").contains(0xC4E3));
        QVERIFY(!run("ni").contains(0xD6D0));
    }

    void polyphonesAppearUnderEachReading()
    {
        QVERIFY(run("xing").contains(0xD0D0));  // 行 xíng
        QVERIFY(run("hang").contains(0xD0D0));  // 行 háng
        QVERIFY(run("chang").contains(0xB3A4)); // 长 cháng
        QVERIFY(run("zhang").contains(0xB3A4)); // 长 zhǎng
        QVERIFY(run("zhong").contains(0xD6D8)); // 重 zhòng
        QVERIFY(run("chong").contains(0xD6D8)); // 重 chóng
        QVERIFY(run("le").contains(0xC1CB));    // 了 le
        QVERIFY(run("liao").contains(0xC1CB));  // 了 liǎo
        QVERIFY(run("he").contains(0xBACD));    // 和 hé
        QVERIFY(run("huo").contains(0xBACD));   // 和 huo
        QVERIFY(run("yue").contains(0xC0D6));   // 乐 yuè
        QVERIFY(run("le").contains(0xC0D6));    // 乐 lè
        // toneless: 中 zhōng and zhòng are one entry of "zhong"
        QCOMPARE(run("zhong").count(0xD6D0), 1);
        int total = 0;
        for (const Record &r : records)
            if (r.syllable != "bd")
                total += r.length;
        QVERIFY2(total > 6763, qPrintable(QString::number(total)));
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

    void standardSyllablesHaveRecords()
    {
        const char *expected[] = {"a",     "ai",   "zhuang", "shuang", "chuang", "jiong", "qiong",
                                  "xiong", "lia",  "dia",    "miu",    "diu",    "nou",   "o",
                                  "e",     "er",   "r",      "kei",    "den",    "zuo",   "zun"};
        for (const char *s : expected)
            QVERIFY2(runs.contains(QByteArray(s)), s);
        // nothing that is not a syllable
        for (const char *s : {"v", "i", "u", "bd2", "zhi1", "ju:", "xv"})
            QVERIFY2(!runs.contains(QByteArray(s)), s);
    }

    void punctuationRecord()
    {
        const QVector<int> bd = run("bd");
        QVERIFY(bd.size() >= 10);
        QCOMPARE(bd.value(0), 0xA3AC); // ，
        QCOMPARE(bd.value(1), 0xA1A3); // 。
        QVERIFY(bd.contains(0xA1A2));  // 、
        QVERIFY(bd.contains(0xA3BF));  // ？
        QVERIFY(bd.contains(0xA3A1));  // ！
        QVERIFY(bd.contains(0xA1B0));  // “
        QVERIFY(bd.contains(0xA1B1));  // ”
        QVERIFY(bd.contains(0xA1B6));  // 《
    }

    void resourceFileExposesTheTable()
    {
        QFile qrc(dataPath("vantile_data.qrc"));
        QVERIFY(qrc.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&qrc);
        QString prefix;
        QStringList paths;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == QLatin1String("qresource"))
                prefix = xml.attributes().value(QLatin1String("prefix")).toString();
            else if (xml.isStartElement() && xml.name() == QLatin1String("file")) {
                const QString alias = xml.attributes().value(QLatin1String("alias")).toString();
                const QString file = xml.readElementText();
                paths << prefix + QLatin1Char('/') + (alias.isEmpty() ? file : alias);
                QVERIFY(QFile::exists(dataPath(qPrintable(file))));
            }
        }
        QVERIFY(!xml.hasError());
        QVERIFY2(paths.contains(QStringLiteral("/vantile/PinyinTable.bin")), qPrintable(paths.join(',')));
    }

    void licenceNoteIsBesideTheTable()
    {
        const QByteArray note = readAll(dataPath("PINYIN-LICENSE.txt"));
        QVERIFY(note.contains("Unihan"));
        QVERIFY(note.contains("Permission is hereby granted"));
    }
};

QTEST_GUILESS_MAIN(TestPinyinTable)
#include "tst_pinyin_table.moc"
