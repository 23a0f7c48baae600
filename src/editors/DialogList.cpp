#include "editors/DialogList.h"

#include "app/ParaDelegates.h"
#include "app/Prompts.h"

#include <QComboBox>
#include <QCursor>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace vantile {

namespace {

using RT = DialogList::RowType;

const char *const kAddrZh = "操作变量地址";
const char *const kValueZh = "    _赋值";

const DialogList::Row kMode1[] = {
    {"controlMode", "功能名称", RT::Mode},
    {"reportToHost", "串口返回使能", RT::Switch},
    {"pageGoto", "跳转页面", RT::Page},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
    {"writeAddr-", kAddrZh, RT::Address}, {"writeAddr_value", kValueZh, RT::Address},
};

const DialogList::Row kMode2[] = {
    {"controlMode", "功能名称", RT::Mode},
    {"reportToHost", "串口返回使能", RT::Switch},
    {"writeAddr", "变量地址", RT::Address},
    {"minValue", "最小值", RT::Number},
    {"maxValue", "最大值", RT::Number},
    {"adjStep", "步进", RT::Number},
    {"gradation", "变量变化模式", RT::Word},
    {"loop", "循环使能", RT::Switch},
};

const DialogList::Row kMode3[] = {
    {"controlMode", "功能名称", RT::Mode},
    {"reportToHost", "串口返回使能", RT::Switch},
    {"writeAddr", "变量地址", RT::Address},
    {"minValue", "最小值", RT::Number},
    {"maxValue", "最大值", RT::Number},
    {"adjStep", "步进", RT::Number},
};

const DialogList::Row kMode4[] = {
    {"controlMode", "功能名称", RT::Mode},
    {"singleClickPageGoto", "单击跳转页面", RT::Page},
    {"singleClickReport", "单击串口返回使能", RT::Switch},
    {"singleClick_Addr", kAddrZh, RT::Address},
    {"singleClick_Addr_value", kValueZh, RT::Address},
    {"doubleClickPageGoto", "双击跳转页面", RT::Page},
    {"doubleClickTimeGap(50ms)", "双击触发的有效时间(50ms)", RT::Number},
    {"doubleClickReport", "双击串口返回使能", RT::Switch},
    {"doubleClick_Addr", kAddrZh, RT::Address},
    {"doubleClick_Addr_value", kValueZh, RT::Address},
    {"longPressPageGoto", "长按跳转页面", RT::Page},
    {"longPressDuration(50ms)", "长按触发的有效时间(50ms)", RT::Number},
    {"longPressReport", "长按串口返回使能", RT::Switch},
    {"longPress_Addr", kAddrZh, RT::Address},
    {"longPress_Addr_value", kValueZh, RT::Address},
};

template <size_t N>
QVector<DialogList::Row> toVector(const DialogList::Row (&rows)[N])
{
    return QVector<DialogList::Row>(rows, rows + N);
}

// Reads the mode number of an entry's first field; 0 when it isn't 1..4.
int modeOf(const QString &field)
{
    bool ok = false;
    const int mode = field.trimmed().toInt(&ok);
    return ok && mode >= 1 && mode <= 4 ? mode : 0;
}

QString labelOf(const DialogList::Row &row, int language)
{
    return language == 1 ? QString::fromUtf8(row.zh) : QString::fromLatin1(row.key);
}

} // namespace

// --- the rows and entries of the four modes ------------------------------------------

QVector<DialogList::Row> DialogList::rows(int mode)
{
    switch (mode) {
    case 1: return toVector(kMode1);
    case 2: return toVector(kMode2);
    case 3: return toVector(kMode3);
    case 4: return toVector(kMode4);
    default: return {};
    }
}

QVector<int> DialogList::fieldRows(int mode)
{
    const int n = rows(mode).size();
    QVector<int> order;
    if (mode == 2 || mode == 3) {
        // The report switch stands second in the table but closes the entry.
        order << 0;
        for (int r = 2; r < n; ++r)
            order << r;
        order << 1;
        return order;
    }
    for (int r = 0; r < n; ++r)
        order << r;
    return order;
}

QString DialogList::defaultEntry(int mode)
{
    const QString pair = QStringLiteral("0xFFFF,0xFFFF");
    switch (mode) {
    case 1: {
        QStringList fields{QStringLiteral("1"), QStringLiteral("Disable"), QString()};
        for (int i = 0; i < 8; ++i)
            fields << pair;
        return fields.join(QLatin1Char(',')) + QLatin1Char(';');
    }
    case 2:
        return QStringLiteral("2,0xFFFF,0,100,1,+,Enable,Disable;");
    case 3:
        return QStringLiteral("3,0xFFFF,0,100,1,Disable;");
    case 4:
        // Double click within 10 x 50 ms, long press after 20 x 50 ms.
        return QStringLiteral("4,,Disable,") + pair + QStringLiteral(",,10,Disable,") + pair
               + QStringLiteral(",,20,Disable,") + pair + QLatin1Char(';');
    default:
        return QString();
    }
}

// --- form ----------------------------------------------------------------------------

DialogList::DialogList(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("DialogList"));
    buildForm();
    retranslate();
}

DialogList::~DialogList() = default;

void DialogList::buildForm()
{
    setModal(true);
    resize(420, 560);

    comboBox_Mode = new QComboBox(this);
    comboBox_Mode->setObjectName(QStringLiteral("comboBox_Mode"));
    for (int m = 1; m <= 4; ++m)
        comboBox_Mode->addItem(QStringLiteral("Mode") + QString::number(m));

    m_model = new QStandardItemModel(0, 2, this);
    tableView = new QTableView(this);
    tableView->setObjectName(QStringLiteral("tableView"));
    tableView->setModel(m_model);
    tableView->setEditTriggers(QAbstractItemView::NoEditTriggers); // a double click decides
    tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    tableView->verticalHeader()->hide();
    tableView->horizontalHeader()->setStyleSheet(QStringLiteral("QHeaderView::section{background:DarkSeaGreen;}"));
    tableView->horizontalHeader()->setStretchLastSection(true);
    tableView->setColumnWidth(0, 200);
    tableView->setItemDelegateForColumn(0, new ReadOnlyDelegate(tableView));
    auto *delegate = new TableItemDelegate(tableView);
    tableView->setItemDelegateForColumn(1, delegate);

    pushButton_New = new QPushButton(this);
    pushButton_New->setObjectName(QStringLiteral("pushButton_New"));
    pushButton_OK = new QPushButton(this);
    pushButton_OK->setObjectName(QStringLiteral("pushButton_OK"));
    pushButton_Cel = new QPushButton(this);
    pushButton_Cel->setObjectName(QStringLiteral("pushButton_Cel"));
    pushButton_Clear = new QPushButton(this);
    pushButton_Clear->setObjectName(QStringLiteral("pushButton_Clear"));
    for (QPushButton *b : {pushButton_New, pushButton_OK, pushButton_Cel, pushButton_Clear})
        b->setAutoDefault(false); // Enter ends a cell edit, it doesn't press OK

    auto *top = new QHBoxLayout;
    top->addWidget(comboBox_Mode, 1);
    top->addWidget(pushButton_New);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(pushButton_Clear);
    bottom->addStretch(1);
    bottom->addWidget(pushButton_OK);
    bottom->addWidget(pushButton_Cel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(tableView, 1);
    layout->addLayout(bottom);

    connect(pushButton_OK, &QPushButton::clicked, this, &DialogList::on_pushButton_OK_clicked);
    connect(pushButton_Cel, &QPushButton::clicked, this, &DialogList::on_pushButton_Cel_clicked);
    connect(pushButton_New, &QPushButton::clicked, this, &DialogList::on_pushButton_New_clicked);
    connect(pushButton_Clear, &QPushButton::clicked, this, &DialogList::on_pushButton_Clear_clicked);
    connect(tableView, &QTableView::doubleClicked, this, &DialogList::on_tableView_doubleClicked);
    connect(delegate, &QAbstractItemDelegate::closeEditor, this, &DialogList::Para_TabelView_Edit_End);
}

void DialogList::retranslate()
{
    setWindowTitle(tr("Action list"));
    pushButton_New->setText(tr("New"));
    pushButton_OK->setText(tr("OK"));
    pushButton_Cel->setText(tr("Cancel"));
    pushButton_Clear->setText(tr("Clear"));
    comboBox_Mode->setToolTip(tr("Control mode"));
    m_model->setHorizontalHeaderLabels({tr("Parameter"), tr("Data")});
}

void DialogList::setLanguage(int index)
{
    m_language = index == 1 ? 1 : 0;
    relabel();
}

void DialogList::setPages(const QStringList &pages)
{
    m_pages = pages;
}

void DialogList::relabel()
{
    const QVector<Row> r = rows(m_tableMode);
    for (int i = 0; i < m_model->rowCount(); ++i) {
        if (QStandardItem *item = m_model->item(i, 0))
            item->setText(i < r.size() ? labelOf(r[i], m_language)
                                       : labelOf(kMode1[0], m_language)); // a lone controlMode row
    }
}

// --- filling the table ---------------------------------------------------------------

void DialogList::fillFromEntry(int mode, const QString &entry)
{
    m_model->removeRows(0, m_model->rowCount());
    m_tableMode = mode;
    const QVector<Row> r = rows(mode);
    if (r.isEmpty())
        return;

    // The entry ends at its ";"; fields that are missing take the defaults.
    const QStringList fields = entry.section(QLatin1Char(';'), 0, 0).split(QLatin1Char(','));
    const QStringList defaults = defaultEntry(mode).section(QLatin1Char(';'), 0, 0).split(QLatin1Char(','));
    const QVector<int> order = fieldRows(mode);
    QStringList values;
    for (int i = 0; i < r.size(); ++i)
        values << QString();
    for (int f = 0; f < order.size(); ++f)
        values[order[f]] = f < fields.size() ? fields[f].trimmed() : defaults.value(f);
    values[0] = QString::number(mode);

    for (int i = 0; i < r.size(); ++i) {
        auto *label = new QStandardItem(labelOf(r[i], m_language));
        label->setEditable(false);
        auto *value = new QStandardItem(values[i]);
        value->setEditable(r[i].type != RowType::Mode);
        m_model->appendRow({label, value});
    }
    tableView->setColumnWidth(0, 200);
}

QString DialogList::cellText(int row) const
{
    const QStandardItem *item = m_model->item(row, 1);
    return item ? item->text() : QString();
}

// A cell's text as it goes into the entry: one field, without separators;
// an address becomes "0xFFFF" when empty and "0x0000" when it isn't written
// as hexadecimal.
QString DialogList::cleanField(const QString &text, RowType type)
{
    QString t = text;
    t.remove(QLatin1Char(',')).remove(QLatin1Char(';'));
    t = t.trimmed();
    if (type == RowType::Address) {
        if (t.isEmpty())
            return QStringLiteral("0xFFFF");
        if (!t.startsWith(QLatin1String("0x")) && !t.startsWith(QLatin1String("0X")))
            return QStringLiteral("0x0000");
    }
    return t;
}

// --- slots ---------------------------------------------------------------------------

void DialogList::List_Update_from_MainWindow(QString text)
{
    if (!text.startsWith(QLatin1String("encoder")))
        return;
    m_target = text.section(QLatin1Char(':'), 0, 0);
    const QString entry = text.section(QLatin1Char(':'), 1);
    const int mode = modeOf(entry.section(QLatin1Char(';'), 0, 0).section(QLatin1Char(','), 0, 0));

    fillFromEntry(mode, entry);
    if (mode != 0)
        comboBox_Mode->setCurrentIndex(mode - 1);
    show();
    raise();
    activateWindow();
    if (mode == 0)
        Prompts::message(this, tr("Message"), tr("Please select the control mode"));
}

void DialogList::on_pushButton_New_clicked()
{
    const int mode = comboBox_Mode->currentIndex() + 1;
    fillFromEntry(mode, defaultEntry(mode));
}

void DialogList::on_pushButton_Clear_clicked()
{
    if (m_model->rowCount() == 0) {
        auto *label = new QStandardItem(labelOf(kMode1[0], m_language));
        label->setEditable(false);
        auto *value = new QStandardItem;
        value->setEditable(false);
        m_model->appendRow({label, value});
    }
    m_model->item(0, 1)->setText(QStringLiteral("NULL"));
}

void DialogList::on_pushButton_OK_clicked()
{
    const QString mode = cellText(0).trimmed();
    QString entry;
    if (m_model->rowCount() == 0 || m_tableMode == 0 || mode == QLatin1String("NULL")) {
        entry = QStringLiteral("NULL");
    } else {
        const QVector<Row> r = rows(m_tableMode);
        QStringList fields;
        for (int row : fieldRows(m_tableMode))
            fields << cleanField(cellText(row), r[row].type);
        entry = fields.join(QLatin1Char(',')) + QLatin1Char(';');
    }
    emit List_Update_to_MainWindow(m_target + QLatin1Char(':') + entry);
    closeDialog(true);
}

void DialogList::on_pushButton_Cel_clicked()
{
    closeDialog(false);
}

void DialogList::reject()
{
    closeDialog(false);
}

void DialogList::closeDialog(bool accepted)
{
    if (accepted)
        QDialog::accept();
    else
        QDialog::reject();
    emit Background_mask_Close_Signal_list();
}

void DialogList::on_tableView_doubleClicked(const QModelIndex &index)
{
    if (!index.isValid() || index.column() != 1)
        return;
    const QVector<Row> r = rows(m_tableMode);
    if (index.row() >= r.size())
        return;
    QString result;
    switch (r[index.row()].type) {
    case RowType::Mode:
        return; // the mode is chosen with the combo box and New
    case RowType::Switch:
        result = Prompts::chooseWord(this, {QStringLiteral("Enable"), QStringLiteral("Disable")}, QCursor::pos());
        break;
    case RowType::Page:
        result = Prompts::chooseWord(this, m_pages, QCursor::pos());
        break;
    case RowType::Address:
    case RowType::Number:
    case RowType::Word:
        m_editing = index;
        tableView->edit(index);
        return;
    }
    if (result.isEmpty())
        return; // a dismissed menu leaves the cell as it was
    m_model->setData(index, result);
}

void DialogList::Para_TabelView_Edit_End(QWidget *, QAbstractItemDelegate::EndEditHint)
{
    const QModelIndex index = m_editing.isValid() ? QModelIndex(m_editing) : tableView->currentIndex();
    m_editing = QPersistentModelIndex();
    if (!index.isValid() || index.column() != 1)
        return;
    const QVector<Row> r = rows(m_tableMode);
    if (index.row() >= r.size() || r[index.row()].type == RowType::Mode)
        return;
    const QString text = index.data().toString();
    const QString clean = cleanField(text, r[index.row()].type);
    if (clean != text)
        m_model->setData(index, clean);
}

} // namespace vantile
