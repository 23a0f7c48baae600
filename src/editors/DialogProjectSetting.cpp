#include "editors/DialogProjectSetting.h"

#include "app/Prompts.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <functional>
#include <iterator>

namespace vantile {

namespace {

const char *const kContext = "vantile::DialogProjectSetting";

const char *const kChipNames[ProjectSettings::ChipCount] = {
    "VC210", "VC220C", "VC220D", "VC530", "VC540", "VC650",
    "VC110A", "VC110B(MCU)", "VC110B(RGB)", "VC110B(QSPI)", "VC110B+PSRAM(RGB)",
};

// Chips that are kept for old projects but not offered in the drop-down.
const int kHiddenChips[] = {0, 1, 2, 4, 5};

const char *const kEOCheckItems[] = {
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "None"),
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Even"),
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Odd"),
};

const char *const kRotateItems[] = {
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "  0 Degree"),
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", " 90 Degree"),
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "180 Degree"),
    QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "270 Degree"),
};

QString trText(const char *source)
{
    return QCoreApplication::translate(kContext, source);
}

} // namespace

// --- the bindings between fields and model members --------------------------------

struct DialogProjectSetting::Bindings {
    struct Text {
        QLineEdit *edit;
        std::function<QString &(ProjectSettings &)> field;
    };
    struct Check {
        QCheckBox *box;
        std::function<bool &(ProjectSettings &)> field;
    };
    struct Combo {
        QComboBox *box;
        std::function<int &(ProjectSettings &)> field;
    };
    QList<Text> texts;
    QList<Check> checks;
    QList<Combo> combos; // the plain ones: index in, index out
};

DialogProjectSetting::DialogProjectSetting(QWidget *parent)
    : QDialog(parent)
    , m_bind(new Bindings)
{
    setObjectName(QStringLiteral("DialogProjectSetting"));
    buildForm();
    bindModel();
    retranslate();
    loadFromSettings();
    storeResolution();
}

DialogProjectSetting::~DialogProjectSetting() = default;

// --- form ----------------------------------------------------------------------------

void DialogProjectSetting::buildForm()
{
    auto lineEdit = [this](const char *name) {
        auto *e = new QLineEdit(this);
        e->setObjectName(QLatin1String(name));
        return e;
    };
    auto checkBox = [this](const char *name) {
        auto *c = new QCheckBox(this);
        c->setObjectName(QLatin1String(name));
        return c;
    };
    auto comboBox = [this](const char *name, const QStringList &items, int start) {
        auto *c = new QComboBox(this);
        c->setObjectName(QLatin1String(name));
        c->addItems(items);
        c->setCurrentIndex(start);
        return c;
    };
    auto label = [this](const char *source) {
        auto *l = new QLabel(this);
        m_labels.append({l, source});
        return l;
    };
    auto validate = [](QLineEdit *e, const QString &pattern) {
        e->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), e));
    };
    auto group = [this](const char *name) {
        auto *g = new QGroupBox(this);
        g->setObjectName(QLatin1String(name));
        return g;
    };

    // User information
    lineEdit_USER_KEY = lineEdit("lineEdit_USER_KEY");
    lineEdit_UserVER = lineEdit("lineEdit_UserVER");
    lineEdit_UserVER->setEnabled(false); // carried by the file, not typed by the user
    lineEdit_VC_KEY = lineEdit("lineEdit_VC_KEY");
    lineEdit_VC_KEY->setReadOnly(true);
    lineEdit_VC_VER = lineEdit("lineEdit_VC_VER");
    lineEdit_VC_VER->setReadOnly(true);

    // Communication
    comboBox_BAUD = comboBox("comboBox_BAUD",
                             {QStringLiteral("9600"), QStringLiteral("19200"), QStringLiteral("38400"),
                              QStringLiteral("57600"), QStringLiteral("115200"), QStringLiteral("230400"),
                              QStringLiteral("256000"), QStringLiteral("460800"), QStringLiteral("921600"),
                              QStringLiteral("1382400")},
                             4);
    QStringList eoItems;
    for (const char *t : kEOCheckItems)
        eoItems << QLatin1String(t);
    comboBox_EOCheck = comboBox("comboBox_EOCheck", eoItems, 0);
    checkBox_ModbusM = checkBox("checkBox_ModbusM");
    checkBox_NoFB = checkBox("checkBox_NoFB");
    checkBox_NoCRC = checkBox("checkBox_NoCRC");
    lineEdit_StartBytes = lineEdit("lineEdit_StartBytes");
    validate(lineEdit_StartBytes, QStringLiteral("^[A-Fa-f0-9Xx,]+$"));
    lineEdit_DevAddr = lineEdit("lineEdit_DevAddr");
    validate(lineEdit_DevAddr, QStringLiteral("^[A-Fa-f0-9Xx]+$"));
    lineEdit_DevNum = lineEdit("lineEdit_DevNum");

    // General
    QStringList chips;
    int longest = 0;
    for (const char *c : kChipNames) {
        chips << QLatin1String(c);
        longest = qMax(longest, int(qstrlen(c)));
    }
    comboBox_ICType = comboBox("comboBox_ICType", chips, 3);
    if (auto *view = qobject_cast<QListView *>(comboBox_ICType->view())) {
        for (int row : kHiddenChips)
            view->setRowHidden(row, true);
    }
    // Hidden rows stay reachable by index (old projects carry them) but the
    // keyboard and the wheel skip them like the drop-down does.
    if (auto *model = qobject_cast<QStandardItemModel *>(comboBox_ICType->model())) {
        for (int row : kHiddenChips)
            model->item(row)->setEnabled(false);
    }
    comboBox_ICType->view()->setMinimumWidth(int(longest * 10 * 1.1));

    comboBox_FalshType = comboBox("comboBox_FalshType", {QStringLiteral("NandFlash"), QStringLiteral("NorFlash")}, 1);
    comboBox_FlhSize = comboBox("comboBox_FlhSize",
                                {QStringLiteral("  2MB"), QStringLiteral("  4MB"), QStringLiteral("  8MB"),
                                 QStringLiteral(" 16MB"), QStringLiteral(" 32MB"), QStringLiteral(" 64MB"),
                                 QStringLiteral("128MB"), QStringLiteral("256MB"), QStringLiteral("512MB")},
                                3);
    comboBox_SPage = comboBox("comboBox_SPage", {QStringLiteral("Page0000"), QStringLiteral("Page0001")}, 0);
    lineEdit_LangueNum = lineEdit("lineEdit_LangueNum");
    validate(lineEdit_LangueNum, QStringLiteral("^[1-9][0-9]{0,8}$"));
    comboBox_NdlDType = comboBox("comboBox_NdlDType", {QStringLiteral("aRGB4444"), QStringLiteral("aRGB4444 Zip")}, 0);
    lineEdit_GeData = lineEdit("lineEdit_GeData");

    // TFT panel
    lineEdit_XSIZE = lineEdit("lineEdit_XSIZE");
    lineEdit_YSIZE = lineEdit("lineEdit_YSIZE");
    QStringList rotateItems;
    for (const char *t : kRotateItems)
        rotateItems << QLatin1String(t);
    comboBox_Rotate = comboBox("comboBox_Rotate", rotateItems, 0);
    comboBox_RGBIF = comboBox("comboBox_RGBIF", {QStringLiteral("RGB565"), QStringLiteral("RGB888")}, 0);
    lineEdit_VBPD = lineEdit("lineEdit_VBPD");
    lineEdit_VFPD = lineEdit("lineEdit_VFPD");
    lineEdit_VSPW = lineEdit("lineEdit_VSPW");
    lineEdit_HBPD = lineEdit("lineEdit_HBPD");
    lineEdit_HFPD = lineEdit("lineEdit_HFPD");
    lineEdit_HSPW = lineEdit("lineEdit_HSPW");
    checkBox_PCLK = checkBox("checkBox_PCLK");
    checkBox_HSYNC = checkBox("checkBox_HSYNC");
    checkBox_VSYNC = checkBox("checkBox_VSYNC");
    checkBox_DE = checkBox("checkBox_DE");
    checkBox_BGR = checkBox("checkBox_BGR");

    // Application
    checkBox_AutoBL = checkBox("checkBox_AutoBL");
    lineEdit_BLON = lineEdit("lineEdit_BLON");
    lineEdit_BLSP = lineEdit("lineEdit_BLSP");
    lineEdit_KPTM = lineEdit("lineEdit_KPTM");
    lineEdit_Volume = lineEdit("lineEdit_Volume");
    checkBox_KeyBeep = checkBox("checkBox_KeyBeep");
    checkBoxInitVar = checkBox("checkBoxInitVar");
    checkBox_GBKCode = checkBox("checkBox_GBKCode");
    checkBox_PageImageZip = checkBox("checkBox_PageImageZip");
    checkBox_ByteSwap = checkBox("checkBox_ByteSwap");
    checkBox_aRGB_Png = checkBox("checkBox_aRGB_Png");

    // The decimal fields: two digits at least.
    for (QLineEdit *e : {lineEdit_XSIZE, lineEdit_HSPW, lineEdit_HBPD, lineEdit_HFPD, lineEdit_YSIZE, lineEdit_VSPW,
                         lineEdit_VBPD, lineEdit_VFPD, lineEdit_GeData, lineEdit_BLON, lineEdit_BLSP, lineEdit_KPTM,
                         lineEdit_DevNum, lineEdit_Volume})
        validate(e, QStringLiteral("[0-9][0-9]+$"));

    // --- frames ---------------------------------------------------------------------
    groupBox_General = group("groupBox_General");
    {
        auto *g = new QGridLayout(groupBox_General);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Chip type")), 0, 0);
        g->addWidget(comboBox_ICType, 0, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Flash type")), 1, 0);
        g->addWidget(comboBox_FalshType, 1, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Flash size")), 2, 0);
        g->addWidget(comboBox_FlhSize, 2, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Start page")), 3, 0);
        g->addWidget(comboBox_SPage, 3, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Languages")), 4, 0);
        g->addWidget(lineEdit_LangueNum, 4, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Needle data")), 5, 0);
        g->addWidget(comboBox_NdlDType, 5, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "General data")), 6, 0);
        g->addWidget(lineEdit_GeData, 6, 1);
        g->setRowStretch(7, 1);
        g->setColumnStretch(1, 1);
    }

    groupBox_TFT = group("groupBox_TFT");
    {
        auto *g = new QGridLayout(groupBox_TFT);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Width (X)")), 0, 0);
        g->addWidget(lineEdit_XSIZE, 0, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Height (Y)")), 0, 2);
        g->addWidget(lineEdit_YSIZE, 0, 3);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Rotation")), 1, 0);
        g->addWidget(comboBox_Rotate, 1, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Color depth")), 1, 2);
        g->addWidget(comboBox_RGBIF, 1, 3);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "HBPD")), 2, 0);
        g->addWidget(lineEdit_HBPD, 2, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "VBPD")), 2, 2);
        g->addWidget(lineEdit_VBPD, 2, 3);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "HFPD")), 3, 0);
        g->addWidget(lineEdit_HFPD, 3, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "VFPD")), 3, 2);
        g->addWidget(lineEdit_VFPD, 3, 3);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "HSPW")), 4, 0);
        g->addWidget(lineEdit_HSPW, 4, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "VSPW")), 4, 2);
        g->addWidget(lineEdit_VSPW, 4, 3);
        auto *checks = new QGridLayout;
        checks->addWidget(checkBox_PCLK, 0, 0);
        checks->addWidget(checkBox_HSYNC, 0, 1);
        checks->addWidget(checkBox_VSYNC, 0, 2);
        checks->addWidget(checkBox_DE, 1, 0);
        checks->addWidget(checkBox_BGR, 1, 1);
        g->addLayout(checks, 5, 0, 1, 4);
        g->setRowStretch(6, 1);
        g->setColumnStretch(1, 1);
        g->setColumnStretch(3, 1);
    }

    groupBox_Communication = group("groupBox_Communication");
    {
        auto *g = new QGridLayout(groupBox_Communication);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Baud rate")), 0, 0);
        g->addWidget(comboBox_BAUD, 0, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Parity")), 1, 0);
        g->addWidget(comboBox_EOCheck, 1, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Frame header")), 2, 0);
        g->addWidget(lineEdit_StartBytes, 2, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Device address")), 3, 0);
        g->addWidget(lineEdit_DevAddr, 3, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Device number")), 4, 0);
        g->addWidget(lineEdit_DevNum, 4, 1);
        auto *checks = new QHBoxLayout;
        checks->addWidget(checkBox_ModbusM);
        checks->addWidget(checkBox_NoFB);
        checks->addWidget(checkBox_NoCRC);
        checks->addStretch(1);
        g->addLayout(checks, 5, 0, 1, 2);
        g->setRowStretch(6, 1);
        g->setColumnStretch(1, 1);
    }

    groupBox_Application = group("groupBox_Application");
    {
        auto *g = new QGridLayout(groupBox_Application);
        // The backlight: brightness when in use, when asleep, and the time
        // without touch before it dims.
        g->addWidget(checkBox_AutoBL, 0, 0, 1, 4);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Normal (10~63)")), 1, 0);
        g->addWidget(lineEdit_BLON, 1, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Sleep (0~63)")), 1, 2);
        g->addWidget(lineEdit_BLSP, 1, 3);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Hold time (s)")), 2, 0);
        g->addWidget(lineEdit_KPTM, 2, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Volume (0~16)")), 2, 2);
        g->addWidget(lineEdit_Volume, 2, 3);
        g->addWidget(checkBox_KeyBeep, 3, 0, 1, 2);
        g->addWidget(checkBoxInitVar, 3, 2, 1, 2);
        g->addWidget(checkBox_GBKCode, 4, 0, 1, 2);
        g->addWidget(checkBox_PageImageZip, 4, 2, 1, 2);
        g->addWidget(checkBox_ByteSwap, 5, 0, 1, 2);
        g->addWidget(checkBox_aRGB_Png, 5, 2, 1, 2);
        g->setRowStretch(6, 1);
        g->setColumnStretch(1, 1);
        g->setColumnStretch(3, 1);
    }

    groupBox_UserInfo = group("groupBox_UserInfo");
    {
        auto *g = new QGridLayout(groupBox_UserInfo);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "User ID")), 0, 0);
        g->addWidget(lineEdit_USER_KEY, 0, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "User version")), 0, 2);
        g->addWidget(lineEdit_UserVER, 0, 3);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Supplier ID")), 1, 0);
        g->addWidget(lineEdit_VC_KEY, 1, 1);
        g->addWidget(label(QT_TRANSLATE_NOOP("vantile::DialogProjectSetting", "Supplier version")), 1, 2);
        g->addWidget(lineEdit_VC_VER, 1, 3);
        g->setColumnStretch(1, 1);
        g->setColumnStretch(3, 1);
    }

    label_Title = new QLabel(this);
    label_Title->setObjectName(QStringLiteral("label_Title"));
    label_Title->setAlignment(Qt::AlignCenter);
    QFont titleFont = label_Title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    label_Title->setFont(titleFont);

    buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttonBox->setObjectName(QStringLiteral("buttonBox"));
    connect(buttonBox, &QDialogButtonBox::accepted, this, &QWidget::close);

    auto *frames = new QGridLayout;
    frames->addWidget(groupBox_General, 0, 0);
    frames->addWidget(groupBox_TFT, 0, 1);
    frames->addWidget(groupBox_Communication, 1, 0);
    frames->addWidget(groupBox_Application, 1, 1);
    frames->addWidget(groupBox_UserInfo, 2, 0, 1, 2);

    auto *top = new QVBoxLayout(this);
    top->addWidget(label_Title);
    top->addLayout(frames);
    top->addWidget(buttonBox);
}

void DialogProjectSetting::bindModel()
{
    using S = ProjectSettings;
    m_bind->texts = {
        {lineEdit_USER_KEY, [](S &s) -> QString & { return s.userId; }},
        {lineEdit_UserVER, [](S &s) -> QString & { return s.userVer; }},
        {lineEdit_VC_KEY, [](S &s) -> QString & { return s.supplierId; }},
        {lineEdit_VC_VER, [](S &s) -> QString & { return s.supplierVer; }},
        {lineEdit_StartBytes, [](S &s) -> QString & { return s.startBytes; }},
        {lineEdit_DevAddr, [](S &s) -> QString & { return s.devAddr; }},
        {lineEdit_DevNum, [](S &s) -> QString & { return s.devNum; }},
        {lineEdit_XSIZE, [](S &s) -> QString & { return s.xsize; }},
        {lineEdit_YSIZE, [](S &s) -> QString & { return s.ysize; }},
        {lineEdit_VBPD, [](S &s) -> QString & { return s.tft.vbpd; }},
        {lineEdit_VFPD, [](S &s) -> QString & { return s.tft.vfpd; }},
        {lineEdit_VSPW, [](S &s) -> QString & { return s.tft.vspw; }},
        {lineEdit_HBPD, [](S &s) -> QString & { return s.tft.hbpd; }},
        {lineEdit_HFPD, [](S &s) -> QString & { return s.tft.hfpd; }},
        {lineEdit_HSPW, [](S &s) -> QString & { return s.tft.hspw; }},
        {lineEdit_BLON, [](S &s) -> QString & { return s.blon; }},
        {lineEdit_BLSP, [](S &s) -> QString & { return s.blsp; }},
        {lineEdit_KPTM, [](S &s) -> QString & { return s.kptm; }},
        {lineEdit_Volume, [](S &s) -> QString & { return s.volume; }},
        {lineEdit_LangueNum, [](S &s) -> QString & { return s.languageNum; }},
        {lineEdit_GeData, [](S &s) -> QString & { return s.geData; }},
    };
    m_bind->checks = {
        {checkBox_ModbusM, [](S &s) -> bool & { return s.modbusMaster; }},
        {checkBox_NoFB, [](S &s) -> bool & { return s.noFeedBack; }},
        {checkBox_NoCRC, [](S &s) -> bool & { return s.noCrc; }},
        {checkBox_PCLK, [](S &s) -> bool & { return s.tft.pclk; }},
        {checkBox_HSYNC, [](S &s) -> bool & { return s.tft.hsync; }},
        {checkBox_VSYNC, [](S &s) -> bool & { return s.tft.vsync; }},
        {checkBox_DE, [](S &s) -> bool & { return s.tft.de; }},
        {checkBox_BGR, [](S &s) -> bool & { return s.tft.bgr; }},
        {checkBox_AutoBL, [](S &s) -> bool & { return s.autoBL; }},
        {checkBox_KeyBeep, [](S &s) -> bool & { return s.keyBeep; }},
        {checkBoxInitVar, [](S &s) -> bool & { return s.initVar; }},
        {checkBox_GBKCode, [](S &s) -> bool & { return s.gbkCode; }},
        {checkBox_PageImageZip, [](S &s) -> bool & { return s.pageImageZip; }},
        {checkBox_ByteSwap, [](S &s) -> bool & { return s.byteSwap; }},
        {checkBox_aRGB_Png, [](S &s) -> bool & { return s.aRgbPng; }},
    };
    m_bind->combos = {
        {comboBox_BAUD, [](S &s) -> int & { return s.baudrate; }},
        {comboBox_EOCheck, [](S &s) -> int & { return s.eoCheck; }},
        {comboBox_RGBIF, [](S &s) -> int & { return s.colorDepth; }},
        {comboBox_Rotate, [](S &s) -> int & { return s.rotate; }},
        {comboBox_FlhSize, [](S &s) -> int & { return s.flashSize; }},
        {comboBox_NdlDType, [](S &s) -> int & { return s.needleDataType; }},
    };

    for (const Bindings::Text &b : m_bind->texts) {
        const auto field = b.field;
        connect(b.edit, &QLineEdit::textEdited, this, [this, field](const QString &text) {
            if (!m_loading)
                field(*m_model) = text;
        });
    }
    for (const Bindings::Check &b : m_bind->checks) {
        const auto field = b.field;
        connect(b.box, &QCheckBox::toggled, this, [this, field](bool on) {
            if (!m_loading)
                field(*m_model) = on;
        });
    }
    for (const Bindings::Combo &b : m_bind->combos) {
        const auto field = b.field;
        connect(b.box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, field](int index) {
            if (!m_loading && index >= 0)
                field(*m_model) = index;
        });
    }
    connect(comboBox_SPage, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int index) {
        if (!m_loading && index >= 0)
            m_model->startPage = index;
    });
    connect(comboBox_ICType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &DialogProjectSetting::on_comboBox_ICType_currentIndexChanged);
    connect(comboBox_FalshType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &DialogProjectSetting::on_comboBox_FalshType_currentIndexChanged);
}

// --- model to fields ---------------------------------------------------------------

void DialogProjectSetting::setSettings(ProjectSettings *model)
{
    m_model = model ? model : &m_ownModel;
}

void DialogProjectSetting::fillFields()
{
    const bool wasLoading = m_loading;
    m_loading = true;
    for (const Bindings::Text &b : m_bind->texts)
        b.edit->setText(b.field(*m_model));
    for (const Bindings::Check &b : m_bind->checks)
        b.box->setChecked(b.field(*m_model));
    for (const Bindings::Combo &b : m_bind->combos)
        b.box->setCurrentIndex(b.field(*m_model));
    comboBox_ICType->setCurrentIndex(m_model->panelType);
    setFlashTypeCombo(m_model->flashTypeIndex);
    if (comboBox_SPage->count() > 0) {
        if (m_model->startPage < 0 || m_model->startPage >= comboBox_SPage->count())
            m_model->startPage = 0; // the start page must be a page of the project
        comboBox_SPage->setCurrentIndex(m_model->startPage);
    }
    m_loading = wasLoading;
}

// The flash type combo has two items; the model's index 2 is the blank state.
void DialogProjectSetting::setFlashTypeCombo(int modelIndex)
{
    comboBox_FalshType->setCurrentIndex(modelIndex == 0 || modelIndex == 1 ? modelIndex : -1);
}

void DialogProjectSetting::applyChipStates(int chip, bool fromLoad)
{
    const ChipRule &rule = chipRule(chip);
    auto apply = [](QWidget *w, ChipEffect e) {
        if (e != ChipEffect::Leave)
            w->setEnabled(e == ChipEffect::Enable);
    };

    apply(comboBox_FalshType, rule.flashTypeEnabled);
    apply(checkBox_ByteSwap, rule.byteSwapEnabled);
    apply(comboBox_Rotate, rule.rotateEnabled);

    if (fromLoad) {
        // A project read from its file: the page image compression is offered
        // only where the chip has it. A check that is on is never shown greyed.
        checkBox_PageImageZip->setEnabled(ProjectSettings::pageImageZipAllowed(chip) || m_model->pageImageZip);
    } else {
        apply(checkBox_PageImageZip, rule.pageImageZipEnabled);
    }

    // The eleven TFT controls are disabled exactly while they are cleared.
    const bool tftOn = !m_model->tftCleared;
    for (QWidget *w : std::initializer_list<QWidget *>{lineEdit_HBPD, lineEdit_HFPD, lineEdit_HSPW, lineEdit_VBPD,
                                                       lineEdit_VFPD, lineEdit_VSPW, checkBox_PCLK, checkBox_HSYNC,
                                                       checkBox_VSYNC, checkBox_DE, checkBox_BGR})
        w->setEnabled(tftOn);
}

void DialogProjectSetting::loadFromSettings()
{
    fillFields();
    applyChipStates(m_model->panelType, true);
    emit ICType_change(m_model->panelType);
}

void DialogProjectSetting::setPageItems(const QStringList &items)
{
    const bool wasLoading = m_loading;
    m_loading = true;
    comboBox_SPage->clear();
    comboBox_SPage->addItems(items);
    if (!items.isEmpty()) {
        if (m_model->startPage < 0 || m_model->startPage >= items.size())
            m_model->startPage = 0;
        comboBox_SPage->setCurrentIndex(m_model->startPage);
    }
    m_loading = wasLoading;
}

// --- user edits with rules ------------------------------------------------------------

void DialogProjectSetting::on_comboBox_ICType_currentIndexChanged(int index)
{
    if (m_loading || index < 0)
        return;
    m_model->applyChip(index);
    fillFields();
    applyChipStates(index, false);
    emit ICType_change(index);
}

void DialogProjectSetting::on_comboBox_FalshType_currentIndexChanged(int index)
{
    if (m_loading || index < 0)
        return;
    m_model->setFlashTypeIndex(index);
}

// --- modes and closing -----------------------------------------------------------------

void DialogProjectSetting::setNewProjectMode(bool on)
{
    m_newProjectMode = on;
}

void DialogProjectSetting::storeResolution()
{
    m_storedX = lineEdit_XSIZE->text();
    m_storedY = lineEdit_YSIZE->text();
}

void DialogProjectSetting::reject()
{
    close();
}

void DialogProjectSetting::closeEvent(QCloseEvent *event)
{
    if (!m_newProjectMode && (lineEdit_XSIZE->text() != m_storedX || lineEdit_YSIZE->text() != m_storedY)) {
        const QMessageBox::StandardButton answer = Prompts::question(
            this, tr("Message"),
            tr("Modifying the resolution may cause the page to be distorted, are you sure to modify it?"),
            {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}, {tr("Yes"), tr("No"), tr("Cancel")});
        if (answer == QMessageBox::Yes) {
            storeResolution();
        } else if (answer == QMessageBox::No) {
            lineEdit_XSIZE->setText(m_storedX);
            lineEdit_YSIZE->setText(m_storedY);
            m_model->xsize = m_storedX;
            m_model->ysize = m_storedY;
        } else {
            event->ignore(); // Cancel, or the box closed without an answer
            return;
        }
    }
    emit Resolution_refres();
    if (m_newProjectMode)
        emit new_prj_setting_close();
    event->accept();
}

// --- texts -------------------------------------------------------------------------

void DialogProjectSetting::retranslate()
{
    setWindowTitle(tr("Project Setting"));
    label_Title->setText(tr("Projrct Setting"));

    groupBox_General->setTitle(tr("General"));
    groupBox_Application->setTitle(tr("Application"));
    groupBox_Communication->setTitle(tr("Communication"));
    groupBox_TFT->setTitle(tr("TFT panel"));
    groupBox_UserInfo->setTitle(tr("User Information"));

    for (const auto &l : qAsConst(m_labels))
        l.first->setText(trText(l.second));

    checkBox_ModbusM->setText(tr("Master mode"));
    checkBox_NoCRC->setText(tr("No CRC padding"));
    checkBox_NoFB->setText(tr("No reply"));
    checkBox_KeyBeep->setText(tr("Key with beep"));
    checkBoxInitVar->setText(tr("Initialize variable"));
    checkBox_GBKCode->setText(tr("With GBKCode"));
    checkBox_PageImageZip->setText(tr("Page Image Zip"));
    checkBox_ByteSwap->setText(tr("Byte Swap"));
    checkBox_aRGB_Png->setText(tr("aRGB Png"));
    checkBox_AutoBL->setText(tr("Auto Dimming"));
    checkBox_PCLK->setText(tr("PCLK_Falling"));
    checkBox_HSYNC->setText(tr("HSYNC_High"));
    checkBox_VSYNC->setText(tr("VSYNC_High"));
    checkBox_DE->setText(tr("DE_High"));
    checkBox_BGR->setText(tr("BGR"));

    // Item texts only: the indices and the model stay as they are.
    for (int i = 0; i < comboBox_EOCheck->count() && i < int(std::size(kEOCheckItems)); ++i)
        comboBox_EOCheck->setItemText(i, trText(kEOCheckItems[i]));
    for (int i = 0; i < comboBox_Rotate->count() && i < int(std::size(kRotateItems)); ++i)
        comboBox_Rotate->setItemText(i, trText(kRotateItems[i]));

    if (QPushButton *ok = buttonBox->button(QDialogButtonBox::Ok))
        ok->setText(tr("OK"));
}

} // namespace vantile
