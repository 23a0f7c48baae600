#pragma once
// The one main window: owns the session, the form, the dialogs, the timers
// and the open project's three stores (page lines, page list, settings).

#include "project/EditorConfig.h"
#include "project/FileStamps.h"
#include "project/PageAttributes.h"
#include "project/PageHistory.h"
#include "project/PageList.h"
#include "project/ProjectSettings.h"

#include <QAbstractItemDelegate>
#include <QAction>
#include <QHash>
#include <QImage>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>

class QActionGroup;
class QDialog;
class QFrame;
class QLabel;
class QMenu;
class QScrollArea;
class QSplitter;
class QStandardItemModel;
class QTableView;
class QTextEdit;
class QTimer;
class QToolBar;
class QToolButton;
class QTranslator;

#include "build/MakeBin.h"
#include "widgets/EditBuffer.h"

#include <memory>

namespace vantile {

class CanvasWidgets;
class MakeBin;
class DialogList;
class DialogWdgVar;
class DialogProjectSetting;
class Constanttextedit;
class LanguageTextEditor;
class DialogModbus;
class Dialogmaterialaddr;
class DialogTime;
class Dialog;

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    static const char *const kTitle; // "Vantile V3.20A"
    static QString buildDateTime();  // when this program was built, for the About box
    // What Help > Directions for use opens (MainWindowHelp.cpp).
    static QString manualPath();

    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // Opens a .uiprj as Open does after its file dialog (from step 4 on).
    // Returns true when the project was opened.
    bool openProjectFile(const QString &path);

    // --- read access for tests and later parts ---------------------------
    int currentPageRow() const { return m_currentPageRow; }
    int languageIndex() const { return m_languageIndex; }
    int toolBarTextIndex() const { return m_toolBarTextIndex; }
    int autoSaveIndex() const { return m_autoSaveIndex; }
    float zoomFactor() const { return m_zoomFactor; }
    quint32 supplierKey() const { return m_supplierKey; }
    QString projectDir() const { return m_projectDir; }
    QString uiprjPath() const { return m_uiprjPath; }
    const QStringList &pageInfoList() const { return m_pageInfoList; }
    const QStringList &currentPageLines() const { return m_currentPageLines; }
    ProjectSettings &settings() { return m_settings; }
    DialogProjectSetting *projectSettingDialog() const { return m_dialogProjectSetting; }
    DialogList *listDialog() const { return m_dialogList; }
    QAction *action(const QString &objectName) const { return m_actions.value(objectName); }
    QSize canvasSize() const { return m_canvasSize; }
    int icType() const { return m_icType; }
    QTextEdit *logView() const { return textEdit; }
    const PageAttributes &pageAttributes() const { return m_pageAttr; }
    PageHistory &history() { return m_history; }
    FileStamps &fileStamps() { return m_fileStamps; }
    bool recoveryMode() const { return m_recoveryMode; }
    int pageDirty() const { return m_pageDirty; }
    void setPageDirty(int dirty) { m_pageDirty = dirty; }
    // The page table's menu for a row (entries carry their what's-this
    // names), and running one entry by that name.
    QMenu *buildPageMenu(int row);
    void runPageMenuEntry(const QString &whatsThis);
    // Rebuilds the "Page:" line from the attributes, then the page list line.
    void updatePageLine();
    PageAttributes &editPageAttributes() { return m_pageAttr; }
    // The widget shown in the parameter table; "label_Show" for the page.
    QString selectedName() const { return m_selectedName; }
    void selectByName(const QString &objectName);
    const EditBuffer &editBuffer() const { return m_editBuffer; }
    CanvasWidgets *canvasWidgets() const { return m_canvasWidgets; }
    bool addMode() const { return m_addMode; }
    int selectCount() const { return m_selectCount; }
    int hoverState() const { return m_hoverState; }
    const QStringList &copyList() const { return m_copyList; }
    quint32 nextWriteAddress() const { return m_nextWriteAddress; }
    DialogWdgVar *writeAddrDialog() const { return m_dialogWdgVar; }
    // Raises the next write address past every address of every page.
    void scanWriteAddresses();

signals:
    void Update_to_DialogVarAddr(int autoAddressMode);
    // Opens the encoder's action list with "objectName:entry".
    void Update_to_DialogList(const QString &text);
    // Opens the language editor on a page: its four digits.
    void Update_to_DialogLanguage(const QString &page);
    // A build asks the Modbus list for its unsaved rows (MainWindowModbus.cpp).
    void SaveCommandList();
    // Opens the widget adjust dialog on a widget's page line.
    void Update_to_Dialog(const QString &line);

public:
    Constanttextedit *constantTextEditor() const { return m_constantTextEdit; }
    LanguageTextEditor *languageTextEditor() const { return m_languageTextEditor; }
    DialogModbus *modbusDialog(); // made on first use
    int languageCount() const { return m_languageCount; }

public slots:
    // The static text editor (Tool > Static Text) and the language editor
    // of the page shown (Tool > Multi-Language Text).
    void on_actionConstant_Label_triggered();
    void on_actionLanguage_Text_triggered();
    void Update_from_DialogLanguage(const QString &text);
    void LanguageTextEdito_Close();
    void Preview_from_languageeditor(const QString &objectName, const QString &text);
    void Preview_from_constanttextedit(const QString &text, int colour, int fontId, int number);
    void Update_from_constanttextedit(const QString &path);
    // The Modbus command list of the project (MainWindowModbus.cpp).
    void on_actionModbus_triggered();
    // The OTA addresses and the build timestamp (MainWindowMaterial.cpp).
    void on_actionAddr_Setting_triggered();
    void on_actionFile_Timestamp_triggered();
    void Time_Update_from_Dialog(bool fixed, const QDateTime &time);

public:
    Dialogmaterialaddr *materialAddrDialog(); // made on first use
    DialogTime *timeDialog();                 // made on first use
    Dialog *adjustDialog();                   // made on first use

public:
    bool groupActive() const { return m_groupActive; }
    const BuildResult &lastBuild() const { return m_lastBuild; }
    QString addToolWord() const { return m_addToolWord; }

public slots:
    // File menu
    void on_actionInput_uiprj_triggered();
    void on_actionNew_project_triggered();
    void on_actionProject_Setting_triggered();
    void on_actionSave_All_triggered();
    void on_actionExit_triggered();
    void on_actionMake_bin_triggered();
    void on_actionDelete_triggered();
    void on_actionLock_triggered();
    void on_actionUnlock_triggered();
    void on_actionZoomin_triggered();
    void on_actionZoomout_triggered();
    void on_actionOriginal_triggered();
    void on_actionWriteAddr_triggered();
    void WriteAddr_Update_from_Dialog(bool autoAddress, uint nextAddress);
    void on_actionWidget_Copy_triggered();
    void on_actionWidget_Paste_triggered();
    void on_actionWidget_Clone_triggered();
    void on_actionLeft_Align_triggered();
    void on_actionRight_Align_triggered();
    void on_actionTop_Align_triggered();
    void on_actionBottom_Align_triggered();
    void on_actionWidth_Align_triggered();
    void on_actionHeight_Align_triggered();
    void on_actionShape_Align_triggered();
    void on_actionLevel_layout_triggered();
    void on_actionVertical_layout_triggered();
    void on_actionClearPrj_triggered();
    // The variable lists for the host (MainWindowExports.cpp)
    void on_actionExport_variable_triggered();
    // Help menu: the manual and the About box (MainWindowHelp.cpp)
    void on_actionDirections_for_use_triggered();
    void on_actionAbout_triggered();
    // The tools that are not installed are disabled, their tip says why.
    void updateToolActions();
    // Tool menu: the sibling programs
    void on_actionUartDebug_triggered();
    void on_actionFont_tool_triggered();
    void on_actionImageNumber_triggered();
    void on_actionToneForge_triggered();
    void on_actionEmulator_triggered();
    // Project check and the variable control conversion (MainWindowChecks.cpp)
    void on_actionCheckProject_triggered();
    void on_actionVariable_control_triggered();
    // Help menu: language, tool bar text, auto-save
    void on_actionChinese_triggered();
    void on_actionEnglish_triggered();
    void on_actionOpen_triggered();
    void on_actionClose_triggered();
    void on_actionAutoSaveOpen_triggered();
    void on_actionAutoSaveClose_triggered();
    // Pages
    void on_tableView_Page_clicked(const QModelIndex &index);
    void on_tableView_Page_doubleClicked(const QModelIndex &index);
    void on_actionSave_current_pgae_triggered();
    void on_actionLoad_default_cfg_triggered();
    void on_actionLastPageDesign_triggered();
    void on_actionLoad_next_cfb_triggered();
    void NewPage();
    void ClonePage();
    void CleanPage();
    void DeletePage();
    void on_tableView_Para_doubleClicked(const QModelIndex &index);
    void on_tableView_Wdg_clicked(const QModelIndex &index);
    // The widget adjust dialog (MainWindowAdjust.cpp): opened on the selected
    // widget of a kind it knows (also by a double click on it on the canvas);
    // "objectName:X,Y,W,H" comes back from its OK.
    void openWidgetAdjust();
    void Update_from_Dialog(const QString &text);
    // "objectName:entry" from the action list: the entry replaces the
    // encoder's item the list was opened on (MainWindowEncoder.cpp).
    void Update_from_DialogList(const QString &text);
    // A row of the widget list dragged from one place to another: the
    // widget's line moves with it (rows after "Page" follow the lines).
    void UpdatePageWdgList_from_TableView(int from, int to);
    void Para_TabelView_Edit_End(QWidget *editor, QAbstractItemDelegate::EndEditHint hint);

    // From the dialogs
    void statusBar_Switch_Language();
    void New_Projectsetting();
    void ICType_Change(int index);
    void Background_mask();
    void Background_mask_Close();

public:
    // Shows a dialog window-modal over the dimming mask; the mask goes when
    // the dialog goes, however it is closed.
    void showMasked(QDialog *dialog);

public slots:

    // Timers
    void Auto_save();
    void Timer2_Out_Event();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *putUpMask(QDialog *dialog); // the mask, tied to the dialog when there is one
    bool adjustFromCanvas(QMouseEvent *event); // a double click on the canvas (MainWindowAdjust.cpp)
    // form (MainWindowForm.cpp)
    void setupForm();
    void setupPalette();
    void retranslateForm();
    // The Add action that arms a kind (MainWindowCanvas.cpp); empty for none.
    static const char *addActionName(WidgetKind kind);
    QAction *makeAction(const char *objectName);

    // language and settings
    bool switchLanguage(int index);
    void checkLanguageEntry();
    void applyEditorConfig();
    void writeEditorConfig();
    void setTableHeaders();

    // project (MainWindowProject.cpp)
    void log(const QString &line);
    bool projectOpen() const { return m_currentPageRow >= 0; }
    bool askSaveBeforeLeaving(); // false: the user cancelled
    void resetEditingState();
    void fillPageTable();
    void fillSPageCombo();
    void fillWidgetTable();
    QImage buildBackground(const PageInfo &page);
    void showBackground();
    void showPage(int row);
    void switchPage(int row);
    void loadPage(const QString &path);
    void loadStep(const QString &path);
    QString pageFileToLoad(int row) const;
    void resetPageAttributes();
    void rebuildPageInfoLine();
    void setPageNameCell(int row, const QString &name);
    void selectWidgetRow(); // the widget table follows the selection
    void clearLiveWidgets();
    bool takeStep(int row);
    void appendPageRow(int row, const QString &name);
    void blankCurrentPage();
    void pageContextMenu(const QPoint &viewportPos, const QPoint &globalPos);
    // parameter table (MainWindowPara.cpp)
    void setupParaTable();
    void fillPageRows();
    QStringList paraValues() const;
    void applyPageRows();
    void fillWidgetRows();
    void applyWidgetRows();
    QString widgetEditorResult(const FieldDef &field, const QModelIndex &index);
    void loadWidgets();
    QSize pagePictureSize() const;
    // canvas (MainWindowCanvas.cpp)
    void connectAddActions();
    void armTool(const char *frameName, const char *frameText, const char *toolWord, const char *status);
    void resetCanvasState();
    void unmarkSelection();
    QPoint canvasPos(const QPoint &globalPos) const;
    QSize canvasPixels() const;
    bool selectionLocked() const;
    void makeWidget(const QRect &canvasRect);
    void storeLabelGeometry(QLabel *label, bool withSize);
    bool canvasKey(QKeyEvent *event);
    void updateHoverCursor(const QPoint &canvasPos);
    void collectBand(const QRect &band);
    void dragGroup(const QPoint &at);
    void moveMarked(const QPoint &delta);
    MakeBin &buildDriver();
    // editing commands (MainWindowEdit.cpp)
    QStringList actedOnNames() const;
    void applyLock(int state);
    void setZoom(float zoom);
    // align and distribute (MainWindowAlign.cpp)
    void startBand(int tool);
    QRect bandInPanel(const QRect &band) const;
    void applyBand(const QRect &band);
    void distribute(const QRect &panelBand, bool horizontal);
    void placeWidget(EditBuffer &widget);
    // copy and paste (MainWindowCopy.cpp)
    bool pasteLine(const QString &line, int dx, int dy, QString *newName);
    QString pageFilePath(int row) const;
    bool writePageList();
    QStringList readPageFile(const QString &path); // either form, records glued
    bool writeLinesTo(const QString &path, const QStringList &lines); // form by supplierKey
    bool writeSettings();
    // A failed write: the box names the file and the system's reason.
    void reportWriteFailure(const FileError &error);
    // Before a save overwrites files that changed on disk since they were
    // read: asks keep mine / take theirs / cancel for each. Returns false on
    // cancel; the paths whose outside version is kept go to *theirs.
    bool confirmOverwrite(const QStringList &paths, QStringList *theirs);
    bool saveAll(); // false when the user cancelled or a file could not be written
    // "Take theirs" for the page list and the settings: read them again.
    void reloadFromDisk(bool pageList, bool settings);
    bool saveCurrentPage(); // the open page's .cfg, asking first when it changed on disk
    QString iniPathFor(const QString &uiprjPath) const;
    void readCanvasSize();

    // --- session state -------------------------------------------------
    QString m_projectDir;
    QString m_uiprjPath;
    int m_currentPageRow = -1;
    float m_zoomFactor = 1.0f;
    int m_languageIndex = 1;
    int m_toolBarTextIndex = 0;
    int m_autoSaveIndex = 0;
    int m_headerFileIndex = 0;
    int m_languageCount = 1;
    int m_pageDirty = 0;
    quint32 m_supplierKey = 0x5E21B7C4u;
    int m_icType = 3;
    QString m_lastLoadPath;
    int m_pageListColumnWidth[2] = {45, 0};
    int m_paraColumnWidth[2] = {130, 0};
    int m_wdgColumnWidth[2] = {120, 0};
    bool m_newProjectPending = false;
    QString m_newProjectPath;
    QSize m_canvasSize;
    QImage m_pageImage; // background at panel size
    PageInfo m_currentPage;
    PageAttributes m_pageAttr;
    PageHistory m_history;
    bool m_recoveryMode = false;
    CanvasWidgets *m_canvasWidgets = nullptr;
    EditBuffer m_editBuffer;
    QString m_selectedName = QStringLiteral("label_Show");
    // canvas state
    bool m_addMode = false;
    QString m_addToolWord;
    bool m_drawing = false;
    QPoint m_drawOrigin;
    bool m_rubberActive = false;
    bool m_dragging = false;
    QRect m_moveRect;
    QPoint m_pressOffset;
    bool m_resizeMode = false;
    QPoint m_resizeSlack;
    bool m_moved = false;
    int m_hoverState = 0;
    int m_selectCount = 0;
    bool m_bandMode = false;
    bool m_bandActive = false;
    int m_bandTool = 0;
    QRect m_referenceRect; // panel pixels
    QStringList m_copyList; // outlives a page switch
    int m_copySourceRow = -1;
    QRect m_copyRect;       // panel pixels
    bool m_groupActive = false;
    QRect m_groupRect; // panel pixels
    bool m_buildRunning = false;
    std::unique_ptr<MakeBin> m_makeBin; // one driver for the session
    BuildResult m_lastBuild;

    FileStamps m_fileStamps;      // what the session last saw of each file
    bool m_autoSaveFailing = false; // the failing auto-save was told once

    QStringList m_pageInfoList;
    QStringList m_currentPageLines;
    ProjectSettings m_settings;

    QString m_selectStyle;
    QString m_referenceStyle;
    QString m_frameStyle;

    // --- form ------------------------------------------------------------
    QWidget *centralwidget = nullptr;
    QWidget *widget_para = nullptr;
    QSplitter *splitter = nullptr;
    class TableView *tableView_Wdg = nullptr;
    QTableView *tableView_Para = nullptr;
    QFrame *frame_tools = nullptr;
    QWidget *m_toolsHolder = nullptr; // what is shown and hidden with the frame
    QHash<QString, QToolButton *> m_toolButtons;
    QSplitter *splitter_2 = nullptr;
    QWidget *widget = nullptr;
    QScrollArea *scrollArea = nullptr;
    QLabel *label_Show = nullptr;
    QTextEdit *textEdit = nullptr;
    QWidget *widget_page = nullptr;
    QTableView *tableView_Page = nullptr;
    QSplitter *splitter_main = nullptr;
    QMenu *menuFile = nullptr;
    QMenu *menuTool = nullptr;
    QMenu *menuHelp = nullptr;
    QMenu *menuLanguage = nullptr;
    QMenu *menuToolBar_Text = nullptr;
    QMenu *menuAuto_Save = nullptr;
    QToolBar *toolBar = nullptr;
    QHash<QString, QAction *> m_actions;
    QList<QAction *> m_editActions; // the twenty actions the tool-button frame stands in for
    QList<QAction *> m_editToolBarItems; // those twenty with their separators, on the tool bar when icons only

    QStandardItemModel *m_pageModel = nullptr;
    QStandardItemModel *m_wdgModel = nullptr;
    QStandardItemModel *m_paraModel = nullptr;

    QLabel *select_frame = nullptr;
    QLabel *Paste_area = nullptr;
    QLabel *m_statusReady = nullptr;
    QLabel *m_statusResolution = nullptr;
    QLabel *m_statusZoom = nullptr;
    QPointer<QWidget> m_mask;

    QTimer *m_autoSaveTimer = nullptr;
    QTimer *m_timer2 = nullptr;
    int m_timer2Count = 0;

    QTranslator *m_translator = nullptr;
    DialogProjectSetting *m_dialogProjectSetting = nullptr;
    DialogList *m_dialogList = nullptr;
    int m_encoderItem = 0; // the encoder item (1..16) the action list edits
    void openEncoderItem(int row);
    DialogWdgVar *m_dialogWdgVar = nullptr;
    Constanttextedit *m_constantTextEdit = nullptr;
    LanguageTextEditor *m_languageTextEditor = nullptr;
    DialogModbus *m_dialogModbus = nullptr;
    // Puts the texts of the page's Statictexts in step with Constant_text.csv.
    // A Statictext's text follows its entry of Constant_text.csv; returns
    // the names of the lines it changed.
    QStringList refreshStaticLines(QStringList &lines) const;
    void refreshStaticTexts();
    void setupTextEditors(); // MainWindowTexts.cpp
    // After texts of the page's lines changed from a side editor.
    void afterTextUpdate(const QStringList &changed);
    quint32 m_nextWriteAddress = 0;
    bool m_pasteAutoAddress = false;
};

} // namespace vantile
