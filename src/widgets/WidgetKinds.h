#pragma once
// The 33 widget kinds: one table with their words, limits and record
// class, and the one order in which a line's kind is told apart.

#include <QString>
#include <QStringList>

#include <array>

namespace vantile {

// In the order of the kinds table. Statictext is a label with the static
// mark set: same object-name prefix, same slot table, same record.
enum class WidgetKind : quint8 {
    Label,
    Statictext,
    Number,
    Button,
    Icon,
    BitIcon,
    Gif,
    VarAdj,
    Slider,
    RTC,
    QRCode,
    Clock,
    Keypad,
    KBKey,
    TextRoll,
    PngNumber,
    Wav,
    SlMenu,
    SlideMenuPro,
    RTouch,
    Progress,
    RProgress,
    ENKeyB,
    CNKeyB,
    BatVar,
    Curve,
    PopBox,
    Encoder,
    UITimer,
    Camera,
    Video,
    AutoVar,
    Needle,
    None
};

constexpr int kWidgetKindCount = 33;

inline int kindIndex(WidgetKind k) { return static_cast<int>(k); }

enum class RecordClass : quint8 { Touch, Display };

struct KindInfo {
    WidgetKind kind;
    const char *word;          // the kind word ("Statictext" for the static label)
    const char *prefix;        // object names are prefix + "_" + index
    const char *toolWord;      // what the tool bar action arms
    const char *caption;       // tool bar text, Chinese "\n" English
    int maximum;               // size of the slot table
    WidgetKind slotOwner;      // kind whose slot table holds these widgets
    RecordClass recordClass;
    quint8 type;               // byte 0 of the binary record
    const char *overWord;      // "New <overWord> id is over the maximum"
    const char *loadWord;      // "Error <loadWord> index:"; nullptr: no message
    const char *parameterWord; // "<name>: <word> parameterAddr + datas are ..."; nullptr: the kind word
};

namespace WidgetKinds {

const KindInfo &info(WidgetKind kind);
// All 33 kinds in table order.
const std::array<WidgetKind, kWidgetKindCount> &all();

// The order in which a line's kind is tested. Statictext comes first: it
// shares the "label_" prefix and is told apart by its static mark.
const std::array<WidgetKind, kWidgetKindCount> &dispatchOrder();

// The distinct object-name prefixes in dispatch order (32 words): the words
// that open a record in a page file, besides "Page" and the merge line.
QStringList kindWords();

// Kind of an object name ("button_3"): the prefix and its "_". A static
// label is only known from its line, so a "label_N" name gives Label.
WidgetKind kindOfName(const QString &objectName);
// Kind of a page-file line; None for the "Page:" line, the merge line and
// anything else. A label line whose static mark is 1 gives Statictext.
WidgetKind kindOfLine(const QString &line);
WidgetKind kindOfToolWord(const QString &toolWord);
WidgetKind kindOfWord(const QString &word);

QString objectName(WidgetKind kind, quint32 index);

bool indexFits(WidgetKind kind, quint32 index);
// The load failure text for an index beyond the table ("Error button
// index:128"); empty when the index fits or the kind has no message.
QString loadIndexError(WidgetKind kind, quint32 index);
// Tool bar caption, Chinese and English with a line break between.
QString caption(WidgetKind kind);
// "New Button id is over the maximum"
QString overMaximumMessage(WidgetKind kind);
// The word in "<name>: <word> parameterAddr + datas are more than Max value".
QString parameterWord(WidgetKind kind);

} // namespace WidgetKinds

} // namespace vantile
