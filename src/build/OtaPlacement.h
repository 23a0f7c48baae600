#pragma once
// Fixed places for the material blocks, so that an update over the air can
// replace one kind of material without moving the others.
//
// Addr_Info.txt in the project keeps, for each of the seven material blocks
// (Font, MultiLanguage, WAV, GIF, Image, Icon, Text), its start and end
// address, its present size and the length reserved behind it, all as
// decimal texts (the reserve in KB). When "isChecked" is true the build
// aligns the Font block and gives every block its reserved tail.

#include <QByteArray>
#include <QString>

namespace vantile {

// The material blocks in image order.
enum class Material : int { Font, Language, Wav, Gif, Picture, Icon, StaticText };
constexpr int kMaterialCount = 7;

struct MaterialAddress {
    QString start;       // decimal image address
    QString end;         // decimal address behind the block and its reserve
    QString currentSize; // decimal byte count of the block as built
    QString reserveKb;   // decimal KB reserved behind the block
    bool operator==(const MaterialAddress &o) const;
};

// The content of Addr_Info.txt.
struct OtaAddresses {
    bool enabled = false; // "isChecked:"
    MaterialAddress blocks[kMaterialCount];
    QString wavNum, gifNum, imageNum, iconNum;

    MaterialAddress &operator[](Material m) { return blocks[int(m)]; }
    const MaterialAddress &operator[](Material m) const { return blocks[int(m)]; }
    bool operator==(const OtaAddresses &o) const;

    // The word of a block in the file's keys: "Font", "MultiLanguage", ...
    static QString blockWord(Material m);

    // "[INFO]", "isChecked:...", then the starts, ends, sizes, reserves of
    // the seven blocks and the four counts, one "Key:value" a line.
    QByteArray toText() const;
    // Reads by key, in any order; an unknown line is skipped, a missing key
    // leaves the value empty.
    static OtaAddresses fromText(const QByteArray &text);

    // A missing file gives the unchecked default and *found false.
    static OtaAddresses load(const QString &path, bool *found = nullptr);
    bool save(const QString &path) const;
};

// What a build remembers for the next one: the reserve and end texts.
struct OtaMemory {
    QString reserveKb[kMaterialCount];
    QString end[kMaterialCount];
    static OtaMemory of(const OtaAddresses &addresses);
};

// One block's tail in OTA mode.
struct TailOutcome {
    qint64 endAddress = 0; // where the next block starts
    qint64 pad = 0;        // 0xFF bytes behind the block
    bool kept = false;     // the previous end address stands
};

// The block tail rule. `end` is the running address behind the block. The
// previous end stays when the block still fits in it, its reserve text is
// unchanged, and the block before kept its end (always true for the first
// block); otherwise the end becomes end + reserve, rounded up to alignUnit.
TailOutcome blockTail(qint64 end, const QString &reserveKb, const QString &previousReserveKb,
                      const QString &previousEnd, bool precedingEndUnchanged, qint64 alignUnit);

// The placement of the material blocks during one build.
class OtaPlacement
{
public:
    // Clears the current sizes; with the flag off nothing moves.
    OtaPlacement(const OtaAddresses &current, const OtaMemory &previous, qint64 alignUnit);

    bool enabled() const { return m_addresses.enabled; }

    // Before the Font block: the running address, aligned in OTA mode. The
    // start text of the Font block is set to the result.
    qint64 startFont(qint64 running);
    // Before any later block: records its start text.
    void startBlock(Material m, qint64 running);
    // Behind a block that ran from `start` to `end`. `built` says whether
    // the block's file exists (its size text is only set then). Returns
    // the running address for the next block.
    qint64 finishBlock(Material m, qint64 start, qint64 end, bool built);

    qint64 pad(Material m) const { return m_pad[int(m)]; }
    qint64 fontPaddedStart() const { return m_fontPaddedStart; }
    const OtaAddresses &addresses() const { return m_addresses; }

private:
    OtaAddresses m_addresses;
    OtaMemory m_previous;
    qint64 m_align;
    qint64 m_pad[kMaterialCount] = {};
    qint64 m_fontPaddedStart = 0;
};

} // namespace vantile
