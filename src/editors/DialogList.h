#pragma once
// The action list editor of an encoder: one entry of the encoder's sixteen,
// shown as a two-column table. Created once, shown and hidden.
//
// The text that comes in and goes out is
//     objectName ":" entry
// where an entry is a list of fields, each ended by "," except the last,
// which is ended by ";". The first field is the mode number 1..4, and an
// empty entry is the single word "NULL" (no ";").
//
// Every row of the table holds exactly one field; no cell carries a
// separator. The table shows the rows in the order below; the entry keeps
// its fields in the same order, except that in modes 2 and 3 the report
// switch, the table's second row, is the entry's last field:
//
//   mode 1 (19 fields): 1, reportToHost, pageGoto, then eight pairs of
//          address and value
//   mode 2 ( 8 fields): 2, writeAddr, minValue, maxValue, adjStep,
//          gradation, loop, reportToHost
//   mode 3 ( 6 fields): 3, writeAddr, minValue, maxValue, adjStep,
//          reportToHost
//   mode 4 (15 fields): 4, then for a single click, a double click and a
//          long press: page, (double click and long press only: time in
//          50 ms), report switch, address, value
//
// So the defaults of New read, as entries:
//   "1,Disable,,0xFFFF,0xFFFF, ... ,0xFFFF,0xFFFF;"
//   "2,0xFFFF,0,100,1,+,Enable,Disable;"
//   "3,0xFFFF,0,100,1,Disable;"
//   "4,,Disable,0xFFFF,0xFFFF,,10,Disable,0xFFFF,0xFFFF,,20,Disable,0xFFFF,0xFFFF;"
// New builds that text and fills the table from it exactly as an opened
// entry, and OK joins the cells in entry order with "," and a final ";".

#include <QAbstractItemDelegate>
#include <QDialog>
#include <QPersistentModelIndex>
#include <QString>
#include <QStringList>
#include <QVector>

class QComboBox;
class QModelIndex;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace vantile {

class DialogList : public QDialog
{
    Q_OBJECT
public:
    // What a row holds, which decides how a double click edits it and how
    // OK cleans its text.
    enum class RowType { Mode, Switch, Page, Address, Number, Word };

    struct Row {
        const char *key; // the English label
        const char *zh;  // the Chinese label
        RowType type;
    };

    explicit DialogList(QWidget *parent = nullptr);
    ~DialogList() override;

    // Language of the row labels: 0 English (the row key), 1 Chinese.
    void setLanguage(int index);
    int language() const { return m_language; }

    // The project's pages, offered by the menu of a page row.
    void setPages(const QStringList &pages);
    QStringList pages() const { return m_pages; }

    // Re-sets every visible text through the translator.
    void retranslate();

    // The object name of the encoder being edited (the text before ":").
    QString target() const { return m_target; }
    // The mode whose rows the table shows; 0 when it shows none.
    int tableMode() const { return m_tableMode; }

    // The rows of a mode in table order; empty for a number outside 1..4.
    static QVector<Row> rows(int mode);
    // For each field of the entry in order, the table row that holds it.
    static QVector<int> fieldRows(int mode);
    // The entry New fills in for a mode; empty for a number outside 1..4.
    static QString defaultEntry(int mode);

signals:
    void List_Update_to_MainWindow(QString text);
    void Background_mask_Close_Signal_list();

public slots:
    // Opens the dialog with "objectName:entry". Texts that don't begin with
    // "encoder" are ignored.
    void List_Update_from_MainWindow(QString text);

    void on_pushButton_OK_clicked();
    void on_pushButton_Cel_clicked();
    void on_pushButton_New_clicked();
    void on_pushButton_Clear_clicked();
    void on_tableView_doubleClicked(const QModelIndex &index);
    void Para_TabelView_Edit_End(QWidget *editor, QAbstractItemDelegate::EndEditHint hint);

    // Escape and the title bar close the dialog as Cancel does.
    void reject() override;

private:
    void buildForm();
    void fillFromEntry(int mode, const QString &entry);
    void relabel();
    QString cellText(int row) const;
    void closeDialog(bool accepted);
    static QString cleanField(const QString &text, RowType type);

    QComboBox *comboBox_Mode = nullptr;
    QTableView *tableView = nullptr;
    QStandardItemModel *m_model = nullptr;
    QPushButton *pushButton_New = nullptr;
    QPushButton *pushButton_OK = nullptr;
    QPushButton *pushButton_Cel = nullptr;
    QPushButton *pushButton_Clear = nullptr;

    QString m_target;
    int m_tableMode = 0;
    int m_language = 0;
    QStringList m_pages;
    QPersistentModelIndex m_editing; // the cell an inline edit was started on
};

} // namespace vantile
