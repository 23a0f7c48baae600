// The two text editors beside the page: the static texts of the project
// (Constant_text.csv) and the language texts of the page shown.

#include "app/MainWindow.h"

#include "designer/CanvasWidgets.h"
#include "editors/Constanttextedit.h"
#include "editors/LanguageTextEditor.h"
#include "project/TextTables.h"
#include "widgets/WidgetLine.h"

#include <QLabel>
#include <QMenu>
#include <QTextEdit>

namespace vantile {

void MainWindow::setupTextEditors()
{
    m_languageTextEditor = new LanguageTextEditor(this);
    LanguageTextEditor::Source source;
    source.projectDir = [this] { return m_projectDir; };
    source.pageLines = [this] { return m_currentPageLines; };
    source.languageNum = [this] { return m_settings.languageNum; };
    m_languageTextEditor->setSource(source);
    connect(m_languageTextEditor, &LanguageTextEditor::Update_to_MainWindow, this,
            &MainWindow::Update_from_DialogLanguage);
    connect(m_languageTextEditor, &LanguageTextEditor::LanguageTextEditor_close, this,
            &MainWindow::LanguageTextEdito_Close);
    connect(this, &MainWindow::Update_to_DialogLanguage, m_languageTextEditor,
            &LanguageTextEditor::Update_from_MainWindow);

    m_constantTextEdit = new Constanttextedit(this);
    connect(m_constantTextEdit, &Constanttextedit::ConstanttextEditor_close, this, &MainWindow::LanguageTextEdito_Close);
    connect(m_constantTextEdit, &Constanttextedit::Preview_to_MainWindow, this,
            &MainWindow::Preview_from_constanttextedit);
    connect(m_constantTextEdit, &Constanttextedit::Update_to_MainWindow, this,
            &MainWindow::Update_from_constanttextedit);
    connect(m_languageTextEditor, &LanguageTextEditor::Preview_to_MainWindow, this,
            &MainWindow::Preview_from_languageeditor);

    // The language editor's entry stands in the Tool menu after Static Text.
    QAction *languageText = makeAction("actionLanguage_Text");
    languageText->setText(tr("Multi-Language Text"));
    QAction *staticText = m_actions.value(QStringLiteral("actionConstant_Label"));
    QMenu *tools = staticText ? qobject_cast<QMenu *>(staticText->parent()) : nullptr;
    if (!tools)
        tools = findChild<QMenu *>(QStringLiteral("menuTool"));
    const QList<QAction *> entries = tools ? tools->actions() : QList<QAction *>();
    const int at = entries.indexOf(staticText);
    if (tools)
        tools->insertAction(entries.value(at + 1), languageText);
}

void MainWindow::on_actionConstant_Label_triggered()
{
    if (!projectOpen())
        return;
    m_languageCount = TextTables::languageCount(m_settings.languageNum);
    m_constantTextEdit->setProjectDir(m_projectDir);
    m_constantTextEdit->setLanguageCount(m_languageCount);
    showMasked(m_constantTextEdit);
    m_constantTextEdit->loadFile(TextTables::constantTextPath(m_projectDir));
}

void MainWindow::on_actionLanguage_Text_triggered()
{
    if (!projectOpen())
        return;
    showMasked(m_languageTextEditor);
    emit Update_to_DialogLanguage(PageList::pageId(m_currentPageRow));
}

void MainWindow::LanguageTextEdito_Close()
{
    Background_mask_Close();
}

void MainWindow::Update_from_DialogLanguage(const QString &text)
{
    QString page;
    QList<QPair<QString, QString>> texts;
    if (!projectOpen() || !LanguageTextEditor::parseUpdate(text, &page, &texts))
        return;
    if (page != PageList::pageId(m_currentPageRow))
        return; // the page was left while the editor was open
    QStringList changed;
    for (const auto &t : texts) {
        const QString key = t.first + QLatin1Char(':');
        for (const QString &line : m_currentPageLines) {
            if (!line.startsWith(key))
                continue;
            EditBuffer b;
            if (WidgetLine::parse(line, b) == ParseStatus::Ok && b.has("defaultText") && b.text("defaultText") != t.second) {
                b.setText("defaultText", t.second);
                WidgetLine::storeLine(m_currentPageLines, b);
                changed << b.objectName();
            }
            break;
        }
    }
    afterTextUpdate(changed);
}

QStringList MainWindow::refreshStaticLines(QStringList &lines) const
{
    const TextTables::ConstantRead read =
        TextTables::readConstantText(TextTables::constantTextPath(m_projectDir), m_languageCount);
    QStringList changed;
    if (read.entries.isEmpty())
        return changed;
    const QStringList before = lines;
    for (const QString &line : before) {
        EditBuffer b;
        if (!line.startsWith(QLatin1String("label")) || WidgetLine::parse(line, b) != ParseStatus::Ok
            || b.kind() != WidgetKind::Statictext)
            continue;
        QString text;
        if (!TextTables::constantText(read.entries, int(b.number("Constant_Num")), &text) || text == b.text("defaultText"))
            continue;
        b.setText("defaultText", text);
        WidgetLine::storeLine(lines, b);
        changed << b.objectName();
    }
    return changed;
}

void MainWindow::refreshStaticTexts()
{
    if (!projectOpen())
        return;
    afterTextUpdate(refreshStaticLines(m_currentPageLines));
}

void MainWindow::afterTextUpdate(const QStringList &changed)
{
    if (changed.isEmpty())
        return;
    for (const QString &name : changed) {
        const QString key = name + QLatin1Char(':');
        for (const QString &line : m_currentPageLines)
            if (line.startsWith(key)) {
                const QString error = m_canvasWidgets->load(line, m_zoomFactor, m_projectDir);
                if (!error.isEmpty())
                    log(error);
                break;
            }
    }
    m_pageDirty = 1;
    if (changed.contains(m_selectedName))
        selectByName(m_selectedName); // the rows show the new text
    takeStep(m_currentPageRow);
}

void MainWindow::Update_from_constanttextedit(const QString &)
{
    refreshStaticTexts();
}

void MainWindow::Preview_from_constanttextedit(const QString &text, int colour, int fontId, int)
{
    // The selected label drawn with the cell's text, colour and font; its line
    // stays as it is until the entry is saved.
    if (!projectOpen() || m_selectedName == QLatin1String("label_Show"))
        return;
    const WidgetKind kind = m_editBuffer.kind();
    if (kind != WidgetKind::Label && kind != WidgetKind::Statictext)
        return;
    if (QLabel *label = m_canvasWidgets->find(m_selectedName)) {
        EditBuffer preview = m_editBuffer;
        preview.setText("defaultText", text);
        preview.setNumber("fontColor", colour & 0xFFFFFF);
        if (fontId >= 0)
            preview.setNumber("fontID", fontId);
        m_canvasWidgets->paint(label, preview, m_zoomFactor, m_projectDir);
    }
}

void MainWindow::Preview_from_languageeditor(const QString &objectName, const QString &text)
{
    // the widget drawn in the cell's language; its line keeps the default text
    QLabel *label = projectOpen() ? m_canvasWidgets->find(objectName) : nullptr;
    if (!label)
        return;
    for (const QString &line : m_currentPageLines) {
        EditBuffer w;
        if (!line.startsWith(objectName + QLatin1Char(':')) || WidgetLine::parse(line, w) != ParseStatus::Ok)
            continue;
        w.setText("defaultText", text);
        m_canvasWidgets->paint(label, w, m_zoomFactor, m_projectDir);
        return;
    }
}

} // namespace vantile
