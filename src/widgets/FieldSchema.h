#pragma once
// A kind's fields described as data: for each field its key (which is also
// the row key of the parameter table), its place in the table and in the
// line, how it is written and read, its default and its labels. Parsing,
// writing, the table fill and the apply-edit step are derived from this
// description (see WidgetLine.h); a kind adds code only for its record and
// for rules that really are its own.

#include "widgets/WidgetKinds.h"

#include <QByteArray>
#include <QHash>
#include <QSize>
#include <QString>
#include <QStringList>

namespace vantile {

struct WordTable;
class EditBuffer;
struct RecordContext;
struct KindExports;

// How a field is written in the line and shown in its row.
enum class Codec : quint8 {
    Decimal,     // plain number; read: digits only
    Hex16,       // "0x" + 4 digits; read: after the "x", none gives 0
    Hex16OrNone, // the same, but a field without "x" gives 0xFFFF
    Hex24,       // colour "0x" + 6 digits
    Text,        // as it stands (file names, user names, words)
    HexText,     // "*Hex:" + UTF-8 bytes in the line, the plain text in the row
    Switch,      // "Enable" / "Disable"
    SwitchBit,   // 1 / 0 in the line, "Enable" / "Disable" in the row
    WordNumber,  // number in the line, its word in the row (by `table`)
    Word,        // the word in line and row; `table` gives its record number
    IconRef,     // picture of Icon/; record: its four-digit number
    GifRef,      // file of Gif/; record: its four-digit number
    PageRef,     // page entry; record: its page number
    FontRef,     // font id in the line, the font file's name in the row
    Entry,       // a list of its own: its commas and closing ";" kept as they stand
};

// Range of a number held in the edit buffer: what a read value is cut to.
enum class NumWidth : quint8 { S16, U16, U8, S32, U32 };

// The editor a double click on the row opens; the designer maps these to
// its menus and dialogs. Inline is the plain in-place edit.
enum class Editor : quint8 {
    Inline,
    Menu,          // pop-up menu of FieldDef::menuWords
    IconPicture,   // file of Icon/
    PagePicture,   // file of Picture/
    GifFile,       // file of Gif/
    PageRef,       // menu of the project's pages
    FontFile,      // menu of the files of FontBin/
    ConstantText,  // menu of the entries of Constant_text.csv
    PictureFormat, // menu of the picture format words, narrowed by the chip
    Colour,        // colour dialog
    TextDialog,    // multi-line text dialog
};

// An old word that is read as a new one ("dim" -> "Enable").
struct WordAlias {
    const char *oldWord;
    const char *newWord;
};

// Default meaning "the object name" (the `name` row of a new widget).
constexpr const char *kObjectNameDefault = nullptr;
inline constexpr const char *kSwitchWords[] = {"Enable", "Disable", nullptr};
// The nine alignment words of the text and number kinds, in number order.
inline constexpr const char *kAlignmentWords[] = {"Left",    "Middle", "Right",    "T-Left",  "T-Middle",
                                                  "T-Right", "B-Left", "B-Middle", "B-Right", nullptr};

// The length of a kind's field table.
template <typename T, int N>
constexpr int countOf(const T (&)[N])
{
    return N;
}

struct FieldDef {
    const char *key = nullptr;
    Codec codec = Codec::Text;
    int row = -1;                     // row in the parameter table; -1: none
    int linePos = -1;                 // field in the line after ":"; -1: none
    const char *defaultText = "";     // in line form; nullptr: the object name
    const char *zh = nullptr;         // Chinese label (UTF-8); nullptr: no row label
    const char *en = nullptr;         // English label; nullptr: the key
    NumWidth width = NumWidth::S32;
    const WordTable *table = nullptr; // Word and WordNumber codecs
    Editor editor = Editor::Inline;
    const char *const *menuWords = nullptr; // nullptr-terminated, for Editor::Menu
    const WordAlias *aliases = nullptr;     // {nullptr, nullptr}-terminated
    bool writeAddress = false;              // an address the automatic assignment fills
    bool fixed = false;                     // not read: the line always gets the default
    const char *shownWhileSet = nullptr;    // the row shows only while this address field isn't 0xFFFF

    bool hasRow() const { return row >= 0; }
    bool inLine() const { return linePos >= 0; }
    bool isNumeric() const;
    QString englishLabel() const;
    QString chineseLabel() const;
    QStringList menuChoices() const;

    // Variations, for the tables of the kinds.
    constexpr FieldDef english(const char *text) const { FieldDef f = *this; f.en = text; return f; }
    constexpr FieldDef cut(NumWidth w) const { FieldDef f = *this; f.width = w; return f; }
    constexpr FieldDef address() const { FieldDef f = *this; f.writeAddress = true; return f; }
    constexpr FieldDef words(const WordTable *t) const { FieldDef f = *this; f.table = t; return f; }
    constexpr FieldDef editedBy(Editor e, const char *const *menu = nullptr) const
    {
        FieldDef f = *this;
        f.editor = e;
        f.menuWords = menu;
        return f;
    }
    constexpr FieldDef oldWords(const WordAlias *a) const { FieldDef f = *this; f.aliases = a; return f; }
    constexpr FieldDef fixedToDefault() const { FieldDef f = *this; f.fixed = true; return f; }
    constexpr FieldDef shownWhileSetIn(const char *addressKey) const { FieldDef f = *this; f.shownWhileSet = addressKey; return f; }
};

// One field: key, codec, row, line position, default (line form), Chinese
// label. Width and editor follow from the codec and can be changed.
constexpr FieldDef field(const char *key, Codec codec, int row, int linePos, const char *def,
                          const char *zh = nullptr)
{
    FieldDef f;
    f.key = key;
    f.codec = codec;
    f.row = row;
    f.linePos = linePos;
    f.defaultText = def;
    f.zh = zh;
    switch (codec) {
    case Codec::Hex16:
    case Codec::Hex16OrNone:
        f.width = NumWidth::U16;
        break;
    case Codec::Hex24:
        f.width = NumWidth::U32;
        f.editor = Editor::Colour;
        break;
    case Codec::Switch:
    case Codec::SwitchBit:
        f.editor = Editor::Menu;
        f.menuWords = kSwitchWords;
        break;
    case Codec::IconRef:
        f.editor = Editor::IconPicture;
        break;
    case Codec::GifRef:
        f.editor = Editor::GifFile;
        break;
    case Codec::PageRef:
        f.editor = Editor::PageRef;
        break;
    case Codec::FontRef:
        f.editor = Editor::FontFile;
        break;
    default:
        break;
    }
    return f;
}

// A label that stands in a kind's table without a row ("overlay").
struct LabelEntry {
    const char *key;
    const char *en;
    const char *zh;
};

// Row key -> {English, Chinese}; read with the language number
// (0 English, 1 Chinese) as the index.
using LabelTable = QHash<QString, QStringList>;

// Writes the kind's record for one parsed widget; returns the bytes added.
using RecordWriter = int (*)(QByteArray &out, const EditBuffer &widget, const RecordContext &ctx);
// A kind's own step after the common apply-edit rules.
using ApplyRule = void (*)(EditBuffer &widget, const EditBuffer &before, const QSize &pagePicture);
// The fields after ":" of a line whose fields don't all end at "," (the
// encoder's entries hold their own), in line order.
using FieldSplitter = QStringList (*)(const QString &line);
// A kind's defaults that follow from the drop rectangle (set after it).
using DropRule = void (*)(EditBuffer &widget);

struct KindDef {
    WidgetKind kind = WidgetKind::None;
    const FieldDef *fields = nullptr;
    int fieldCount = 0;
    const LabelEntry *extraLabels = nullptr;
    int extraLabelCount = 0;
    RecordWriter writeRecord = nullptr;
    RecordWriter writeViceRecord = nullptr; // the six kinds that stand on Vice pages
    ApplyRule applyRule = nullptr;
    FieldSplitter splitFields = nullptr; // nullptr: every field ends at ","
    DropRule fitToDrop = nullptr;
    const KindExports *exports = nullptr; // rows for the host lists (KindExports.h)

    int indexOf(const char *key) const; // -1 when the kind has no such field
    const FieldDef *find(const char *key) const;
    const FieldDef *atRow(int row) const;
    const FieldDef *atLine(int linePos) const;
    int rowCount() const;
    int lineFieldCount() const;
    LabelTable labels() const; // built once per kind
    // The row label in a language (0 English, 1 Chinese).
    QString label(const QString &key, int language) const;
};

// The labels every kind carries: Parameter, Data, name, X, Y, W, H.
const LabelEntry *commonLabels(int *count);

} // namespace vantile
