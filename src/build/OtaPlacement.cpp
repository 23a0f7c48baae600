#include "build/OtaPlacement.h"

#include "build/FlashLayout.h"
#include "project/ProjectSettings.h"
#include "project/TextFiles.h"

#include "project/TextFiles.h"

#include <QFile>
#include <QList>

namespace vantile {

namespace {

const char *const kWords[kMaterialCount] = {"Font", "MultiLanguage", "WAV", "GIF", "Image", "Icon", "Text"};

qint64 decimal(const QString &text)
{
    return IniValue::integer(text.toLatin1());
}

// The four kinds of per-block keys, in the order the file lists them.
struct PerBlockKey {
    const char *suffix;
    QString MaterialAddress::*field;
};
const PerBlockKey kPerBlock[] = {
    {"_StartAddr:", &MaterialAddress::start},
    {"_EndAddr:", &MaterialAddress::end},
    {"_CurrentSize:", &MaterialAddress::currentSize},
    {"_ReserveLength:", &MaterialAddress::reserveKb},
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

OtaAddresses OtaAddresses::fromText(const QByteArray &text)
{
    OtaAddresses a;
    QByteArray body = text;
    if (body.startsWith("\xEF\xBB\xBF"))
        body.remove(0, 3);
    for (QByteArray line : body.split('\n')) {
        line = line.trimmed();
        const int colon = line.indexOf(':');
        if (colon <= 0)
            continue;
        const QByteArray key = line.left(colon + 1);
        const QString value = QString::fromUtf8(line.mid(colon + 1)).trimmed();
        if (key == "isChecked:") {
            a.enabled = value == QLatin1String("true");
            continue;
        }
        bool matched = false;
        for (const PerBlockKey &k : kPerBlock) {
            for (int i = 0; i < kMaterialCount && !matched; ++i)
                if (key == QByteArray(kWords[i]) + k.suffix) {
                    a.blocks[i].*k.field = value;
                    matched = true;
                }
        }
        for (const CountKey &k : kCounts)
            if (!matched && key == k.key) {
                a.*k.field = value;
                matched = true;
            }
    }
    return a;
}

OtaAddresses OtaAddresses::load(const QString &path, bool *found)
{
    QByteArray bytes;
    const bool ok = TextFiles::readFile(path, &bytes) == TextFiles::ReadStatus::Ok;
    if (found)
        *found = ok;
    return ok ? fromText(bytes) : OtaAddresses();
}

bool OtaAddresses::save(const QString &path) const
{
    return TextFiles::writeAtomically(path, toText());
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

TailOutcome blockTail(qint64 end, const QString &reserveKb, const QString &previousReserveKb,
                      const QString &previousEnd, bool precedingEndUnchanged, qint64 alignUnit)
{
    TailOutcome t;
    const qint64 proposed = Flash::roundUp(end + decimal(reserveKb) * 1024, alignUnit);
    const qint64 previous = decimal(previousEnd);
    t.kept = !previousEnd.isEmpty() && end <= previous && reserveKb == previousReserveKb && precedingEndUnchanged;
    t.endAddress = t.kept ? previous : proposed;
    t.pad = t.endAddress - end;
    return t;
}

OtaPlacement::OtaPlacement(const OtaAddresses &current, const OtaMemory &previous, qint64 alignUnit)
    : m_addresses(current)
    , m_previous(previous)
    , m_align(alignUnit)
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
    if (built)
        m_addresses.blocks[i].currentSize = QString::number(end - start);
    if (!enabled())
        return end;
    const bool precedingUnchanged = i == 0 || m_addresses.blocks[i - 1].end == m_previous.end[i - 1];
    const TailOutcome t = blockTail(end, m_addresses.blocks[i].reserveKb, m_previous.reserveKb[i],
                                    m_previous.end[i], precedingUnchanged, m_align);
    m_addresses.blocks[i].end = QString::number(t.endAddress);
    m_pad[i] = t.pad;
    return t.endAddress;
}

} // namespace vantile
