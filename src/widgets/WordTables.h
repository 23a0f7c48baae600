#pragma once
// The tables that turn the words of widget fields into record numbers.
// A word matches by exact comparison; no match gives the table's default.

#include <QString>
#include <QStringList>

namespace vantile {

struct WordEntry {
    const char *word;
    int value;
};

struct WordTable {
    const WordEntry *entries;
    int count;
    int noMatch; // value of a word that isn't in the table

    int valueOf(const QString &word) const;
    // The first word with this value; empty when none has it.
    QString wordOf(int value) const;
    bool contains(const QString &word) const;
    QStringList words() const;
};

namespace WordTables {

extern const WordTable dataType;       // uchar 0 ... bit5 69 ... char_H8 132; else 1
extern const WordTable direction;      // L_to_R 0 ... D_to_U 3; else 0
extern const WordTable slideDirection; // Vertical(-Loop) 0; else 1
extern const WordTable digitSource;    // Null 0, FontNum 1, IconNum 2; else 0
extern const WordTable dateFormat;     // "YY/MM/DD HH:MM:SS" 0 ... "MM/DD/" 11; else 0
extern const WordTable timerFormat;    // NULL 0 ... SS 4; else 0
extern const WordTable runMode;        // Run 0, Stop 1, Disappear 2, RunOnce 3; else 2
extern const WordTable videoMode;      // Continue 0 ... RepeatPlay 4; else 0
extern const WordTable needleStyle;    // 2Ddrawing 0 ... Icon 5; else 0
extern const WordTable pictureFormat;  // RGB565/RGB888 0 ... ZoomIN 9; else 32
extern const WordTable boolean;        // "true" 1; else 0
extern const WordTable alignment;      // Left 0 ... B-Right 8; else 0
extern const WordTable encoding;       // GB2312 0 ... Custom 9 (5, 7, 8 have no word)
extern const WordTable stepSign;       // "+" 0, "-" 1; else 1
extern const WordTable cycle;          // Loop 1, Stop 0; else 0
extern const WordTable press;          // Once 0, Repeat 1; else 1
// keyboards
extern const WordTable keyAlignment;   // Left 0, Middle 1, Right 2; else 0
extern const WordTable keyCursor;      // Black 0, White 1; else 1
extern const WordTable keyInputMode;   // New 0, Modify 1; else 1
extern const WordTable keyDisplay;     // Normal 0, Star 1; else 0
// timers
extern const WordTable timerControl;   // "0:Pause the timer" 0 ... "3:Show timer at pause state" 3; else 0
extern const WordTable countDirection; // "+" 1 (up), "-" 0 (down); else 0

} // namespace WordTables

} // namespace vantile
