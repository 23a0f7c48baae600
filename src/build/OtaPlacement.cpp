#include "build/OtaPlacement.h"

#include "build/FlashLayout.h"
#include "project/TextFiles.h"

namespace vantile {

namespace {

const char *const kWords[kMaterialCount] = {"Font", "MultiLanguage", "WAV", "GIF", "Image", "Icon", "Text"};

enum class ValueKind { Address, Number };

// The four kinds of per-block keys, in the order the file lists them.
struct PerBlockKey {
    const char *suffix;
    QString MaterialAddress::*field;
    ValueKind kind;
};
const PerBlockKey kPerBlock[] = {
    {"_StartAddr:", &MaterialAddress::start, ValueKind::Address},
    {"_EndAddr:", &MaterialAddress::end, ValueKind::Address},
    {"_CurrentSize:", &MaterialAddress::currentSize, ValueKind::Number},
    {"_ReserveLength:", &MaterialAddress::reserveKb, ValueKind::Number},
};

struct CountKey {
    const char *key;
    QString OtaAddresses::*field;
};
const CountKey kCounts[] = {
    {"WAV_Num:", &OtaAddresses::wavNum},
    {"GIF_Num:", &OtaAddresses::gifNum},
    {"Image_Num:", &OtaAddresses::imageNum},
    {"Icon_Num:", &OtaAddresses::iconNum},
};

bool isDecimal(const QString &text)
{
    if (text.isEmpty() || text.size() > 10)
        return false;
    for (QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return text.toLongLong() <= 0xFFFFFFFFll;
}

// A decimal text; empty and unreadable count as 0.
qint64 number(const QString &text)
{
    return isDecimal(text) ? text.toLongLong() : 0;
}

bool readable(const QString &value, ValueKind kind)
{
    return value.isEmpty() || (kind == ValueKind::Address ? OtaAddresses::addressValue(value) >= 0 : isDecimal(value));
}

// A line as a message shows it: short, without control characters.
QString shown(const QString &line)
{
    QString s = line.left(60);
    for (QChar &c : s)
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = QLatin1Char('?');
    return QLatin1Char('"') + s + (line.size() > 60 ? QStringLiteral("...\"") : QStringLiteral("\""));
}

} // namespace

bool MaterialAddress::operator==(const MaterialAddress &o) const
{
    return start == o.start && end == o.end && currentSize == o.currentSize && reserveKb == o.reserveKb;
}

bool OtaAddresses::operator==(const OtaAddresses &o) const
{
    for (int i = 0; i < kMaterialCount; ++i)
        if (!(blocks[i] == o.blocks[i]))
            return false;
    return enabled == o.enabled && wavNum == o.wavNum && gifNum == o.gifNum && imageNum == o.imageNum
           && iconNum == o.iconNum;
}

QString OtaAddresses::blockWord(Material m)
{
    return QString::fromLatin1(kWords[int(m)]);
}

qint64 OtaAddresses::addressValue(const QString &textIn)
{
    const QString text = textIn.trimmed();
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        const QString digits = text.mid(2);
        bool ok = false;
        const qint64 v = digits.size() <= 8 ? digits.toLongLong(&ok, 16) : -1;
        return ok && !digits.contains(QLatin1Char('+')) && !digits.contains(QLatin1Char('-')) ? v : -1;
    }
    return isDecimal(text) ? text.toLongLong() : -1;
}

QByteArray OtaAddresses::toText() const
{
    QByteArray out("[INFO]\n");
    out += enabled ? "isChecked:true\n" : "isChecked:false\n";
    for (const PerBlockKey &k : kPerBlock)
        for (int i = 0; i < kMaterialCount; ++i)
            out += QByteArray(kWords[i]) + k.suffix + (blocks[i].*k.field).toUtf8() + '\n';
    for (const CountKey &k : kCounts)
        out += QByteArray(k.key) + (this->*k.field).toUtf8() + '\n';
    return out;
}

OtaAddresses OtaAddresses::fromText(const QByteArray &text, QStringList *problems)
{
    OtaAddresses a;
    QByteArray body = text;
    if (body.startsWith("\xEF\xBB\xBF"))
        body.remove(0, 3);
    auto problem = [problems](int n, const QString &what) {
        if (problems)
            problems->append(QStringLiteral("line %1: ").arg(n) + what);
    };
    const QList<QByteArray> lines = body.split('\n');
    for (int n = 1; n <= lines.size(); ++n) {
        const QByteArray &raw = lines[n - 1]; // NUL bytes included
        const QString line = QString::fromUtf8(raw.constData(), raw.size()).trimmed();
        if (line.isEmpty() || line == QLatin1String("[INFO]"))
            continue;
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon <= 0) {
            problem(n, shown(line) + QStringLiteral(" is not \"key:value\""));
            continue;
        }
        const QString key = line.left(colon + 1);
        const QString value = line.mid(colon + 1).trimmed();
        if (key == QLatin1String("isChecked:")) {
            if (value != QLatin1String("true") && value != QLatin1String("false"))
                problem(n, shown(line) + QStringLiteral(" is neither true nor false"));
            a.enabled = value == QLatin1String("true");
            continue;
        }
        QString *field = nullptr;
        ValueKind kind = ValueKind::Number;
        for (const PerBlockKey &k : kPerBlock)
            for (int i = 0; i < kMaterialCount && !field; ++i)
                if (key == QLatin1String(kWords[i]) + QLatin1String(k.suffix)) {
                    field = &(a.blocks[i].*k.field);
                    kind = k.kind;
                }
        for (const CountKey &k : kCounts)
            if (!field && key == QLatin1String(k.key))
                field = &(a.*k.field);
        if (!field)
            problem(n, QStringLiteral("unknown key ") + shown(key));
        else if (!readable(value, kind))
            problem(n, shown(line) + (kind == ValueKind::Address ? QStringLiteral(" is not an address")
                                                                 : QStringLiteral(" is not a decimal number")));
        else
            *field = value;
    }
    return a;
}

OtaAddresses OtaAddresses::load(const QString &path, bool *found, QStringList *problems)
{
    QByteArray bytes;
    FileError error;
    const TextFiles::ReadStatus status = TextFiles::readFile(path, &bytes, &error);
    if (found)
        *found = status == TextFiles::ReadStatus::Ok;
    if (status == TextFiles::ReadStatus::Ok)
        return fromText(bytes, problems);
    if (status != TextFiles::ReadStatus::Missing && problems)
        problems->append(error.reason.isEmpty() ? QStringLiteral("the file can't be read") : error.reason);
    return OtaAddresses();
}

bool OtaAddresses::save(const QString &path, QString *error) const
{
    return TextFiles::writeAtomically(path, toText(), error);
}

OtaMemory OtaMemory::of(const OtaAddresses &a)
{
    OtaMemory m;
    for (int i = 0; i < kMaterialCount; ++i) {
        m.reserveKb[i] = a.blocks[i].reserveKb;
        m.end[i] = a.blocks[i].end;
    }
    return m;
}

namespace {

// Two end texts name the same address (decimal or "0x"), or are both empty.
bool sameAddress(const QString &a, const QString &b)
{
    const qint64 x = OtaAddresses::addressValue(a), y = OtaAddresses::addressValue(b);
    return x >= 0 ? x == y : a.trimmed().isEmpty() && b.trimmed().isEmpty();
}

} // namespace

TailOutcome blockTail(qint64 end, const QString &reserveKb, const QString &previousReserveKb,
                      const QString &previousEnd, bool precedingEndUnchanged, qint64 alignUnit, qint64 flashLimit)
{
    TailOutcome t;
    qint64 proposed = Flash::roundUp(end + number(reserveKb.trimmed()) * 1024, alignUnit);
    if (flashLimit > 0 && proposed > flashLimit && proposed > Flash::roundUp(end, alignUnit)) {
        t.reserveRefused = true;
        proposed = Flash::roundUp(end, alignUnit);
    }
    const qint64 previous = OtaAddresses::addressValue(previousEnd);
    const bool sane = flashLimit <= 0 || previous <= qMax(flashLimit, proposed);
    t.grew = previous >= 0 && end > previous;
    t.kept = previous >= 0 && sane && !t.grew && reserveKb.trimmed() == previousReserveKb.trimmed()
             && precedingEndUnchanged;
    t.endAddress = t.kept ? previous : proposed;
    t.pad = t.endAddress - end;
    return t;
}

QList<TailOutcome> recomputeBlocks(OtaAddresses &a, const OtaMemory &previous, qint64 alignUnit, qint64 flashLimit)
{
    QList<TailOutcome> outcomes;
    qint64 start = OtaAddresses::addressValue(a.blocks[0].start);
    if (start < 0)
        return outcomes;
    start = Flash::roundUp(start, alignUnit);
    for (int i = 0; i < kMaterialCount; ++i) {
        MaterialAddress &b = a.blocks[i];
        const bool precedingUnchanged = i == 0 || sameAddress(a.blocks[i - 1].end, previous.end[i - 1]);
        const TailOutcome t = blockTail(start + number(b.currentSize.trimmed()), b.reserveKb, previous.reserveKb[i],
                                        previous.end[i], precedingUnchanged, alignUnit, flashLimit);
        b.start = QString::number(start);
        b.end = QString::number(t.endAddress);
        outcomes << t;
        start = t.endAddress;
    }
    return outcomes;
}

OtaPlacement::OtaPlacement(const OtaAddresses &current, const OtaMemory &previous, qint64 alignUnit,
                           qint64 flashLimit)
    : m_addresses(current)
    , m_previous(previous)
    , m_align(alignUnit)
    , m_limit(flashLimit)
{
    for (MaterialAddress &b : m_addresses.blocks)
        b.currentSize.clear();
}

qint64 OtaPlacement::startFont(qint64 running)
{
    if (enabled()) {
        running = Flash::roundUp(running, m_align);
        m_fontPaddedStart = running;
    }
    m_addresses[Material::Font].start = QString::number(running);
    return running;
}

void OtaPlacement::startBlock(Material m, qint64 running)
{
    m_addresses[m].start = QString::number(running);
}

qint64 OtaPlacement::finishBlock(Material m, qint64 start, qint64 end, bool built)
{
    const int i = int(m);
    MaterialAddress &b = m_addresses.blocks[i];
    if (built)
        b.currentSize = QString::number(end - start);
    if (!enabled())
        return end;
    const bool precedingUnchanged = i == 0 || sameAddress(m_addresses.blocks[i - 1].end, m_previous.end[i - 1]);
    const TailOutcome t =
        blockTail(end, b.reserveKb, m_previous.reserveKb[i], m_previous.end[i], precedingUnchanged, m_align, m_limit);
    if (t.reserveRefused)
        m_complaints << QStringLiteral("The ") + OtaAddresses::blockWord(m) + QStringLiteral(" block's reserve of ")
                            + b.reserveKb.trimmed() + QStringLiteral(" KB in Addr_Info.txt reaches beyond the flash (")
                            + QString::number(m_limit) + QStringLiteral(" bytes): not used");
    if (t.grew && precedingUnchanged) // not merely pushed by the block before
        m_notes << QStringLiteral("The ") + OtaAddresses::blockWord(m) + QStringLiteral(" block ends at ")
                       + QString::number(end) + QStringLiteral(", beyond its previous end ")
                       + QString::number(OtaAddresses::addressValue(m_previous.end[i]))
                       + (m == Material::StaticText ? QStringLiteral(": its end moves")
                                                    : QStringLiteral(": its end and the blocks behind it move"));
    b.end = QString::number(t.endAddress);
    m_pad[i] = t.pad;
    return t.endAddress;
}

} // namespace vantile
