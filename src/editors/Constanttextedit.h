#pragma once
// "Static Text Settings": the project's fixed strings of Constant_text.csv,
// one row per entry, three columns (text, colour, font) per language
// behind the entry's name.

#include "project/TextTables.h"

#include <QDialog>

class QPushButton;
class QTableWidget;

namespace vantile {

class Constanttextedit : public QDialog
{
    Q_OBJECT
public:
    // Rows 0 and 1 of the table are its two header rows.
    static constexpr int kHeaderRows = 2;

    explicit Constanttextedit(QWidget *parent = nullptr);
    void retranslate();

    void setProjectDir(const QString &projectDir) { m_projectDir = projectDir; }
    // 3 x languages + 1 columns; the rows are kept.
    void setLanguageCount(int languages);
    int languageCount() const { return m_languages; }
    // Fills the table from a file; a missing file gives an empty table.
    void loadFile(const QString &path);
    // The entries as the table holds them (for the file and for tests).
    QList<TextTables::ConstantEntry> entries() const;
    bool isChanged() const { return m_changed; }
    QTableWidget *table() const { return tableWidget; }

signals:
    void ConstanttextEditor_close();
    // text, colour 0xRRGGBB, font id, entry number
    void Preview_to_MainWindow(const QString &text, int colour, int fontId, int number);
    // The path of the file just written.
    void Update_to_MainWindow(const QString &path);

public slots:
    void on_pushButton_add_clicked();
    void on_pushButton_del_clicked();
    void onTableItemChanged();
    void constant_Preview(int row, int column);
    void show_prodcut_sets(int row, int column);
    void on_pushButton_ok_clicked();
    void on_pushButton_Canncel_clicked();

protected:
    void reject() override; // Esc and the title bar's close act as Cancel

private:
    void setHeaderRows();
    void appendEntry(const TextTables::ConstantEntry &entry);
    QString fontFileName(int fontId) const;
    QStringList fontFiles() const;
    int fontIdOf(const QString &cell) const;
    bool save();
    void finish();

    QString m_projectDir;
    QString m_path;
    int m_languages = 1;
    bool m_changed = false;
    bool m_filling = false;

    QTableWidget *tableWidget;
    QPushButton *pushButton_add;
    QPushButton *pushButton_del;
    QPushButton *pushButton_ok;
    QPushButton *pushButton_Canncel;
};

} // namespace vantile
