// The form of the main window: widgets, menus, tool bar and their texts.
// Every action is described once in the tables below; building the form,
// the tool bar and the retranslation all read the same tables.

#include "app/FlowLayout.h"
#include "app/Icons.h"
#include "app/MainWindow.h"
#include "app/TableView.h"
#include "designer/WidgetLook.h"

#include <QActionEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTableView>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>


namespace vantile {

namespace {

QString trForm(const char *text)
{
    return QCoreApplication::translate("vantile::MainWindow", text);
}

struct ActionSpec {
    const char *name;
    const char *text;      // translated
    const char *iconText;  // both languages, not translated; null: the text
    const char *shortcut;
    const char *mark;      // the icon's mark
    QRgb color;
};

constexpr QRgb kFile = 0x3a6ea5, kTool = 0x5b7a3a, kHelp = 0x7a5b9a, kTouch = 0xd0703a,
               kShow = 0x2f8f9d, kAlign = 0x4a6fd0, kView = 0x6a6a6a, kEdit = 0xb04a5a,
               kStep = 0x8a6d2a, kLock = 0x555555;

// Menu actions; a null name is a separator.
const ActionSpec kFileMenu[] = {
    {"actionInput_uiprj", QT_TRANSLATE_NOOP("vantile::MainWindow", "Open project"), nullptr, "Ctrl+O", "Op", kFile},
    {"actionNew_project", QT_TRANSLATE_NOOP("vantile::MainWindow", "New project"), nullptr, "Ctrl+N", "Nw", kFile},
    {"actionProject_Setting", QT_TRANSLATE_NOOP("vantile::MainWindow", "Project Setting"), nullptr, nullptr, "St", kFile},
    {"actionAddr_Setting", QT_TRANSLATE_NOOP("vantile::MainWindow", "OTA Update Addr Setting"), nullptr, nullptr, "OT", kFile},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionMake_bin", QT_TRANSLATE_NOOP("vantile::MainWindow", "Build project"), nullptr, "Ctrl+B", "Bd", kFile},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionClearPrj", QT_TRANSLATE_NOOP("vantile::MainWindow", "Clear project"), nullptr, nullptr, "Cl", kFile},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionLoad_default_cfg", QT_TRANSLATE_NOOP("vantile::MainWindow", "Load latest page cfg"), nullptr, nullptr, "Ld", kFile},
    {"actionSave_current_pgae", QT_TRANSLATE_NOOP("vantile::MainWindow", "Save current page cfg"), nullptr, nullptr, "Sp", kFile},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionSave_All", QT_TRANSLATE_NOOP("vantile::MainWindow", "Save All"), nullptr, "Ctrl+S", "Sa", kFile},
    {"actionExit", QT_TRANSLATE_NOOP("vantile::MainWindow", "Exit"), nullptr, nullptr, "Ex", kFile},
};

const ActionSpec kToolMenu[] = {
    {"actionExport_variable", QT_TRANSLATE_NOOP("vantile::MainWindow", "Export variable"), nullptr, nullptr, "Ev", kTool},
    {"actionVariable_control", QT_TRANSLATE_NOOP("vantile::MainWindow", "Variable control"), nullptr, nullptr, "Vc", kTool},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionModbus", QT_TRANSLATE_NOOP("vantile::MainWindow", "Modbus"), nullptr, nullptr, "Mb", kTool},
    {"actionConstant_Label", QT_TRANSLATE_NOOP("vantile::MainWindow", "Static Text"), nullptr, nullptr, "Tx", kTool},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionUartDebug", QT_TRANSLATE_NOOP("vantile::MainWindow", "Vantile Debug"), nullptr, nullptr, "Db", kTool},
    {"actionFont_tool", QT_TRANSLATE_NOOP("vantile::MainWindow", "Font tool"), nullptr, nullptr, "Ft", kTool},
    {"actionImageNumber", QT_TRANSLATE_NOOP("vantile::MainWindow", "Numbering"), nullptr, nullptr, "No", kTool},
    {"actionToneForge", QT_TRANSLATE_NOOP("vantile::MainWindow", "ToneForge"), nullptr, nullptr, "Tf", kTool},
    {"actionEmulator", QT_TRANSLATE_NOOP("vantile::MainWindow", "Emulator"), nullptr, nullptr, "Em", kTool},
};

const ActionSpec kHelpMenuHead[] = {
    {"actionWriteAddr", QT_TRANSLATE_NOOP("vantile::MainWindow", "WriteAddr"), nullptr, "Ctrl+A", "WA", kHelp},
    {"actionFile_Timestamp", QT_TRANSLATE_NOOP("vantile::MainWindow", "File Timestamp"), nullptr, nullptr, "TS", kHelp},
};
const ActionSpec kLanguageMenu[] = {
    {"actionChinese", QT_TRANSLATE_NOOP("vantile::MainWindow", "Chinese"), nullptr, nullptr, "中", kHelp},
    {"actionEnglish", QT_TRANSLATE_NOOP("vantile::MainWindow", "English"), nullptr, nullptr, "En", kHelp},
};
const ActionSpec kToolBarTextMenu[] = {
    {"actionOpen", QT_TRANSLATE_NOOP("vantile::MainWindow", "Open"), nullptr, nullptr, "T", kHelp},
    {"actionClose", QT_TRANSLATE_NOOP("vantile::MainWindow", "Close"), nullptr, nullptr, "I", kHelp},
};
const ActionSpec kAutoSaveMenu[] = {
    {"actionAutoSaveOpen", QT_TRANSLATE_NOOP("vantile::MainWindow", "Open"), nullptr, nullptr, "On", kHelp},
    {"actionAutoSaveClose", QT_TRANSLATE_NOOP("vantile::MainWindow", "Close"), nullptr, nullptr, "Of", kHelp},
};
const ActionSpec kHelpMenuTail[] = {
    {"actionDirections_for_use", QT_TRANSLATE_NOOP("vantile::MainWindow", "Directions for use"), nullptr, nullptr, "?", kHelp},
    {"actionCheckProject", QT_TRANSLATE_NOOP("vantile::MainWindow", "Check Project"), nullptr, nullptr, "Ck", kHelp},
    {"actionAbout", QT_TRANSLATE_NOOP("vantile::MainWindow", "About"), nullptr, nullptr, "i", kHelp},
};

// The Add actions, one per kind. They live in the widget palette, grouped
// by the kinds' families (WidgetLook), not on the tool bar.
const ActionSpec kAddSpecs[] = {
    {"AddButton", QT_TRANSLATE_NOOP("vantile::MainWindow", "Button"), "按键\nButton", nullptr, "Bt", kTouch},
    {"AddSlideMemu", QT_TRANSLATE_NOOP("vantile::MainWindow", "SlideMenu"), "滑动菜单\nSlide Menu", nullptr, "SM", kTouch},
    {"AddPopupBox", QT_TRANSLATE_NOOP("vantile::MainWindow", "PopupBox"), "弹出窗体\nPopupBox", nullptr, "PB", kTouch},
    {"AddVarAdj", QT_TRANSLATE_NOOP("vantile::MainWindow", "VarAdj"), "变量调节\nVariable Button", nullptr, "VA", kTouch},
    {"AddBatchVar", QT_TRANSLATE_NOOP("vantile::MainWindow", "BatchVar"), "多变量操作\nMulti-Variable Button", nullptr, "MV", kTouch},
    {"AddRingTouch", QT_TRANSLATE_NOOP("vantile::MainWindow", "RingTouch"), "环形触摸\nCircular Touch", nullptr, "RT", kTouch},
    {"AddSlider", QT_TRANSLATE_NOOP("vantile::MainWindow", "Slider"), "滑条\nSlider Bar", nullptr, "Sl", kTouch},
    {"actionCrossPageMenu", QT_TRANSLATE_NOOP("vantile::MainWindow", "Cross-Page Menu"), "滑动选单\nCross-Page Menu", nullptr, "CP", kTouch},
    {"AddKeypad", QT_TRANSLATE_NOOP("vantile::MainWindow", "Keypad"), "数字键盘\nNumeric Keypad", nullptr, "KP", kTouch},
    {"AddEN_KeyBooard", QT_TRANSLATE_NOOP("vantile::MainWindow", "EN_KB"), "英文键盘\nEN_KeyBoard", nullptr, "EN", kTouch},
    {"AddCN_KeyBoard", QT_TRANSLATE_NOOP("vantile::MainWindow", "CN_KB"), "中文键盘\nCN_KeyBoard", nullptr, "CN", kTouch},
    {"AddKBkey", QT_TRANSLATE_NOOP("vantile::MainWindow", "KBkey"), "键盘按键\nSingleKey", nullptr, "K", kTouch},
    {"AddLabel", QT_TRANSLATE_NOOP("vantile::MainWindow", "Label"), "字符串\nString Label", nullptr, "Ab", kShow},
    {"AddLabel_2", QT_TRANSLATE_NOOP("vantile::MainWindow", "Statictext"), "静态文本\nStatic Text", nullptr, "ST", kShow},
    {"AddTextRoll", QT_TRANSLATE_NOOP("vantile::MainWindow", "TextRoll"), "滚动文字\nText Scroll", nullptr, "TR", kShow},
    {"AddNumber", QT_TRANSLATE_NOOP("vantile::MainWindow", "Number"), "字库数字\nText Number Display", nullptr, "12", kShow},
    {"AddpngNumber", QT_TRANSLATE_NOOP("vantile::MainWindow", "pngNumber"), "图片数字\nGraphics Number Display", nullptr, "#", kShow},
    {"AddClcok", QT_TRANSLATE_NOOP("vantile::MainWindow", "Clock"), "模拟时钟\nAnalog Clock", nullptr, "Ck", kShow},
    {"AddRTC", QT_TRANSLATE_NOOP("vantile::MainWindow", "RTC"), "数字时钟\nDigital Clock", nullptr, "RC", kShow},
    {"AddUITimer", QT_TRANSLATE_NOOP("vantile::MainWindow", "Timer"), "计时器\nTimer", nullptr, "Tm", kShow},
    {"AddGif", QT_TRANSLATE_NOOP("vantile::MainWindow", "Gif"), "动图\nGif", nullptr, "Gf", kShow},
    {"AddQRCode", QT_TRANSLATE_NOOP("vantile::MainWindow", "QRCode"), "二维码\nQRCode", nullptr, "QR", kShow},
    {"AddWav", QT_TRANSLATE_NOOP("vantile::MainWindow", "Wav"), "音频播放\nAudio Play", nullptr, "♪", kShow},
    {"AddProgress", QT_TRANSLATE_NOOP("vantile::MainWindow", "Progress"), "进度条\nProgress Bar", nullptr, "Pg", kShow},
    {"AddRingProgress", QT_TRANSLATE_NOOP("vantile::MainWindow", "RingProgress"), "环形进度条\nCircular Progress Bar", nullptr, "RP", kShow},
    {"AddbitIcon", QT_TRANSLATE_NOOP("vantile::MainWindow", "bitIcon"), "位元状态\nBit Status", nullptr, "bI", kShow},
    {"actionAuto_Variable", QT_TRANSLATE_NOOP("vantile::MainWindow", "Auto Variable"), "自动变量\nAutomatic variable", nullptr, "AV", kShow},
    {"AddIcon", QT_TRANSLATE_NOOP("vantile::MainWindow", "Icon"), "小图标\nIcon", nullptr, "Ic", kShow},
    {"AddCurve", QT_TRANSLATE_NOOP("vantile::MainWindow", "Curve"), "曲线\nTrend Graph", nullptr, "Cv", kShow},
    {"AddEncoder", QT_TRANSLATE_NOOP("vantile::MainWindow", "Encoder"), "编码器\nEncoder", nullptr, "Ec", kShow},
    {"actionNeedle", QT_TRANSLATE_NOOP("vantile::MainWindow", "Needle"), "指针\nNeedle", nullptr, "Nd", kShow},
    {"actionAddCamera", QT_TRANSLATE_NOOP("vantile::MainWindow", "Camera"), "摄像头\nCamera", nullptr, "Ca", kShow},
    {"actionAddVideo", QT_TRANSLATE_NOOP("vantile::MainWindow", "Video"), "VC650视频\nVC650 Video", nullptr, "Vi", kShow},
};

// The tool bar: the project commands, always there.
const char *const kMainToolBar[] = {"actionInput_uiprj", "actionNew_project", "actionSave_All", nullptr,
                                    "actionMake_bin"};

// The edit group, on the tool bar in the icons-only mode (the frame of tool
// buttons stands in for it in the text mode); a null name is a separator.
const ActionSpec kEditBar[] = {
    {"actionLeft_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Left_Align"), "左对齐\nLeft Align", nullptr, "|←", kAlign},
    {"actionRight_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Right_Align"), "右对齐\nRight Align", nullptr, "→|", kAlign},
    {"actionTop_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Top_Align"), "顶对齐\nTop Align", nullptr, "↑", kAlign},
    {"actionBottom_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Bottom_Align"), "底对齐\nBottom Align", nullptr, "↓", kAlign},
    {"actionWidth_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Width_Align"), "等宽\nSame Width", nullptr, "↔", kAlign},
    {"actionHeight_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Height_Align"), "等高\nSame Height", nullptr, "↕", kAlign},
    {"actionShape_Align", QT_TRANSLATE_NOOP("vantile::MainWindow", "Shape_Align"), "等大小\nSame Size", nullptr, "□", kAlign},
    {"actionLevel_layout", QT_TRANSLATE_NOOP("vantile::MainWindow", "Level_layout"), "水平等距\nHorizontal Spacing", nullptr, "⇹", kAlign},
    {"actionVertical_layout", QT_TRANSLATE_NOOP("vantile::MainWindow", "Vertical_layout"), "垂直等距\nVertical Spacing", nullptr, "⇳", kAlign},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionZoomin", QT_TRANSLATE_NOOP("vantile::MainWindow", "Zoomin"), "放大\nZoom In", "Ctrl+I", "+", kView},
    {"actionZoomout", QT_TRANSLATE_NOOP("vantile::MainWindow", "Zoomout"), "缩小\nZoom Out", "Ctrl+U", "−", kView},
    {"actionOriginal", QT_TRANSLATE_NOOP("vantile::MainWindow", "Original"), "原始大小\nOriginal Size", "Ctrl+Q", "1:1", kView},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionWidget_Clone", QT_TRANSLATE_NOOP("vantile::MainWindow", "Widget_Clone"), "克隆\nClone", nullptr, "Cn", kEdit},
    {"actionWidget_Copy", QT_TRANSLATE_NOOP("vantile::MainWindow", "Widget_Copy"), "复制\nCopy", "Ctrl+C", "Cp", kEdit},
    {"actionWidget_Paste", QT_TRANSLATE_NOOP("vantile::MainWindow", "Widget_Paste"), "粘贴\nPaste", "Ctrl+V", "Ps", kEdit},
    {"actionDelete", QT_TRANSLATE_NOOP("vantile::MainWindow", "Delete"), "删除\nDelete", nullptr, "×", kEdit},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionLastPageDesign", QT_TRANSLATE_NOOP("vantile::MainWindow", "Load previous step"), "撤销\nUndo", "Ctrl+Z", "↶", kStep},
    {"actionLoad_next_cfb", QT_TRANSLATE_NOOP("vantile::MainWindow", "Load next step"), "重做\nRedo", "Ctrl+Y", "↷", kStep},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0},
    {"actionLock", QT_TRANSLATE_NOOP("vantile::MainWindow", "Lock"), "锁定\nLock", nullptr, "L", kLock},
    {"actionUnlock", QT_TRANSLATE_NOOP("vantile::MainWindow", "Unlock"), "解锁\nUnlock", nullptr, "U", kLock},
};

// The frame of tool buttons and the action each one runs.
struct ToolButtonSpec {
    const char *name;
    const char *action;
};
const ToolButtonSpec kToolButtons[] = {
    {"toolButton_Last", "actionLastPageDesign"},
    {"toolButton_Next", "actionLoad_next_cfb"},
    {"toolButton_Delete", "actionDelete"},
    {"toolButton_Widget_Clone", "actionWidget_Clone"},
    {"toolButton_Widget_Copy", "actionWidget_Copy"},
    {"toolButton_Widget_Paste", "actionWidget_Paste"},
    {"toolButton_Left_Align", "actionLeft_Align"},
    {"toolButton_Right_Align", "actionRight_Align"},
    {"toolButton_Top_Align", "actionTop_Align"},
    {"toolButton_Bottom_Align", "actionBottom_Align"},
    {"toolButton_Width_Align", "actionWidth_Align"},
    {"toolButton_Height_Align", "actionHeight_Align"},
    {"toolButton_Shape_Consistent", "actionShape_Align"},
    {"toolButton_Horizontal_Equidistance", "actionLevel_layout"},
    {"toolButton_Vertical_Equidistance", "actionVertical_layout"},
    {"toolButton_Zoom_in", "actionZoomin"},
    {"toolButton_Zoom_out", "actionZoomout"},
    {"toolButton_100", "actionOriginal"},
    {"toolButton_Lock", "actionLock"},
    {"toolButton_Unlock", "actionUnlock"},
};

template <size_t N>
constexpr size_t count(const ActionSpec (&)[N])
{
    return N;
}

const char *const kMenuTitles[][2] = {
    {"menuFile", QT_TRANSLATE_NOOP("vantile::MainWindow", "File")},
    {"menuTool", QT_TRANSLATE_NOOP("vantile::MainWindow", "Tool")},
    {"menuHelp", QT_TRANSLATE_NOOP("vantile::MainWindow", "Help")},
    {"menuLanguage", QT_TRANSLATE_NOOP("vantile::MainWindow", "Language")},
    {"menuToolBar_Text", QT_TRANSLATE_NOOP("vantile::MainWindow", "ToolBar-Text")},
    {"menuAuto_Save", QT_TRANSLATE_NOOP("vantile::MainWindow", "Auto Save")},
};

// Every action spec, for lookups by name.
template <typename F>
void forEachSpec(F f)
{
    for (const auto &s : kFileMenu) f(s);
    for (const auto &s : kToolMenu) f(s);
    for (const auto &s : kHelpMenuHead) f(s);
    for (const auto &s : kLanguageMenu) f(s);
    for (const auto &s : kToolBarTextMenu) f(s);
    for (const auto &s : kAutoSaveMenu) f(s);
    for (const auto &s : kHelpMenuTail) f(s);
    for (const auto &s : kAddSpecs) f(s);
    for (const auto &s : kEditBar) f(s);
}

template <typename View = QTableView>
View *makeTable(QWidget *parent, const char *name, const QString &headerStyle, const QString &selectionStyle)
{
    auto *t = new View(parent);
    t->setObjectName(QLatin1String(name));
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->horizontalHeader()->setStyleSheet(headerStyle);
    if (!selectionStyle.isEmpty())
        t->setStyleSheet(selectionStyle);
    t->verticalHeader()->setVisible(false);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->setSelectionMode(QAbstractItemView::SingleSelection);
    t->horizontalHeader()->setStretchLastSection(true);
    return t;
}

// A button of the widget palette: it shows its Add action (icon, behaviour,
// enabled and visible state, the tool bar's way) with the action's translated text beside the
// icon, and both languages' captions as its tip.
class PaletteButton : public QToolButton
{
public:
    PaletteButton(QAction *action, QWidget *parent) : QToolButton(parent)
    {
        setObjectName(QStringLiteral("paletteButton_") + action->objectName());
        setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        setAutoRaise(true);
        setIconSize(QSize(18, 18));
        setDefaultAction(action);
        syncWithAction();
    }

protected:
    void actionEvent(QActionEvent *event) override
    {
        QToolButton::actionEvent(event); // takes the action's icon text again
        if (event->type() == QEvent::ActionChanged && event->action() == defaultAction())
            syncWithAction();
    }

private:
    void syncWithAction()
    {
        setText(defaultAction()->text());
        setVisible(defaultAction()->isVisible()); // a kind the chip lacks is not offered
        setToolTip(defaultAction()->iconText().replace(QLatin1Char('\n'), QLatin1String(" / ")));
    }
};

} // namespace

QAction *MainWindow::makeAction(const char *objectName)
{
    const QString name = QLatin1String(objectName);
    if (QAction *a = m_actions.value(name))
        return a;
    auto *a = new QAction(this);
    a->setObjectName(name);
    m_actions.insert(name, a);
    return a;
}

void MainWindow::setupForm()
{
    setObjectName(QStringLiteral("MainWindow"));
    resize(1400, 860);

    // Actions first, with icons and shortcuts; texts come in retranslateForm().
    forEachSpec([this](const ActionSpec &s) {
        if (!s.name)
            return;
        QAction *a = makeAction(s.name);
        a->setIcon(Icons::tile(QString::fromUtf8(s.mark), QColor(s.color)));
        a->setProperty("mark", QString::fromUtf8(s.mark));
        if (s.shortcut)
            a->setShortcut(QKeySequence(QLatin1String(s.shortcut)));
    });

    // Menus
    auto fillMenu = [this](QMenu *menu, const ActionSpec *specs, size_t n) {
        for (size_t i = 0; i < n; ++i) {
            if (!specs[i].name)
                menu->addSeparator();
            else
                menu->addAction(m_actions.value(QLatin1String(specs[i].name)));
        }
    };
    menuFile = menuBar()->addMenu(QString());
    menuFile->setObjectName(QStringLiteral("menuFile"));
    fillMenu(menuFile, kFileMenu, count(kFileMenu));
    menuTool = menuBar()->addMenu(QString());
    menuTool->setObjectName(QStringLiteral("menuTool"));
    fillMenu(menuTool, kToolMenu, count(kToolMenu));
    menuHelp = menuBar()->addMenu(QString());
    menuHelp->setObjectName(QStringLiteral("menuHelp"));
    fillMenu(menuHelp, kHelpMenuHead, count(kHelpMenuHead));
    menuLanguage = menuHelp->addMenu(QString());
    menuLanguage->setObjectName(QStringLiteral("menuLanguage"));
    fillMenu(menuLanguage, kLanguageMenu, count(kLanguageMenu));
    menuToolBar_Text = menuHelp->addMenu(QString());
    menuToolBar_Text->setObjectName(QStringLiteral("menuToolBar_Text"));
    fillMenu(menuToolBar_Text, kToolBarTextMenu, count(kToolBarTextMenu));
    menuAuto_Save = menuHelp->addMenu(QString());
    menuAuto_Save->setObjectName(QStringLiteral("menuAuto_Save"));
    fillMenu(menuAuto_Save, kAutoSaveMenu, count(kAutoSaveMenu));
    fillMenu(menuHelp, kHelpMenuTail, count(kHelpMenuTail));
    menuBar()->setObjectName(QStringLiteral("menubar"));

    // The ticked entries: one of each pair.
    const char *const pairs[][2] = {{"actionChinese", "actionEnglish"},
                                    {"actionOpen", "actionClose"},
                                    {"actionAutoSaveOpen", "actionAutoSaveClose"}};
    for (const auto &p : pairs) {
        auto *group = new QActionGroup(this);
        for (const char *n : p) {
            QAction *a = m_actions.value(QLatin1String(n));
            a->setCheckable(true);
            group->addAction(a);
        }
    }

    // Tool bar: the project commands; the edit group joins them in the
    // icons-only mode (on_actionClose_triggered).
    toolBar = new QToolBar(this);
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setIconSize(QSize(28, 28));
    addToolBar(Qt::TopToolBarArea, toolBar);
    for (const char *name : kMainToolBar) {
        if (name)
            toolBar->addAction(m_actions.value(QLatin1String(name)));
        else
            toolBar->addSeparator();
    }
    auto separator = [this]() {
        auto *sep = new QAction(this);
        sep->setSeparator(true);
        return sep;
    };
    m_editToolBarItems.append(separator());
    for (const ActionSpec &s : kEditBar) {
        if (!s.name) {
            m_editToolBarItems.append(separator());
            continue;
        }
        QAction *a = m_actions.value(QLatin1String(s.name));
        m_editToolBarItems.append(a);
        m_editActions.append(a);
    }

    // A shortcut works only while its action sits on a visible widget of
    // the window; the window itself holds every action that has one, so the
    // keys work whatever the tool bar and the menus show.
    forEachSpec([this](const ActionSpec &s) {
        if (s.name && s.shortcut)
            addAction(m_actions.value(QLatin1String(s.name)));
    });

    setupPalette();

    // Central area: page list | canvas over log | widget and parameter tables
    centralwidget = new QWidget(this);
    centralwidget->setObjectName(QStringLiteral("centralwidget"));
    setCentralWidget(centralwidget);
    auto *centralLayout = new QHBoxLayout(centralwidget);
    centralLayout->setContentsMargins(2, 2, 2, 2);
    splitter_main = new QSplitter(Qt::Horizontal, centralwidget);
    splitter_main->setObjectName(QStringLiteral("splitter_main"));
    centralLayout->addWidget(splitter_main);

    widget_page = new QWidget(splitter_main);
    widget_page->setObjectName(QStringLiteral("widget_page"));
    auto *pageLayout = new QVBoxLayout(widget_page);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    tableView_Page = makeTable(widget_page, "tableView_Page",
                               QStringLiteral("QHeaderView::section{background:LightSkyBlue;}"),
                               QStringLiteral("QTableView::item{selection-background-color:rgb(23,165,230)}"));
    pageLayout->addWidget(tableView_Page);

    splitter_2 = new QSplitter(Qt::Vertical, splitter_main);
    splitter_2->setObjectName(QStringLiteral("splitter_2"));
    widget = new QWidget(splitter_2);
    widget->setObjectName(QStringLiteral("widget"));
    auto *canvasLayout = new QVBoxLayout(widget);
    canvasLayout->setContentsMargins(0, 0, 0, 0);
    canvasLayout->setSpacing(2);

    // The frame of tool buttons wraps into as many rows as the width needs.
    frame_tools = new QFrame(widget);
    frame_tools->setObjectName(QStringLiteral("frame"));
    frame_tools->setFrameShape(QFrame::StyledPanel);
    QFont toolsFont = frame_tools->font();
    toolsFont.setPointSizeF(toolsFont.pointSizeF() * 0.75);
    frame_tools->setFont(toolsFont);
    auto *toolsLayout = new FlowLayout(frame_tools, 1, 10);
    toolsLayout->setContentsMargins(2, 2, 2, 2);
    QAction *previous = nullptr;
    for (const ToolButtonSpec &t : kToolButtons) {
        auto *b = new QToolButton(frame_tools);
        b->setObjectName(QLatin1String(t.name));
        b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        b->setAutoRaise(true);
        QAction *a = m_actions.value(QLatin1String(t.action));
        b->setIcon(a->icon());
        b->setIconSize(QSize(20, 20));
        connect(b, &QToolButton::clicked, a, &QAction::trigger);
        // the groups of the edit bar: a separator there, a gap here
        const int at = m_editToolBarItems.indexOf(a);
        if (previous && at > 0 && m_editToolBarItems.at(at - 1)->isSeparator())
            toolsLayout->startGroup();
        previous = a;
        toolsLayout->addWidget(b);
        m_toolButtons.insert(QLatin1String(t.name), b);
    }
    m_toolsHolder = frame_tools;
    canvasLayout->addWidget(frame_tools);

    scrollArea = new QScrollArea(widget);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setBackgroundRole(QPalette::Dark);
    scrollArea->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label_Show = new QLabel;
    label_Show->setObjectName(QStringLiteral("label_Show"));
    label_Show->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    canvasLayout->addWidget(scrollArea, 1);

    textEdit = new QTextEdit(splitter_2);
    textEdit->setObjectName(QStringLiteral("textEdit"));
    textEdit->setReadOnly(true);
    splitter_2->setStretchFactor(0, 4);
    splitter_2->setStretchFactor(1, 1);

    widget_para = new QWidget(splitter_main);
    widget_para->setObjectName(QStringLiteral("widget_para"));
    auto *paraLayout = new QVBoxLayout(widget_para);
    paraLayout->setContentsMargins(0, 0, 0, 0);
    splitter = new QSplitter(Qt::Vertical, widget_para);
    splitter->setObjectName(QStringLiteral("splitter"));
    tableView_Wdg = makeTable<TableView>(splitter, "tableView_Wdg",
                              QStringLiteral("QHeaderView::section{background:LightSkyBlue;}"),
                              QStringLiteral("QTableView::item{selection-background-color:rgb(80,165,230)}"));
    tableView_Para = makeTable(splitter, "tableView_Para",
                               QStringLiteral("QHeaderView::section{background:DarkSeaGreen;}"), QString());
    paraLayout->addWidget(splitter);

    splitter_main->addWidget(widget_page);
    splitter_main->addWidget(splitter_2);
    splitter_main->addWidget(widget_para);
    splitter_main->setStretchFactor(0, 0);
    splitter_main->setStretchFactor(1, 1);
    splitter_main->setStretchFactor(2, 0);
    splitter_main->setSizes({175, 850, 360}); // room for an 800-pixel page beside the palette
    widget_page->setMinimumWidth(120);
    widget_para->setMinimumWidth(280);

    statusBar()->setObjectName(QStringLiteral("statusbar"));
}

void MainWindow::setupPalette()
{
    // Every Add action in one place, grouped by family: a heading in the
    // family's colour (the colour of the kinds' frames on the canvas), then
    // the kinds in rows as wide as the palette.
    auto *dock = new QDockWidget(this);
    dock->setObjectName(QStringLiteral("dockWidget_Palette"));
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    auto *scroll = new QScrollArea(dock);
    scroll->setObjectName(QStringLiteral("scrollArea_Palette"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *content = new QWidget;
    content->setObjectName(QStringLiteral("widget_Palette"));
    QFont font = content->font();
    font.setPointSizeF(font.pointSizeF() * 0.75);
    content->setFont(font);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(4, 2, 4, 4);
    column->setSpacing(2);
    for (int f = 0; f < WidgetLook::kFamilyCount; ++f) {
        const auto family = WidgetLook::Family(f);
        const QColor c = WidgetLook::colour(family);
        auto *heading = new QLabel(content);
        heading->setObjectName(QStringLiteral("label_Palette_%1").arg(f));
        heading->setStyleSheet(QStringLiteral("QLabel{border-left: 6px solid rgb(%1, %2, %3); padding-left: 4px;"
                                              "font-weight: bold; margin-top: 3px;}")
                                   .arg(c.red())
                                   .arg(c.green())
                                   .arg(c.blue()));
        column->addWidget(heading);
        auto *flow = new FlowLayout(nullptr, 2, 2);
        column->addLayout(flow);
        for (WidgetKind kind : WidgetLook::kinds(family)) {
            QAction *a = m_actions.value(QLatin1String(addActionName(kind)));
            if (!a)
                continue;
            // the action's tile takes the family's colour too
            a->setIcon(Icons::tile(a->property("mark").toString(), c));
            flow->addWidget(new PaletteButton(a, content));
        }
    }
    column->addStretch(1);
    scroll->setWidget(content);
    dock->setWidget(scroll);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
}

void MainWindow::retranslateForm()
{
    forEachSpec([this](const ActionSpec &s) {
        if (!s.name)
            return;
        QAction *a = m_actions.value(QLatin1String(s.name));
        a->setText(trForm(s.text));
        if (s.iconText)
            a->setIconText(QString::fromUtf8(s.iconText));
        // The page-list menu matches entries by this text, never translated.
        a->setWhatsThis(QLatin1String(s.name));
    });
    // The language entry names itself in its own language.
    m_actions.value(QStringLiteral("actionChinese"))->setText(QStringLiteral("中文"));
    m_actions.value(QStringLiteral("actionEnglish"))->setText(QStringLiteral("English"));

    for (const auto &m : kMenuTitles)
        if (auto *menu = findChild<QMenu *>(QLatin1String(m[0])))
            menu->setTitle(trForm(m[1]));

    for (const ToolButtonSpec &t : kToolButtons) {
        QAction *a = m_actions.value(QLatin1String(t.action));
        QToolButton *b = m_toolButtons.value(QLatin1String(t.name));
        // Short text in the current language: one half of the two-language icon text.
        const QStringList halves = a->iconText().split(QLatin1Char('\n'));
        b->setText(halves.value(m_languageIndex == 1 ? 0 : 1, a->text()));
        b->setToolTip(a->text());
    }
    toolBar->setWindowTitle(trForm(QT_TRANSLATE_NOOP("vantile::MainWindow", "toolBar")));
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("dockWidget_Palette"))) {
        dock->setWindowTitle(trForm(QT_TRANSLATE_NOOP("vantile::MainWindow", "Widgets")));
        // the palette as wide as its longest caption in this language: none is cut
        int widest = 0;
        for (int f = 0; f < WidgetLook::kFamilyCount; ++f) {
            auto *heading = dock->findChild<QLabel *>(QStringLiteral("label_Palette_%1").arg(f));
            heading->setText(QCoreApplication::translate("vantile::WidgetLook",
                                                         WidgetLook::familyName(WidgetLook::Family(f))));
            widest = qMax(widest, heading->sizeHint().width());
        }
        for (QToolButton *b : dock->findChildren<QToolButton *>())
            widest = qMax(widest, b->sizeHint().width());
        auto *scroll = dock->findChild<QScrollArea *>(QStringLiteral("scrollArea_Palette"));
        const QMargins m = scroll->widget()->layout()->contentsMargins();
        const int least = widest + m.left() + m.right() + scroll->verticalScrollBar()->sizeHint().width()
                          + 2 * scroll->frameWidth();
        scroll->setMinimumWidth(least);
        if (!isVisible())
            resizeDocks({dock}, {qMax(least, 230)}, Qt::Horizontal); // mostly two kinds a row
    }
}

} // namespace vantile
