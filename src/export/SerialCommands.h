#pragma once
// SerialPortCommands.csv: for each variable the build gives an initial
// value, the write command a host sends to set it, byte for byte as
// hexadecimal text. The frame is always
//   5A A5 | length | 10 | address (2, high first) | data | CRC-16/MODBUS (low first)
// where the length counts the bytes behind it (command, address, data and
// CRC). The list opens with the panel's system variables (0x7000 on).

#include "build/BuildContext.h"

#include <QString>
#include <QStringList>

namespace vantile {

namespace SerialCommands {

extern const char *const kHeader; // "Page,WidgetName,Name    ,Header,Length,Cmd,Addr,Data,CRC\n"

// CRC-16/MODBUS (reflected 0xA001, start 0xFFFF, no final XOR) of the bytes
// a text of hexadecimal digit pairs stands for. A pair with a bad low digit
// counts as 0, one with a bad high digit as its low digit alone; an odd
// last digit is left out. "" gives 0xFFFF, "313233343536373839" 0x4B37.
quint16 Crc16Modbus(const QString &hexText);

// The Length text of a frame with `count` bytes behind it: one hex digit
// gets a leading "0" and is upper case ("07", "0A"); longer counts are
// written as they come, lower case ("1a", "100").
QString lengthText(int count);

// The element type of a data type word: 0 char/char_H8, 1 short, 2 int,
// 3 uchar/uchar_H8, 4 ushort, 5 uint, 6 longlong. Any other word (the bit
// types among them) keeps the type of the row before: `previous`.
int elementType(const QString &word, int previous);

// The text mode of a widget's encoding number: 2 gives 3 (UTF-8), 4 gives
// 0 (GB2312), 6 gives 2 (UTF-16), any other stays as it is.
int textMode(int encoding);

// One row, with its "\n". A numeric value is split at "," and each element
// written in the width of its type (`typeOrMode` an element type); a text
// (`typeOrMode` a text mode: 0 GB2312, 1 GBK, 2 UTF-16 units high byte
// first, 3 UTF-8, others GBK) gets one zero byte after an odd number of
// bytes and two after an even number.
QString MakeSerialCommandRow(const QString &page, const QString &name, const QString &widgetName,
                             const QString &value, const QString &addr, int isNumeric, int typeOrMode);

// Writes the whole file: header, the sixteen system rows (date and time
// from the build's time, the rest from the settings), then the widgets'
// rows page by page. With no pages only the header, and "There aren't any
// variable to bin!" in the log; otherwise "The serial port command was
// successfully generated!".
void ExportSerialCommands(BuildContext &ctx);

} // namespace SerialCommands

} // namespace vantile
