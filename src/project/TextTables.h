#pragma once
// The two text tables of a project that the side editors keep and the
// build reads:
//
// Constant_text.csv (the static texts), UTF-8 with a byte order mark, one
// line per entry, each ended by a line feed:
//     Num,text0,colour0,font0,text1,colour1,font1,...
//   Num the entry's number in decimal (what a Statictext's Constant_Num
//   names), per language the text in "*Hex:" form, the colour as the cell
//   holds it ("0X000000") and the font id in decimal.
//
// MultiLanguage/PageNNNN.csv (a page's language texts), UTF-8 with a byte
// order mark, one line per multi-language widget:
//     label_3,0x0120,20,default text,text of Language1,...
//   Texts are plain and not quoted: a comma inside a text splits it when
//   the line is read again.
// MultiLanguage/TableHeader.txt holds the language column titles, one line
// joined by ",".

#include "project/TextFiles.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

namespace vantile {

namespace TextTables {

// --- Constant_text.csv ----------------------------------------------------------

struct ConstantCell {
    QString text;
    QString colour = QStringLiteral("0X000000");
    int fontId = 0;
};

struct ConstantEntry {
    int number = 0;              // 1 for the first text
    QVector<ConstantCell> cells; // one per language
};

QString constantTextPath(const QString &projectDir);

// The file's bytes for the entries; each entry writes `languages` cells
// (missing cells as empty texts in black, font 0).
QByteArray writeConstantText(const QList<ConstantEntry> &entries, int languages);

// Entries of the file's lines, each with `languages` cells. A line with
// fewer fields keeps what it has (the rest at the defaults); a line whose
// number can't be read is kept with number 0. Each such line gives one
// text in *problems ("line 3: ..."). Blank lines are skipped.
QList<ConstantEntry> parseConstantText(const QStringList &lines, int languages, QStringList *problems = nullptr);

struct ConstantRead {
    TextFiles::ReadStatus status = TextFiles::ReadStatus::Ok;
    FileError error;
    QList<ConstantEntry> entries;
    QStringList problems;
};
ConstantRead readConstantText(const QString &path, int languages);

// The pop-up menu of a Statictext's Constant_Num: "N:text" (first language)
// for each entry with a number; the number of a chosen entry, -1 for a
// text that is not an entry.
QStringList constantMenu(const QList<ConstantEntry> &entries);
int constantMenuNumber(const QString &entry);
// The first language's text of entry `number`; false when there is none.
bool constantText(const QList<ConstantEntry> &entries, int number, QString *text);

// --- MultiLanguage/ ----------------------------------------------------------------

// 1..32 languages from lineEdit_LangueNum's text (below 1 counts as 1).
int languageCount(const QString &langueNum);

// "defaultLanguage", "Language1", "Language2", ...
QStringList defaultTitles(int languages);
// The titles a header file holds, completed with the default titles or cut
// to `languages`.
QStringList titlesFromHeader(const QString &headerLine, int languages);

QString headerPath(const QString &projectDir);
// "MultiLanguage/PageNNNN.csv" and its older ".csb", under the project.
QString languagePath(const QString &projectDir, const QString &pageId, bool older = false);

struct LanguageRow {
    QString key;            // "label_3", "textroll_0"
    quint16 writeAddr = 0xFFFF;
    int wordLength = 0;
    QStringList texts;      // one per language, default language first
};

QByteArray writeLanguageTable(const QList<LanguageRow> &rows, int languages);
// Rows of the file's lines; a line with fewer than the three fixed fields
// is left out and named in *problems; missing texts read as empty.
QList<LanguageRow> parseLanguageTable(const QStringList &lines, int languages, QStringList *problems = nullptr);

} // namespace TextTables

} // namespace vantile
