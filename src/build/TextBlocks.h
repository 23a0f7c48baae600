#pragma once
// The two text blocks of the image.
//
// Static texts: Plugin/Constant_para_all.bin, from Constant_text.csv
//     4 x R   one image address per text row, 0xFFFFFFFF for a row that is
//             switched off
//     data    the strings, each as the text encoder gives it for the row's
//             font (no length, no terminator: a string ends where the next
//             row's address begins)
//   R = M x L text rows: M the last line's number, L the languages; all rows
//   of language 0 first. Directory 0x60 holds the block's address, 0x64 M.
//
// Languages: MultiLanguage/MultiLanguage.bin, only with two languages or more
//     8 x L   per language: address of its records, their byte length
//     records per language, one per multi-language label or textroll in page
//             and line order: write address (2), byte length n (2), n bytes
//   Directory 0x50 holds the block's address, 0x54 the file's size (0 when
//   there is no block). All values little-endian.

#include "build/BuildContext.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace vantile {

namespace TextBlocks {

// The number of languages the project sets: lineEdit_LangueNum read as a
// decimal, 0 when it holds no digits, at most 32 (the language editor's
// limit).
int languageCount(const ProjectSettings &settings);

// The encoding code of a font id in the build's font table; 5 (bytes as
// GBK) for an id the table doesn't hold.
int fontEncoding(const FontTable &fonts, int fontId);

// --- Constant_text.csv ---------------------------------------------------------

struct ConstantRow {
    int number = 0;     // the line's Constant Num; 0: switched off
    QString text;       // decoded from its "*Hex:" form
    quint32 colour = 0; // "0X000000"
    int fontId = 0;
    bool isOn() const { return number != 0; }
};

struct ConstantTable {
    int slotCount = 0;       // M: the number on the last line
    int languages = 1;       // L
    QList<ConstantRow> rows; // M x L, language 0's rows first, each in slot order
    QStringList dropped;     // lines left out: no slot for their number
    QStringList shortLines;  // lines with fewer fields than the languages need
};

// The text rows of Constant_text.csv's lines (each "Num,text,colour,font"
// with three fields per language). Blank lines are skipped; a language whose
// fields are missing on a line reads as an empty text in colour 0, font 0.
ConstantTable parseConstantText(const QStringList &lines, int languages);

// --- the language editor's page files -------------------------------------------

// What the language block needs of a page line: the fields of a label or a
// textroll (other lines give false).
struct LanguageWidget {
    QString objectName;
    QString key;           // "label_N" / "textroll_N": the first column of its .csv row
    quint16 writeAddress = 0xFFFF;
    int fontId = 0;
    bool multiLanguage = false;
};
bool readLanguageWidget(const QString &line, LanguageWidget *widget);

// "MultiLanguage/PageNNNN.csv" (relative to the project).
QString languageFile(int row);
// The .csv's rows by their first column, each split at commas (texts are
// not quoted: a comma in a text splits it).
QHash<QString, QStringList> languageRows(const QStringList &lines);

} // namespace TextBlocks

class StaticTextBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::StaticText; }
    void build(BuildContext &ctx) override;
};

class LanguageBlockBuilder : public BlockBuilder
{
public:
    Block block() const override { return Block::Language; }
    void build(BuildContext &ctx) override;
};

} // namespace vantile
