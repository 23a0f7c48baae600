#pragma once
// The texts of one page's multi-language labels and textrolls in every
// language of the project: MultiLanguage/PageNNNN.csv, with the column
// titles in MultiLanguage/TableHeader.txt.

#include "project/TextTables.h"

#include <QDialog>
#include <functional>

class QPushButton;
class QTableWidget;

namespace vantile {

class LanguageTextEditor : public QDialog
{
    Q_OBJECT
public:
    static constexpr int kFixedColumns = 3; // Name, WriteAddr, WordLength

    // What the editor reads of the open project when it opens a page.
    struct Source {
        std::function<QString()> projectDir;    // with its trailing "/"
        std::function<QStringList()> pageLines; // the page being edited
        std::function<QString()> languageNum;   // lineEdit_LangueNum
    };

    explicit LanguageTextEditor(QWidget *parent = nullptr);
    void setSource(const Source &source) { m_source = source; }
    void retranslate();

    QString pageId() const { return m_pageId; }
    int languageCount() const { return m_languages; }
    QList<TextTables::LanguageRow> rows() const;
    QTableWidget *table() const { return tableWidget; }

    // The text sent to the main window by OK: the page id on the first line,
    // then "objectName:" + the default language's text in "*Hex:" form, one
    // line per widget.
    static bool parseUpdate(const QString &text, QString *pageId, QList<QPair<QString, QString>> *texts);

signals:
    void Update_to_MainWindow(const QString &text);
    void LanguageTextEditor_close();
    // The canvas shows a widget with the text of the current language cell.
    void Preview_to_MainWindow(const QString &objectName, const QString &text);

public slots:
    void Update_from_MainWindow(const QString &page);
    void on_pushButton_LoadCommand_clicked();
    void on_pushButton_SaveCommand_clicked();
    void on_pushButton_ok_clicked();
    void on_pushButton_Canncel_clicked();
    void on_tableWidget_cellChanged(int row, int column);
    void on_tableWidget_cellClicked(int row, int column);

protected:
    void reject() override; // Esc and the title bar's close act as Cancel

private:
    struct Widget {
        QString key;
        quint16 writeAddr;
        int wordLength;
        QString defaultText;
    };
    void setColumns();
    void fillRows(const QList<Widget> &widgets, const QList<TextTables::LanguageRow> &fileRows);
    void mergeTexts(const QList<TextTables::LanguageRow> &fileRows);
    bool readTable(const QString &path, QList<TextTables::LanguageRow> *rows);
    bool writeTable(const QString &path);
    bool saveToProject();
    void finish();
    void preview(int row, int column);

    Source m_source;
    QString m_projectDir;
    QString m_pageId;
    int m_languages = 1;
    QStringList m_titles;
    bool m_filling = false;
    bool m_changed = false;

    QTableWidget *tableWidget;
    QPushButton *pushButton_LoadCommand;
    QPushButton *pushButton_SaveCommand;
    QPushButton *pushButton_ok;
    QPushButton *pushButton_Canncel;
};

} // namespace vantile
