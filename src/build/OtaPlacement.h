#pragma once
// Fixed places for the material blocks, so that an update over the air can
// replace one kind of material without moving the others.
//
// Addr_Info.txt in the project keeps, for each of the seven material blocks
// (Font, MultiLanguage, WAV, GIF, Image, Icon, Text), its start and end
// address as decimal texts ("0x" hexadecimal is read too), its size in
// bytes as last built, and the length reserved behind it in KB. The OTA
// addresses dialog and the build both read and write the file through
// OtaAddresses, and both place the blocks by blockTail().
//
// The rule, with the box checked: the Font block starts at the page blocks'
// end rounded up to the align unit. Behind each block, with `end` the
// address where its bytes stop, the proposed end is end + reserve rounded
// up to the align unit. The block keeps the end address of the previous
// build when it still fits in it, its reserve text is unchanged and the
// block before kept its end too; otherwise its end becomes the proposed
// one. The next block starts at that end, the gap is filled with 0xFF.
// So a block that shrank leaves every address as it was, and one that grew
// beyond its end moves its end and all later blocks. A reserve that would
// reach beyond the flash is an error and is not used.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace vantile {

// The material blocks in image order.
enum class Material : int { Font, Language, Wav, Gif, Picture, Icon, StaticText };
constexpr int kMaterialCount = 7;

struct MaterialAddress {
    QString start;       // decimal image address
    QString end;         // decimal address where the next block starts
    QString currentSize; // decimal byte count of the block as last built
    QString reserveKb;   // decimal KB reserved for the block
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
    // "0x" hexadecimal or decimal; -1 for an empty or unreadable text.
    static qint64 addressValue(const QString &text);

    // "[INFO]", "isChecked:...", then the starts, ends, sizes, reserves of
    // the seven blocks and the four counts, one "Key:value" a line.
    QByteArray toText() const;
    // Reads by key, in any order. A line that is not "Key:value", an
    // unknown key or a value that doesn't read goes to *problems ("line N:
    // ..."); such a value stays empty, the rest is read.
    static OtaAddresses fromText(const QByteArray &text, QStringList *problems = nullptr);

    // A missing file gives the unchecked default and *found false. A file
    // that can't be read is a problem too.
    static OtaAddresses load(const QString &path, bool *found = nullptr, QStringList *problems = nullptr);
    bool save(const QString &path, QString *error = nullptr) const;
};

// What a build remembers for the next one: the reserve and end texts.
struct OtaMemory {
    QString reserveKb[kMaterialCount];
    QString end[kMaterialCount];
    static OtaMemory of(const OtaAddresses &addresses);
};

// One block's tail in OTA mode.
struct TailOutcome {
    qint64 endAddress = 0;       // where the next block starts
    qint64 pad = 0;              // 0xFF bytes behind the block
    bool kept = false;           // the previous end address stands
    bool grew = false;           // the block reaches beyond its previous end
    bool reserveRefused = false; // the reserve reached beyond the flash
};

// The block tail rule. `end` is the address behind the block's bytes.
// precedingEndUnchanged is always true for the first block. flashLimit 0
// means no limit; otherwise a reserve that alone carries the end beyond the
// flash is not used (as if 0), and a previous end beyond both the flash and
// the proposed end is not kept.
TailOutcome blockTail(qint64 end, const QString &reserveKb, const QString &previousReserveKb,
                      const QString &previousEnd, bool precedingEndUnchanged, qint64 alignUnit,
                      qint64 flashLimit = 0);

// The same, for all seven blocks as the dialog shows them: from the Font
// start (rounded up) on, each block of its current size is given its tail
// against `previous`, and the next block starts at its end. Every start
// and end text is rewritten. Without a readable Font start nothing changes
// and the result is empty; otherwise it holds the seven outcomes.
QList<TailOutcome> recomputeBlocks(OtaAddresses &addresses, const OtaMemory &previous, qint64 alignUnit,
                                   qint64 flashLimit = 0);

// The placement of the material blocks during one build.
class OtaPlacement
{
public:
    // Clears the current sizes; with the box unchecked nothing moves.
    // `previous` holds the reserve and end texts of the last build;
    // `flashLimit` is the flash size in bytes.
    OtaPlacement(const OtaAddresses &current, const OtaMemory &previous, qint64 alignUnit, qint64 flashLimit);

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
    // Reserves that reached beyond the flash, one line each, naming the block.
    const QStringList &complaints() const { return m_complaints; }
    // For the build log: blocks that grew beyond their previous end while
    // the block before them stayed.
    const QStringList &notes() const { return m_notes; }

private:
    OtaAddresses m_addresses;
    OtaMemory m_previous;
    qint64 m_align;
    qint64 m_limit;
    qint64 m_pad[kMaterialCount] = {};
    qint64 m_fontPaddedStart = 0;
    QStringList m_complaints;
    QStringList m_notes;
};

} // namespace vantile
