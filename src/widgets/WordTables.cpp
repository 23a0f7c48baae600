#include "widgets/WordTables.h"

namespace vantile {

int WordTable::valueOf(const QString &word) const
{
    for (int i = 0; i < count; ++i) {
        if (word == QLatin1String(entries[i].word))
            return entries[i].value;
    }
    return noMatch;
}

QString WordTable::wordOf(int value) const
{
    for (int i = 0; i < count; ++i) {
        if (entries[i].value == value)
            return QLatin1String(entries[i].word);
    }
    return QString();
}

bool WordTable::contains(const QString &word) const
{
    for (int i = 0; i < count; ++i) {
        if (word == QLatin1String(entries[i].word))
            return true;
    }
    return false;
}

QStringList WordTable::words() const
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list.append(QLatin1String(entries[i].word));
    return list;
}

namespace WordTables {

namespace {

const WordEntry kDataType[] = {
    {"uchar", 0},   {"ushort", 1},  {"uint", 2},    {"uchar_H8", 4}, {"bit0", 64},  {"bit1", 65},
    {"bit2", 66},   {"bit3", 67},   {"bit4", 68},   {"bit5", 69},    {"bit6", 70},  {"bit7", 71},
    {"bit8", 72},   {"bit9", 73},   {"bit10", 74},  {"bit11", 75},   {"bit12", 76}, {"bit13", 77},
    {"bit14", 78},  {"bit15", 79},  {"char", 128},  {"short", 129},  {"int", 130},  {"longlong", 131},
    {"char_H8", 132}};

const WordEntry kDirection[] = {{"L_to_R", 0}, {"R_to_L", 1}, {"U_to_D", 2}, {"D_to_U", 3}};

const WordEntry kSlideDirection[] = {{"Vertical-Loop", 0}, {"Vertical", 0}, {"Horizontal-Loop", 1}};

const WordEntry kDigitSource[] = {{"Null", 0}, {"FontNum", 1}, {"IconNum", 2}};

const WordEntry kDateFormat[] = {
    {"YY/MM/DD HH:MM:SS", 0}, {"YY/MM/DD", 1},  {"YY/MM", 2},   {"MM/DD", 3},
    {"HH:MM:SS", 4},          {"HH:MM", 5},     {"MM:SS", 6},   {"Week", 7},
    {"YY/MM/DD/HH:MM:SS", 8}, {"YY/MM/DD/", 9}, {"YY/MM/", 10}, {"MM/DD/", 11}};

const WordEntry kTimerFormat[] = {{"NULL", 0}, {"HH:MM:SS", 1}, {"HH:MM", 2}, {"MM:SS", 3}, {"SS", 4}};

const WordEntry kRunMode[] = {{"Run", 0}, {"Stop", 1}, {"Disappear", 2}, {"RunOnce", 3}};

const WordEntry kVideoMode[] = {
    {"Continue", 0}, {"Pause", 1}, {"Close", 2}, {"SinglePlay", 3}, {"RepeatPlay", 4}};

const WordEntry kNeedleStyle[] = {{"2Ddrawing", 0}, {"2Dsmooth", 1}, {"PNGdrawing", 2},
                                  {"Animation", 3}, {"Line", 4},     {"Icon", 5}};

const WordEntry kPictureFormat[] = {{"RGB565", 0},       {"RGB888", 0},      {"softpng", 1},
                                    {"aRGB4444", 2},     {"RGB565_zip", 3},  {"softpng_zip", 4},
                                    {"aRGB4444_zip", 5}, {"aRGB8888", 6},    {"ZoomIN", 9},
                                    {"aRGB8565", 8}};

const WordEntry kBoolean[] = {{"true", 1}};

const WordEntry kAlignment[] = {{"Left", 0},   {"Middle", 1},   {"Right", 2},
                                {"T-Left", 3}, {"T-Middle", 4}, {"T-Right", 5},
                                {"B-Left", 6}, {"B-Middle", 7}, {"B-Right", 8}};

const WordEntry kEncoding[] = {{"GB2312", 0}, {"GBK", 1},     {"BIG5", 2},  {"Unicode", 3},
                               {"Ascii", 4},  {"unicode", 6}, {"Custom", 9}};

const WordEntry kStepSign[] = {{"+", 0}, {"-", 1}};

const WordEntry kCycle[] = {{"Loop", 1}, {"Stop", 0}};

const WordEntry kPress[] = {{"Once", 0}, {"Repeat", 1}};

const WordEntry kKeyAlignment[] = {{"Left", 0}, {"Middle", 1}, {"Right", 2}};

const WordEntry kKeyCursor[] = {{"Black", 0}, {"White", 1}};

const WordEntry kKeyInputMode[] = {{"New", 0}, {"Modify", 1}};

const WordEntry kKeyDisplay[] = {{"Normal", 0}, {"Star", 1}};

const WordEntry kTimerControl[] = {{"0:Pause the timer", 0}, {"1:Start the timer", 1}, {"2:Cancel the timer", 2},
                                   {"3:Show timer at pause state", 3}};

const WordEntry kCountDirection[] = {{"+", 1}, {"-", 0}};

template <int N>
constexpr WordTable table(const WordEntry (&e)[N], int noMatch)
{
    return WordTable{e, N, noMatch};
}

} // namespace

const WordTable dataType = table(kDataType, 1);
const WordTable direction = table(kDirection, 0);
const WordTable slideDirection = table(kSlideDirection, 1);
const WordTable digitSource = table(kDigitSource, 0);
const WordTable dateFormat = table(kDateFormat, 0);
const WordTable timerFormat = table(kTimerFormat, 0);
const WordTable runMode = table(kRunMode, 2);
const WordTable videoMode = table(kVideoMode, 0);
const WordTable needleStyle = table(kNeedleStyle, 0);
const WordTable pictureFormat = table(kPictureFormat, 32);
const WordTable boolean = table(kBoolean, 0);
const WordTable alignment = table(kAlignment, 0);
const WordTable encoding = table(kEncoding, 0);
const WordTable stepSign = table(kStepSign, 1);
const WordTable cycle = table(kCycle, 0);
const WordTable press = table(kPress, 1);
const WordTable keyAlignment = table(kKeyAlignment, 0);
const WordTable keyCursor = table(kKeyCursor, 1);
const WordTable keyInputMode = table(kKeyInputMode, 1);
const WordTable keyDisplay = table(kKeyDisplay, 0);
const WordTable timerControl = table(kTimerControl, 0);
const WordTable countDirection = table(kCountDirection, 0);

} // namespace WordTables

} // namespace vantile
