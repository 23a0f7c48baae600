#include "app/MainWindow.h"

#include <QMenu>

#include "app/Prompts.h"
#include "app/TableView.h"
#include "designer/CanvasWidgets.h"
#include "editors/Constanttextedit.h"
#include "editors/DialogList.h"
#include "editors/DialogModbus.h"
#include "editors/LanguageTextEditor.h"
#include "editors/DialogWdgVar.h"
#include "editors/DialogProjectSetting.h"
#include "project/AppPaths.h"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDialog>
#include <QMouseEvent>
#include <QFile>
#include <QFrame>
#include <QHeaderView>
#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTableView>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QTranslator>

namespace vantile {

const char *const MainWindow::kTitle = "Vantile V3.20A";

namespace {
QStandardItemModel *makeModel(QObject *parent)
{
    auto *m = new QStandardItemModel(0, 2, parent);
    return m;
}
} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent)
{
    // 1. the form, maximized, titled
    setupForm();
    setWindowState(Qt::WindowMaximized);
    setWindowTitle(QLatin1String(kTitle));
    updateToolActions();
    if (auto *tools = findChild<QMenu *>(QStringLiteral("menuTool")))
        connect(tools, &QMenu::aboutToShow, this, &MainWindow::updateToolActions);

    // 2. zoom, key, column widths, splitter stretches
    m_zoomFactor = 1.0f;
    m_supplierKey = 0x5E21B7C4u;
    m_pageListColumnWidth[1] = qMax(40, widget_page->width() - 65);
    m_paraColumnWidth[1] = qMax(40, widget_para->width() - 150);
    m_wdgColumnWidth[1] = qMax(40, widget_para->width() - 140);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 7);

    // 3. the three item models, the event filter, the canvas focus
    m_pageModel = makeModel(this);
    m_wdgModel = makeModel(this);
    m_paraModel = makeModel(this);
    tableView_Page->setModel(m_pageModel);
    tableView_Wdg->setModel(m_wdgModel);
    tableView_Para->setModel(m_paraModel);
    tableView_Page->setColumnWidth(0, m_pageListColumnWidth[0]);
    tableView_Wdg->setColumnWidth(0, m_wdgColumnWidth[0]);
    tableView_Para->setColumnWidth(0, m_paraColumnWidth[0]);
    setTableHeaders();
    setupParaTable();
    connect(tableView_Wdg, &TableView::updateTableView, this, &MainWindow::UpdatePageWdgList_from_TableView);
    label_Show->installEventFilter(this);
    tableView_Page->installEventFilter(this);
    tableView_Page->viewport()->installEventFilter(this);
    scrollArea->installEventFilter(this);
    label_Show->setFocusPolicy(Qt::StrongFocus);
    label_Show->setMouseTracking(true); // the resize-corner cursor follows the mouse

    // 4. the style strings of the canvas
    m_selectStyle = QStringLiteral("background-color: rgba(255, 255, 160, 96);");
    m_referenceStyle = QStringLiteral("background-color: rgba(255, 180, 0, 128);");
    m_frameStyle = QStringLiteral("border-width: 2px;border-style: solid;border-color: rgba(0, 180, 0,255);"
                                  "background-color: rgba(255, 180, 0, 128);");

    // 5. the slot tables of the live widgets, the page background placeholder
    m_canvasWidgets = new CanvasWidgets(label_Show);
    m_pageImage = QImage(20, 20, QImage::Format_ARGB32_Premultiplied);
    m_pageImage.fill(Qt::black);

    // 6. timers
    m_autoSaveTimer = new QTimer(this);
    m_autoSaveTimer->setInterval(5000);
    connect(m_autoSaveTimer, &QTimer::timeout, this, &MainWindow::Auto_save);
    m_autoSaveTimer->start();
    m_timer2 = new QTimer(this);
    m_timer2->setInterval(1000);
    connect(m_timer2, &QTimer::timeout, this, &MainWindow::Timer2_Out_Event);

    // 7. the two overlay labels on the canvas
    select_frame = new QLabel(label_Show);
    select_frame->setObjectName(QStringLiteral("select_frame"));
    select_frame->setFrameShape(QFrame::NoFrame);
    select_frame->setAutoFillBackground(true);
    select_frame->setText(QStringLiteral("select"));
    select_frame->setStyleSheet(m_selectStyle);
    select_frame->hide();
    Paste_area = new QLabel(label_Show);
    Paste_area->setObjectName(QStringLiteral("Paste_area"));
    Paste_area->setFrameShape(QFrame::NoFrame);
    Paste_area->setAutoFillBackground(true);
    Paste_area->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 160, 0);border: 2px dashed gray"));
    Paste_area->hide();

    // 8. the status bar
    const QString blue = QStringLiteral(" QLabel{ color: blue }");
    m_statusReady = new QLabel(QStringLiteral("  Ready :"), this);
    m_statusReady->setObjectName(QStringLiteral("statusLabel_Ready"));
    m_statusReady->setStyleSheet(blue);
    m_statusResolution = new QLabel(QStringLiteral("Resolution:800*480      "), this);
    m_statusResolution->setObjectName(QStringLiteral("statusLabel_Resolution"));
    m_statusResolution->setStyleSheet(blue);
    m_statusZoom = new QLabel(QStringLiteral("UI Page 100%  "), this);
    m_statusZoom->setObjectName(QStringLiteral("statusLabel_Zoom"));
    m_statusZoom->setStyleSheet(blue);
    statusBar()->addWidget(m_statusReady);
    statusBar()->addPermanentWidget(m_statusResolution);
    statusBar()->addPermanentWidget(m_statusZoom);
    statusBar()->setSizeGripEnabled(false);

    // 9. dialogs and their connections
    m_dialogProjectSetting = new DialogProjectSetting(this);
    m_dialogProjectSetting->setSettings(&m_settings);
    m_dialogProjectSetting->loadFromSettings();
    connect(m_dialogProjectSetting, &DialogProjectSetting::Resolution_refres, this,
            &MainWindow::statusBar_Switch_Language);
    connect(m_dialogProjectSetting, &DialogProjectSetting::new_prj_setting_close, this,
            &MainWindow::New_Projectsetting);
    connect(m_dialogProjectSetting, &DialogProjectSetting::ICType_change, this, &MainWindow::ICType_Change);
    m_dialogWdgVar = new DialogWdgVar(this);
    connect(m_dialogWdgVar, &DialogWdgVar::Background_mask_Close_Signal_wdgvar, this, &MainWindow::Background_mask_Close);
    connect(m_dialogWdgVar, &DialogWdgVar::WriteAddr_Update_to_MainWindow, this, &MainWindow::WriteAddr_Update_from_Dialog);
    connect(this, &MainWindow::Update_to_DialogVarAddr, m_dialogWdgVar, &DialogWdgVar::VarAddr_Update_from_MainWindow);
    m_dialogList = new DialogList(this);
    connect(m_dialogList, &DialogList::Background_mask_Close_Signal_list, this, &MainWindow::Background_mask_Close);
    setupTextEditors();

    retranslateForm();
    QMetaObject::connectSlotsByName(this);
    connectAddActions();

    // 10. the user's settings; 11. the canvas in its scroll area, ticks
    scrollArea->setWidget(label_Show);
    applyEditorConfig();
    ICType_Change(m_settings.panelType);
}

MainWindow::~MainWindow()
{
    m_canvasWidgets->clear();
    delete m_canvasWidgets;
    writeEditorConfig();
    const QString binPath = AppPaths::currentBinPathFile();
    if (QFile::exists(binPath))
        QFile::remove(binPath);
    if (m_translator) {
        QCoreApplication::removeTranslator(m_translator);
        delete m_translator;
    }
}

QString MainWindow::buildDateTime()
{
    return QStringLiteral(__DATE__ " " __TIME__);
}

// --- user settings ---------------------------------------------------------

void MainWindow::applyEditorConfig()
{
    const EditorConfig c = EditorConfig::load(AppPaths::editorConfigPath());
    m_lastLoadPath = c.lastLoadPath;
    m_headerFileIndex = c.headerFileIndex;
    if (c.languageIndex != 0)
        on_actionChinese_triggered();
    else
        on_actionEnglish_triggered();
    if (c.toolBarTextIndex != 0)
        on_actionClose_triggered();
    else
        on_actionOpen_triggered();
    if (c.autoSaveIndex == 1)
        on_actionAutoSaveOpen_triggered();
    else
        on_actionAutoSaveClose_triggered();
}

void MainWindow::writeEditorConfig()
{
    EditorConfig c;
    c.lastLoadPath = m_lastLoadPath;
    c.languageIndex = m_languageIndex;
    c.toolBarTextIndex = m_toolBarTextIndex;
    c.autoSaveIndex = m_autoSaveIndex;
    c.headerFileIndex = m_headerFileIndex;
    c.save(AppPaths::editorConfigPath());
}

// --- language --------------------------------------------------------------

void MainWindow::setTableHeaders()
{
    m_pageModel->setHorizontalHeaderLabels({tr("Page"), tr("Name")});
    m_wdgModel->setHorizontalHeaderLabels({tr("Widget"), tr("Name")});
    m_paraModel->setHorizontalHeaderLabels({tr("Parameter"), tr("Data")});
}

bool MainWindow::switchLanguage(int index)
{
    const QString file = index == 1 ? QStringLiteral("Translate_CN.qm") : QStringLiteral("Translate_EN.qm");
    if (m_translator) {
        QCoreApplication::removeTranslator(m_translator);
        delete m_translator;
    }
    m_translator = new QTranslator;
    if (!m_translator->load(AppPaths::appDir() + QLatin1Char('/') + file)) {
        textEdit->append(file + QStringLiteral(" is lost！"));
        return false;
    }
    textEdit->append(index == 1 ? QStringLiteral("中文") : QStringLiteral("English"));
    QCoreApplication::installTranslator(m_translator);
    m_languageIndex = index;
    retranslateForm();
    setTableHeaders();
    statusBar_Switch_Language();
    m_dialogProjectSetting->retranslate();
    m_dialogWdgVar->retranslate();
    m_dialogList->setLanguage(index);
    m_dialogList->retranslate();
    m_languageTextEditor->retranslate();
    m_constantTextEdit->retranslate();
    m_actions.value(QStringLiteral("actionLanguage_Text"))->setText(tr("Multi-Language Text"));
    fillWidgetTable();
    if (m_selectedName == QLatin1String("label_Show"))
        fillPageRows();
    else
        fillWidgetRows();
    return true;
}

void MainWindow::checkLanguageEntry()
{
    m_actions.value(m_languageIndex == 1 ? QStringLiteral("actionChinese") : QStringLiteral("actionEnglish"))
        ->setChecked(true);
}

void MainWindow::on_actionChinese_triggered()
{
    switchLanguage(1);
    checkLanguageEntry();
}

void MainWindow::on_actionEnglish_triggered()
{
    switchLanguage(0);
    checkLanguageEntry();
}

void MainWindow::statusBar_Switch_Language()
{
    const bool cn = m_languageIndex == 1;
    m_statusReady->setText(cn ? QStringLiteral("就绪 :") : QStringLiteral("  Ready :"));
    m_statusResolution->setText((cn ? QStringLiteral("分辨率: ") : QStringLiteral("Resolution: "))
                                + QString::number(m_settings.xSizeValue()) + QLatin1Char('*')
                                + QString::number(m_settings.ySizeValue()) + QStringLiteral("      "));
    m_statusZoom->setText((cn ? QStringLiteral("设计界面: ") : QStringLiteral("UI Page: "))
                          + QString::number(int(100 * m_zoomFactor)) + QStringLiteral("%  "));
}

// --- tool bar text and auto-save modes ---------------------------------------

void MainWindow::on_actionOpen_triggered()
{
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    // off the tool bar but never hidden: a hidden action's shortcut is dead
    for (QAction *a : m_editToolBarItems)
        toolBar->removeAction(a);
    frame_tools->show();
    m_toolsHolder->show();
    m_toolBarTextIndex = 0;
    m_actions.value(QStringLiteral("actionOpen"))->setChecked(true);
}

void MainWindow::on_actionClose_triggered()
{
    toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    toolBar->addActions(m_editToolBarItems);
    frame_tools->hide();
    m_toolsHolder->hide();
    m_toolBarTextIndex = 1;
    m_actions.value(QStringLiteral("actionClose"))->setChecked(true);
}

void MainWindow::on_actionAutoSaveOpen_triggered()
{
    m_autoSaveIndex = 1;
    m_actions.value(QStringLiteral("actionAutoSaveOpen"))->setChecked(true);
}

void MainWindow::on_actionAutoSaveClose_triggered()
{
    m_autoSaveIndex = 0;
    m_actions.value(QStringLiteral("actionAutoSaveClose"))->setChecked(true);
}

void MainWindow::ICType_Change(int index)
{
    m_icType = index;
    QAction *video = m_actions.value(QStringLiteral("actionAddVideo"));
    video->setVisible(index == 10);
    video->setToolTip(index == 10 ? video->text() : tr("Video needs the VC650 controller (chip index 10)"));
}

// --- the dimming mask --------------------------------------------------------

namespace {

// Lives as long as one mask: keeps it over the whole window while the
// window is resized, and, when it watches a dialog, closes the mask as soon
// as the dialog goes away, whichever way it goes (OK, Cancel, Esc, the title
// bar's close button, a plain hide()).
class MaskWatcher : public QObject
{
public:
    MaskWatcher(QWidget *mask, QWidget *window, QWidget *dialog)
        : QObject(mask), m_mask(mask), m_window(window), m_dialog(dialog)
    {
        window->installEventFilter(this);
        if (dialog)
            dialog->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_window && event->type() == QEvent::Resize)
            m_mask->setGeometry(m_window->rect());
        // a hide from the window system (the window minimised) is no end
        else if (watched == m_dialog && event->type() == QEvent::Hide && !event->spontaneous())
            m_mask->close();
        return false;
    }

private:
    QWidget *m_mask;
    QWidget *m_window;
    QPointer<QWidget> m_dialog;
};

} // namespace

void MainWindow::Background_mask()
{
    putUpMask(nullptr);
}

QWidget *MainWindow::putUpMask(QDialog *dialog)
{
    if (m_mask)
        m_mask->close();
    auto *mask = new QWidget(this);
    mask->setObjectName(QStringLiteral("Background_mask"));
    mask->setAttribute(Qt::WA_DeleteOnClose);
    mask->setAttribute(Qt::WA_StyledBackground);
    mask->setStyleSheet(QStringLiteral("background-color:rgba(0, 0, 0,60%);"));
    mask->setGeometry(rect());
    new MaskWatcher(mask, this, dialog);
    if (dialog)
        connect(dialog, &QDialog::finished, mask, &QWidget::close);
    mask->show();
    mask->raise();
    m_mask = mask;
    return mask;
}

void MainWindow::showMasked(QDialog *dialog)
{
    putUpMask(dialog);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void MainWindow::Background_mask_Close()
{
    if (m_mask)
        m_mask->close();
}

// --- timers ----------------------------------------------------------------

void MainWindow::Timer2_Out_Event()
{
    m_timer2->stop();
    // Builds, counting up; nothing starts this timer.
    on_actionMake_bin_triggered();
    ++m_timer2Count;
    if (m_timer2Count < 200)
        m_timer2->start(1000);
}

// --- events ----------------------------------------------------------------

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && projectOpen() && !m_buildRunning) {
        if (watched == scrollArea && m_selectedName == QLatin1String("label_Show"))
            return true; // arrows don't scroll the canvas
        if ((watched == label_Show || watched == scrollArea) && canvasKey(static_cast<QKeyEvent *>(event)))
            return true;
    }
    if (watched == label_Show && projectOpen() && !m_buildRunning) {
        if (event->type() == QEvent::MouseMove)
            updateHoverCursor(static_cast<QMouseEvent *>(event)->pos());
        else if (event->type() == QEvent::MouseButtonDblClick && adjustFromCanvas(static_cast<QMouseEvent *>(event)))
            return true;
        else if (event->type() == QEvent::ContextMenu) {
            // a right click on the canvas ends any tool and clears the marks
            resetCanvasState();
            return true;
        }
    }
    if (event->type() == QEvent::ContextMenu
        && (watched == tableView_Page || watched == tableView_Page->viewport())) {
        auto *e = static_cast<QContextMenuEvent *>(event);
        const QPoint viewportPos = watched == tableView_Page ? tableView_Page->viewport()->mapFrom(tableView_Page, e->pos())
                                                             : e->pos();
        pageContextMenu(viewportPos, e->globalPos());
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::keyPressEvent(QKeyEvent *event)
{
    QMainWindow::keyPressEvent(event);
}

void MainWindow::on_actionExit_triggered()
{
    close();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // unsaved rows of the Modbus list are asked about first, as its own close does
    if (m_dialogModbus && m_dialogModbus->isChanged()) {
        m_dialogModbus->close();
        if (m_dialogModbus->isChanged()) { // cancelled, or the file could not be written
            event->ignore();
            return;
        }
    }
    if (projectOpen()) {
        const auto answer = Prompts::question(this, QStringLiteral("Message"), QStringLiteral("Save the current uiprj?"),
                                              {QMessageBox::Save, QMessageBox::Discard, QMessageBox::Cancel},
                                              {QStringLiteral("Save && Quit"), QStringLiteral("Quit"),
                                               QStringLiteral("Cancel")});
        // a save that failed or was cancelled keeps the window (and backup.txt)
        if (answer == QMessageBox::Save) {
            if (!saveAll()) {
                event->ignore();
                return;
            }
        } else if (answer != QMessageBox::Discard) {
            event->ignore();
            return;
        }
        const QString backup = m_projectDir + QStringLiteral("backup.txt");
        if (QFile::exists(backup))
            QFile::remove(backup);
        event->accept();
        return;
    }
    const auto answer = Prompts::question(this, QStringLiteral("Message"), QStringLiteral("Do you want to quit?    "),
                                          {QMessageBox::Yes, QMessageBox::No});
    if (answer == QMessageBox::Yes)
        event->accept();
    else
        event->ignore();
}

} // namespace vantile
