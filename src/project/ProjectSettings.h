#pragma once
// The project's settings: the "[INFO]" block of <name>.ini.
//
// This is the one model of the settings. The settings dialog edits it, the
// build reads it. Text fields hold exactly what the dialog's line edits show;
// combo boxes are held as their index, check boxes as bool.

#include <QByteArray>
#include <QDateTime>
#include <QSize>
#include <QString>
#include <QStringList>

namespace vantile {

// How one control of the settings dialog follows the chip index.
enum class ChipEffect : quint8 {
    Leave,      // "left": the control keeps its state
    Enable,
    Disable,
};

enum class TftAction : quint8 { Leave, Clear, Restore };

enum class FlashTypeRule : quint8 {
    Leave,      // the combo keeps its index
    Blank,      // index 2 (the deliberate blank third state)
    Remembered, // the value remembered for this chip (starts at 1)
};

// One row of the chip dependency table.
struct ChipRule {
    ChipEffect byteSwapEnabled;       // the check is always unchecked first
    ChipEffect pageImageZipEnabled;   // Disable also unchecks
    bool rgbIfForcedTo565;            // comboBox_RGBIF to index 0
    FlashTypeRule flashType;
    ChipEffect flashTypeEnabled;
    ChipEffect rotateEnabled;
    TftAction tft;
};

// The row for chip index c (0..10); indices outside give the row of 3.
const ChipRule &chipRule(int chipIndex);

// The eleven TFT values the dialog remembers while they are cleared.
struct TftValues {
    QString hbpd = QStringLiteral("140");
    QString hfpd = QStringLiteral("160");
    QString hspw = QStringLiteral("20");
    QString vbpd = QStringLiteral("20");
    QString vfpd = QStringLiteral("12");
    QString vspw = QStringLiteral("3");
    bool pclk = true;
    bool hsync = true;
    bool vsync = true;
    bool de = true;
    bool bgr = false;
    bool operator==(const TftValues &o) const;
};

// Result of the version gate that Open runs on <name>.ini first.
struct VersionGate {
    bool iniFound = false;  // false: "Can't open this file: " + path
    bool accepted = false;  // false with iniFound: the too-new message
    QString valueText;      // the "SupplierVer:" value as read, e.g. "V3.21"
    int number = 0;         // the value with "V" and "." removed, e.g. 321
    QString reason;         // with !iniFound: why it could not be read
};

struct ReadReport {
    bool startPageOverflow = false; // "StartPage:" above the number of pages; left at 0
};

class ProjectSettings
{
public:
    static constexpr int ChipCount = 11;
    static constexpr int VersionLimit = 320;

    // --- fields, in the order the file lists them -------------------------
    QString userId;                                       // lineEdit_USER_KEY
    QString userVer;                                      // lineEdit_UserVER
    QString supplierId = QStringLiteral("0x5E21B7C4");   // lineEdit_VC_KEY (read-only)
    QString supplierVer = QStringLiteral("V3.20");       // lineEdit_VC_VER (read-only)
    int baudrate = 4;                                     // comboBox_BAUD
    int eoCheck = 0;                                      // comboBox_EOCheck
    bool modbusMaster = false;                            // checkBox_ModbusM
    bool noFeedBack = false;                              // checkBox_NoFB
    bool noCrc = false;                                   // checkBox_NoCRC
    QString startBytes = QStringLiteral("0x5A,0xA5");    // lineEdit_StartBytes
    QString devAddr = QStringLiteral("0x01");            // lineEdit_DevAddr
    QString devNum;                                       // lineEdit_DevNum
    int panelType = 3;                                    // comboBox_ICType (chip index)
    QString xsize;                                        // lineEdit_XSIZE
    QString ysize;                                        // lineEdit_YSIZE
    TftValues tft;                                        // VBPD .. BGR (six fields, five checks)
    int colorDepth = 0;                                   // comboBox_RGBIF
    int rotate = 0;                                       // comboBox_Rotate
    int flashTypeIndex = 1;                               // comboBox_FalshType (0 Nand, 1 Nor, 2 blank)
    int flashSize = 3;                                    // comboBox_FlhSize
    bool autoBL = false;                                  // checkBox_AutoBL
    QString blon;                                         // lineEdit_BLON
    QString blsp;                                         // lineEdit_BLSP
    QString kptm;                                         // lineEdit_KPTM
    bool keyBeep = false;                                 // checkBox_KeyBeep
    bool initVar = false;                                 // checkBoxInitVar
    int startPage = 0;                                    // comboBox_SPage
    QString volume;                                       // lineEdit_Volume
    bool gbkCode = false;                                 // checkBox_GBKCode
    bool pageImageZip = false;                            // checkBox_PageImageZip
    int needleDataType = 0;                               // comboBox_NdlDType
    QString languageNum;                                  // lineEdit_LangueNum
    bool byteSwap = false;                                // checkBox_ByteSwap
    QString geData;                                       // lineEdit_GeData
    bool aRgbPng = false;                                 // checkBox_aRGB_Png
    bool compilationTimeFixed = false;                    // checkBox_Time of the timestamp dialog
    QDateTime compileDateTime = QDateTime::currentDateTime();

    // --- editing memory of the dialog (never written to the file) ---------
    TftValues tftMemory;          // the stash of the eleven TFT values
    bool tftCleared = false;      // the TFT fields are in the cleared state
    int flashTypeMemory[ChipCount] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

    // --- the file ---------------------------------------------------------
    // The text as written: BOM, "[INFO]", one line per key in fixed order.
    QByteArray toIni() const;
    // Reads keys in any order. A missing key leaves its field as it is.
    ReadReport readIni(const QByteArray &bytes, int pageCount);

    // --- rules ------------------------------------------------------------
    // Runs the chip dependency on the values (ByteSwap unchecked first,
    // then the row of the table for chip index c). Sets panelType.
    void applyChip(int chipIndex);
    // The user changed comboBox_FalshType: remembered for chips 3 and 4.
    void setFlashTypeIndex(int index);
    // Stash / clear / restore of the TFT fields.
    void stashTft();
    void clearTft();
    void restoreTft();

    // Page image compression exists on chips 4 and 6 to 10 only.
    static bool pageImageZipAllowed(int chipIndex);
    // "FlashType: " value for the current combo index.
    int flashTypeFileValue() const;
    // Character table bound: 0x100 with GBKCode, 0x80 without.
    int charTableBound() const { return gbkCode ? 0x100 : 0x80; }
    // Whole numbers behind the decimal text fields (digits only, 0 if none).
    int xSizeValue() const;
    int ySizeValue() const;
    // The canvas: X wide and Y high, swapped for rotations 1 and 3.
    QSize canvasSize() const;

    // --- the version gate -------------------------------------------------
    static VersionGate checkVersion(const QString &iniPath);
    // The refusal text, by language (1 Chinese, 0 English).
    static QString versionRefusedText(const QString &valueText, int languageIndex);
};

// The value filters of the settings file, on bytes.
namespace IniValue {
// Text behind the key, cut at the first "/" and at 1023 characters.
QByteArray raw(const QByteArray &line, int keyEnd);
QString text(const QByteArray &raw);          // bytes above 32 only
qint64 integer(const QByteArray &raw, bool *any = nullptr); // digits, decimal
quint32 hexadecimal(const QByteArray &raw, bool *hasX = nullptr); // digits behind first x, at most 8
}

} // namespace vantile
