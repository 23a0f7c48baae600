// Every widget kind in one project (tests/data/all_kinds): page 0 holds each
// of the 33 kinds with every field at its minimum, page 1 at its maximum
// (slot indices at the table's last place), page 2 with every field empty.
// The designer opens each page, shows every line as a widget and saves it
// back byte for byte; the build writes one record per widget line into the
// page's display or touch stream.
//
// The project: 800 x 480, chip 8 (VC110B(RGB), so overlap groups are made
// and no page is a Vice page), one language. Its media are made here:
// Icon/0000_min.png and Icon/9999_max.png, Gif/0000_min.gif and
// Gif/9999_max.gif, FontBin/00_MinFont.bin and FontBin/63_MaxFont.bin
// (ASCII, 8 x 8, one glyph), WavBin/0000_MinWav.bin.

#include "GuiTestSupport.h"
#include "build/MakeBin.h"
#include "designer/CanvasWidgets.h"

#include <QRegularExpression>
#include <QTextEdit>

#include <memory>

using namespace gui;

namespace {

QString fixtureDir() { return QStringLiteral(VANTILE_SOURCE_DIR "/tests/data/all_kinds/"); }

// The long tail of every name on the maximum page; the kind's word leads it.
const QString kMaxName = QStringLiteral("·最大名称·ABCDEFGHIJKLMNOPQRSTUVWXYZ-abcdefghijklmnopqrstuvwxyz-0123456789");

// The fixture without its expected files, plus the media the lines name.
void makeProject(const QString &root)
{
    QDirIterator it(fixtureDir(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString from = it.next();
        const QString rel = from.mid(fixtureDir().size());
        if (rel.startsWith(QLatin1String("saved/")))
            continue;
        QDir().mkpath(QFileInfo(root + rel).path());
        QVERIFY2(QFile::copy(from, root + rel), qPrintable(rel));
    }
    for (const char *d : {"Picture", "FontBin", "Gif", "Icon", "Music", "Video", "WavBin", "MultiLanguage"})
        QDir(root).mkpath(QLatin1String(d));

    for (const auto &[name, colour] : {std::pair{"0000_min.png", 0xFF2040A0u}, std::pair{"9999_max.png", 0xFFE0C020u}}) {
        QImage icon(4, 4, QImage::Format_ARGB32);
        icon.fill(colour);
        QVERIFY(icon.save(root + "Icon/" + name));
    }
    // A GIF89a of one black pixel: header, screen of 1 x 1 with a table of
    // two colours, the image block with its LZW data, trailer.
    const QByteArray gif = QByteArray::fromHex("474946383961" "01000100" "800000" "000000FFFFFF"
                                               "2C" "00000000" "01000100" "00" "02024401" "00" "3B");
    writeFile(root + "Gif/0000_min.gif", gif);
    writeFile(root + "Gif/9999_max.gif", gif);
    // A font header: "AS", width 8, height 8, codes 0x20 to 0x20, depth 0,
    // the 95 widths; then the one glyph of 8 rows of one byte.
    QByteArray font("AS\x08\x08\x20\x00\x20\x00\x00", 9);
    font += QByteArray(95, '\x08');
    font += QByteArray(8, '\0');
    writeFile(root + "FontBin/00_MinFont.bin", font);
    writeFile(root + "FontBin/63_MaxFont.bin", font);
    writeFile(root + "WavBin/0000_MinWav.bin", QByteArray(16, '\x80'));
}

QString pageFile(int page) { return QStringLiteral("Page%1.cfg").arg(page, 4, 10, QLatin1Char('0')); }

// The object names of a page file's widget lines, in file order.
QStringList objectNames(const QByteArray &file)
{
    QStringList names;
    for (const QString &line : QString::fromUtf8(file).split(QLatin1Char('\n'))) {
        const QString key = line.section(QLatin1Char(':'), 0, 0).remove(QChar(0xFEFF));
        if (!key.isEmpty() && line.contains(QLatin1Char(':')) && key != QLatin1String("Page"))
            names << key;
    }
    return names;
}

QMap<QString, QString> linesByName(const QByteArray &file)
{
    QMap<QString, QString> lines;
    for (const QString &line : QString::fromUtf8(file).split(QLatin1Char('\n')))
        if (line.contains(QLatin1Char(':')))
            lines.insert(line.section(QLatin1Char(':'), 0, 0).remove(QChar(0xFEFF)), line);
    return lines;
}

quint32 le32(const QByteArray &b, int at)
{
    return quint32(quint8(b[at])) | quint32(quint8(b[at + 1])) << 8 | quint32(quint8(b[at + 2])) << 16
           | quint32(quint8(b[at + 3])) << 24;
}
quint16 le16(const QByteArray &b, int at) { return quint16(quint8(b[at]) | quint8(b[at + 1]) << 8); }

// Sizes of whole records by type, from the kinds' record tables. A number
// has 23 + U bytes (U in its byte 20); an encoder 8 bytes and its blocks.
const QMap<int, int> kDisplaySize = {{1, 34},  {3, 21},  {4, 21},  {5, 60},  {6, 16},  {7, 14},
                                     {8, 31},  {9, 33},  {10, 7},  {11, 24}, {12, 41}, {13, 25},
                                     {15, 19}, {16, 53}, {18, 64}, {26, 70}, {32, 23}, {34, 49}};
const QMap<int, int> kTouchSize = {{0, 24}, {1, 21}, {2, 42}, {3, 27}, {4, 32},  {5, 15}, {6, 28},
                                   {7, 45}, {8, 24}, {9, 34}, {10, 48}, {11, 51}, {15, 30}};
// An encoder action block: mode -> the count in its byte 1.
const QMap<int, int> kEncoderBlock = {{1, 34}, {2, 10}, {3, 8}, {4, 104}};

// Walks a display stream; returns the record types in stream order, or
// fails on a record whose header doesn't match its kind's size. The types
// whose overlay bit (bit 7 of byte 4) is set go to *overlaid.
QList<int> displayTypes(const QByteArray &s, const QList<int> &encoderModes, QList<int> *overlaid)
{
    QList<int> types;
    int at = 0;
    while (at < s.size()) {
        const int type = quint8(s[at]);
        if (at + 5 > s.size()) {
            qWarning("display stream: a header cut off at %d", at);
            return {};
        }
        if (quint8(s[at + 1]) != 0) {
            qWarning("display record of type %d at %d is marked for a Vice page", type, at);
            return {};
        }
        int size = 0;
        if (type == 14) { // fixed 0x0018 at 4, the write address, then one block a non-empty item
            if (le16(s, at + 4) != 24) {
                qWarning("encoder record at %d: bytes 4 and 5 are not 24", at);
                return {};
            }
            size = 8;
            for (int mode : encoderModes) {
                const int block = at + size;
                if (block + 2 > s.size() || (quint8(s[block]) & 0x0F) != mode
                    || quint8(s[block + 1]) != kEncoderBlock.value(mode)) {
                    qWarning("encoder record at %d: block %d is not of mode %d", at, size, mode);
                    return {};
                }
                size += 2 + quint8(s[block + 1]);
            }
        } else if (type == 2) {
            size = 23 + quint8(s[at + 20]);
            if ((quint8(s[at + 4]) & 0x7F) != size - 5) {
                qWarning("number record at %d: length byte %d for %d bytes", at, quint8(s[at + 4]), size);
                return {};
            }
        } else {
            size = 5 + (quint8(s[at + 4]) & 0x7F);
            if (quint8(s[at + 4]) & 0x80)
                *overlaid << type;
            if (kDisplaySize.value(type) != size) {
                qWarning("display record of type %d at %d: %d bytes, its kind has %d", type, at, size,
                         kDisplaySize.value(type));
                return {};
            }
        }
        types << type;
        at += size;
    }
    if (at != s.size()) {
        qWarning("display stream: the last record runs %d bytes past the end", at - int(s.size()));
        return {};
    }
    return types;
}

// The same for a touch stream; every record's flags must be `flags`
// (bit 7 always, bit 6 for a report to the host, bit 0 never off a Vice page).
QList<int> touchTypes(const QByteArray &s, int flags)
{
    QList<int> types;
    int at = 0;
    while (at < s.size()) {
        if (at + 3 > s.size()) {
            qWarning("touch stream: a header cut off at %d", at);
            return {};
        }
        const int type = quint8(s[at]), got = quint8(s[at + 1]), size = 3 + quint8(s[at + 2]);
        if (got != flags || kTouchSize.value(type) != size) {
            qWarning("touch record of type %d at %d: flags 0x%02X, %d bytes, its kind has %d", type, at, got, size,
                     kTouchSize.value(type));
            return {};
        }
        types << type;
        at += size;
    }
    return at == s.size() ? types : QList<int>();
}

QList<int> sorted(QList<int> v)
{
    std::sort(v.begin(), v.end());
    return v;
}

struct BuildOutcome {
    QTemporaryDir dir;
    BuildResult result;
    QByteArray image;
};

} // namespace

class TestAllKinds : public QObject, Fixture
{
    Q_OBJECT

    // One build of the project as the designer saves it (the expected
    // files of saved/ as its page files), shared by the build tests.
    std::unique_ptr<BuildOutcome> m_built;
    BuildOutcome &built()
    {
        if (m_built)
            return *m_built;
        m_built = std::make_unique<BuildOutcome>();
        BuildOutcome *outcome = m_built.get();
        const QString root = outcome->dir.path() + QLatin1Char('/');
        makeProject(root);
        for (int p = 0; p < 3; ++p) {
            QFile::remove(root + "Plugin/" + pageFile(p));
            QFile::copy(fixtureDir() + "saved/" + pageFile(p), root + "Plugin/" + pageFile(p));
        }
        const ProjectLoad load = loadProject(root + "all_kinds.uiprj");
        if (!load.ok)
            qWarning("the project can't be opened for a build: %s", qPrintable(load.reason));
        MakeBin driver;
        installStandardBuild(driver);
        driver.setNotifier([](const QString &, const QString &) {});
        BuildOptions options;
        options.fixedTime = QDateTime(QDate(2025, 1, 1), QTime(8, 0));
        outcome->result = driver.run(load.input, options);
        outcome->image = readAll(root + "Morvane_Flash.bin");
        return *outcome;
    }

private slots:
    void initTestCase() { useAppDir(m_appDir.path()); }
    void cleanupTestCase() { m_built.reset(); }
    void init() { begin(); }
    void cleanup() { end(); }

    // (a) and (b): each page opened in the designer shows every line as a
    // widget, logs no load error, and Save All writes it back as saved/
    // holds it. Save All writes the page's lines as the session holds
    // them, and opening a page rewrites only its static texts (and old
    // comboButton lines, of which there are none here): so the saved files
    // are the page files themselves, with one line changed on page 0,
    // label_2, a static text whose entry 1 of
    // Constant_text.csv differs from its stored text. That line is written
    // anew from its fields:
    //   defaultText  *Hex:4F6C64 ("Old")  -> the entry's text "Static·文本"
    //   writeAddr    0x10                 -> 0x0010 (four upper-case digits)
    //   X, Y         +5, 6px              -> 5, 6 (digits only)
    //   lockState    01                   -> 1
    // Everything else stays as it stands, also where a field holds more
    // than its width (a label's Constant_Num 65535 on page 1 isn't zeroed:
    // that happens when a label is written, and loading doesn't write it),
    // and popbox_2's old dimming word "dim", which is only read as "Enable".
    void openAndSave_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QStringList>("names"); // the widgets on the canvas
        QTest::addColumn<QStringList>("rewritten"); // lines that differ in the saved file
        const QStringList kinds = {"button", "popbox", "kbkey", "label", "label", "textroll", "number", "pngNumber",
                                   "icon", "bitIcon", "gif", "varAdj", "batVar", "autoVar", "encoder", "slider",
                                   "progress", "rProgress", "rtouch", "needle", "keypad", "enkeyB", "cnkeyB", "RTC",
                                   "Clock", "uitimer", "wav", "video", "camera", "qrcode", "slmenu", "slidemenuPro",
                                   "curve"};
        // the slot index of each kind's line on the page, in file order; the
        // second "label" is the static text
        const QList<int> minimum = {0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
        const QList<int> maximum = {127, 63,  199, 511, 510, 31, 511, 511, 127, 127, 31, 255, 127, 63, 7, 31, 31,
                                    31,  31,  15,  127, 127, 127, 15, 7,   7,   31,  0,   3,   15,  63, 0, 11};
        const QList<int> empty = {1, 1, 1, 1, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1,
                                  1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 0, 1};
        auto names = [&](const QList<int> &index) {
            QStringList n;
            for (int i = 0; i < kinds.size(); ++i)
                n << kinds[i] + QLatin1Char('_') + QString::number(index[i]);
            return n;
        };
        QTest::newRow("page 0, fields at their minimum") << 0 << names(minimum) + QStringList{"label_2", "popbox_2"}
                                                          << QStringList{"label_2"};
        QTest::newRow("page 1, fields at their maximum") << 1 << names(maximum) << QStringList();
        QTest::newRow("page 2, fields empty") << 2 << names(empty) << QStringList();
    }
    void openAndSave()
    {
        QFETCH(int, page);
        QFETCH(QStringList, names);
        QFETCH(QStringList, rewritten);
        makeProject(root());
        const QByteArray input = readAll(root() + "Plugin/" + pageFile(page));
        const QByteArray expected = readAll(fixtureDir() + "saved/" + pageFile(page));
        QVERIFY(!input.isEmpty() && !expected.isEmpty());

        // the table covers the file, and the expected file differs from it
        // in the commented lines only
        QCOMPARE(objectNames(input), names);
        const QMap<QString, QString> before = linesByName(input), after = linesByName(expected);
        QCOMPARE(after.keys(), before.keys());
        QStringList differing;
        for (const QString &key : before.keys())
            if (before[key] != after[key])
                differing << key;
        QCOMPARE(differing, rewritten);

        // an old stamp, so that the save is seen to write the file
        const QDateTime old(QDate(2001, 1, 1), QTime(0, 0));
        for (int p = 0; p < 3; ++p) {
            QFile f(root() + "Plugin/" + pageFile(p));
            QVERIFY(f.open(QIODevice::ReadWrite) && f.setFileTime(old, QFileDevice::FileModificationTime));
        }
        QVERIFY(openWindow(root() + "all_kinds.uiprj"));
        if (page != 0)
            clickPage(*m_w, page);
        for (const QString &name : names)
            QVERIFY2(m_w->canvasWidgets()->find(name), qPrintable(name + " is not on the canvas"));
        QCOMPARE(m_w->canvasWidgets()->count(), names.size());
        const QString log = m_w->logView()->toPlainText();
        QVERIFY2(!log.contains(QLatin1String("Error")), qPrintable(log));

        trigger("actionSave_All");
        const QString saved = root() + "Plugin/" + pageFile(page);
        QVERIFY(QFileInfo(saved).lastModified() > old);
        const QByteArray written = readAll(saved);
        if (written != expected) {
            const QMap<QString, QString> got = linesByName(written);
            for (const QString &key : after.keys())
                if (got.value(key) != after[key])
                    qWarning("%s\n  saved:    %s\n  expected: %s", qPrintable(key), qPrintable(got.value(key)),
                             qPrintable(after[key]));
        }
        QCOMPARE(written, expected);
        // the page list is written back as it stands, too
        QCOMPARE(readAll(root() + "all_kinds.uiprj"), readAll(fixtureDir() + "all_kinds.uiprj"));
    }

    // (c) The build writes the image, and each page's streams hold one
    // record per widget line in the stream of its class, with the size its
    // kind's record has, plus the page's own touch record (type 0) from its
    // Page: line. Display types: label and Statictext 1, number 2, icon 3,
    // pngNumber 4, gif 5, RTC 6, qrcode 7, Clock 8, textroll 9, wav 10,
    // progress 11, rProgress 12, curve 13, encoder 14, bitIcon 15, uitimer 16,
    // needle 18, autoVar 26, camera 32, video 34. Touch: button 1, keypad 2,
    // varAdj 3, slider 4, kbkey 5, slmenu 6, rtouch 7, popbox 8, enkeyB 9,
    // cnkeyB 10, batVar 11, slidemenuPro 15.
    // The passes give the order: touch slidemenuPro, Page:, button, batVar,
    // rtouch, then the other touch kinds in file order; display gif,
    // rProgress, bitIcon, icon, then the other display kinds in file order.
    // Pages 0 and 2 have no overlap groups (their widgets have no size), so
    // their streams stand in exactly this order; on page 1 every widget has
    // the same rectangle, the groups move members behind their parents, and
    // only the records themselves are compared.
    void records_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QList<int>>("display");
        QTest::addColumn<QList<int>>("touch");
        QTest::addColumn<bool>("inOrder");
        QTest::addColumn<QList<int>>("encoderModes"); // the modes of the encoder's non-empty items
        QTest::addColumn<int>("touchFlags");          // 0xC0 where every touch line reports to the host
        QTest::addColumn<QList<int>>("overlaid");     // icon, gif and bitIcon with overlap (effects) on
        // file order: label, Statictext, textroll, number, pngNumber, autoVar,
        // encoder, progress, needle, RTC, Clock, uitimer, wav, video, camera,
        // qrcode, curve; popbox, kbkey, varAdj, slider, keypad, enkeyB, cnkeyB, slmenu
        const QList<int> display = {5, 12, 15, 3, 1, 1, 9, 2, 4, 26, 14, 11, 18, 6, 8, 16, 10, 34, 32, 7, 13};
        const QList<int> touch = {15, 0, 1, 11, 7, 8, 5, 3, 4, 2, 9, 10, 6};
        // page 0 ends with a second static text and a second popbox
        QTest::newRow("page 0, minimum") << 0 << display + QList<int>{1} << touch + QList<int>{8} << true
                                         << QList<int>{1, 2, 3, 4} << 0x80 << QList<int>();
        QTest::newRow("page 1, maximum") << 1 << display << touch << false
                                         << QList<int>{1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4} << 0xC0
                                         << QList<int>{3, 5, 15};
        QTest::newRow("page 2, empty") << 2 << display << touch << true << QList<int>() << 0x80 << QList<int>();
    }
    void records()
    {
        QFETCH(int, page);
        QFETCH(QList<int>, display);
        QFETCH(QList<int>, touch);
        QFETCH(bool, inOrder);
        QFETCH(QList<int>, encoderModes);
        QFETCH(int, touchFlags);
        QFETCH(QList<int>, overlaid);
        const BuildOutcome &b = built();
        QVERIFY(b.result.imageWritten);
        const QByteArray &image = b.image;
        QVERIFY(image.size() > 0x180);
        QCOMPARE(le32(image, 0x0C), 3u); // pages
        const int entry = int(le32(image, 0x08)) + 12 * page;
        QVERIFY(entry + 12 <= image.size());
        const quint32 dAt = le32(image, entry), tAt = le32(image, entry + 6);
        const quint16 dLen = le16(image, entry + 4), tLen = le16(image, entry + 10);
        QCOMPARE(tAt, dAt + dLen); // the touch records follow the display records
        QVERIFY(qint64(tAt) + tLen <= image.size());
        QList<int> over;
        const QList<int> d = displayTypes(image.mid(int(dAt), dLen), encoderModes, &over);
        const QList<int> t = touchTypes(image.mid(int(tAt), tLen), touchFlags);
        if (inOrder) {
            QCOMPARE(d, display);
            QCOMPARE(t, touch);
        } else {
            QCOMPARE(sorted(d), sorted(display));
            QCOMPARE(sorted(t), sorted(touch));
        }
        QCOMPARE(sorted(over), overlaid);
    }

    // (c) The build complains only where these lines call for it. Page 0
    // has no complaint: every address is 0, every picture, gif and
    // font exists and no picture is asked for in two formats. On page 1 the
    // write addresses are 0xFFFF, beyond the variable memory: the kinds
    // that store a first value there say so (label, number, pngNumber,
    // icon, gif, camera: ": write address is more than Max value";
    // textroll and needle: ":  more than Max value"); the kinds that just
    // store nothing beyond the memory may say so too, as may a curve, which
    // complains of any parameterAddr that isn't below 0xFFFF and inside the
    // memory. On page 2 the empty
    // pictures and gif are missing, and an empty address may read as
    // 0xFFFF where a kind uses the second hexadecimal reader. The page
    // range check may list any widget that isn't wholly on the panel.
    void complaints()
    {
        const BuildOutcome &b = built();
        QVERIFY(b.result.imageWritten);
        struct Allowed {
            int page;
            QString name; // empty: any
            QStringList messages;
            bool required;
        };
        const QString writeAddr = QStringLiteral("write address is more than Max value");
        const QString beyond = QStringLiteral(":  more than Max value");
        QList<Allowed> allowed;
        for (const char *kind : {"label", "number", "pngNumber", "icon", "gif", "camera"})
            allowed.append({1, QLatin1String(kind) + kMaxName, {writeAddr}, true});
        for (const char *kind : {"textroll", "needle"})
            allowed.append({1, QLatin1String(kind) + kMaxName, {beyond}, true});
        allowed.append({1, "qrcode" + kMaxName, {writeAddr, beyond}, true});
        for (const char *kind : {"autoVar", "slider", "progress", "rProgress", "rtouch", "uitimer", "slmenu"})
            allowed.append({1, QLatin1String(kind) + kMaxName, {writeAddr, beyond}, false});
        allowed.append({1, "curve" + kMaxName, {"Curve parameterAddr + datas are more than Max value"}, false});
        allowed.append({2, QString(),
                        {", the Icon's eImage is missing", "firstImage is missing", "firstImage or lastImage is missing",
                         "_Gifxxx isn't in the Gif folder", writeAddr, beyond},
                        false});

        const QRegularExpression heading(QStringLiteral("^Page(\\d+):$"));
        const QRegularExpression onPage(QStringLiteral("^Page(\\d+)[:,]"));
        const QRegularExpression range(QStringLiteral("^Page\\d+,widget_Name:.*, X:-?\\d+ Y:-?\\d+$"));
        QStringList unexpected;
        QSet<int> seen;
        int page = -1;
        for (const QString &line : b.result.errorText.split(QLatin1Char('\n'))) {
            if (line.isEmpty() || line == QLatin1String("Out of page range!") || range.match(line).hasMatch())
                continue;
            if (const auto m = heading.match(line); m.hasMatch()) {
                page = m.captured(1).toInt();
                continue;
            }
            const auto m = onPage.match(line);
            const int p = m.hasMatch() ? m.captured(1).toInt() : page;
            bool ok = false;
            for (int i = 0; i < allowed.size() && !ok; ++i) {
                const Allowed &a = allowed[i];
                const bool named = a.name.isEmpty() || line.startsWith(a.name) || line.contains(QLatin1String(": ") + a.name);
                if (a.page != p || !named)
                    continue;
                for (const QString &message : a.messages)
                    ok = ok || line.contains(message);
                if (ok)
                    seen.insert(i);
            }
            if (!ok)
                unexpected << QStringLiteral("[page %1] %2").arg(p).arg(line);
        }
        QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char('\n'))));
        QStringList missing;
        for (int i = 0; i < allowed.size(); ++i)
            if (allowed[i].required && !seen.contains(i))
                missing << allowed[i].name;
        QVERIFY2(missing.isEmpty(), qPrintable("no complaint for: " + missing.join(QLatin1String(", "))));
    }

    // (c) A build runs the page range check before the page block and
    // sends what it finds to its error log: on page 1 every widget but the
    // gif stands at 32767, 32767, far off the 800 x 480 panel, and is
    // listed as "Page1,widget_Name:<name>, X:32767 Y:32767".
    void outOfPageRange()
    {
        const BuildOutcome &b = built();
        QVERIFY(b.result.imageWritten);
        const QString found = b.result.errorText + b.result.log.join(QLatin1Char('\n'));
        QStringList missing;
        for (const char *kind : {"button", "popbox", "kbkey", "label", "Statictext", "textroll", "number", "pngNumber",
                                 "icon", "bitIcon", "varAdj", "batVar", "autoVar", "encoder", "slider", "progress",
                                 "rProgress", "rtouch", "needle", "keypad", "enkeyB", "cnkeyB", "RTC", "Clock",
                                 "uitimer", "wav", "video", "camera", "qrcode", "slmenu", "slidemenuPro", "curve"}) {
            const QString line = "Page1,widget_Name:" + QLatin1String(kind) + kMaxName + ", X:32767 Y:32767";
            if (!found.contains(line))
                missing << QLatin1String(kind);
        }
        QVERIFY2(missing.isEmpty(), qPrintable("not listed as out of the page: " + missing.join(QLatin1String(", "))));
    }
};

QTEST_MAIN(TestAllKinds)
#include "tst_all_kinds.moc"
