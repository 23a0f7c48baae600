#include "editors/Dialogmaterialaddr.h"

#include "app/Prompts.h"
#include "project/TextFiles.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>

namespace vantile {

namespace {

QLineEdit *edit(QWidget *parent, Material m, const char *what, bool readOnly)
{
    auto *e = new QLineEdit(parent);
    e->setObjectName(QStringLiteral("lineEdit_") + OtaAddresses::blockWord(m) + QLatin1Char('_') + QLatin1String(what));
    e->setReadOnly(readOnly);
    return e;
}

QPushButton *button(QWidget *parent, const char *objectName)
{
    auto *b = new QPushButton(parent);
    b->setObjectName(QLatin1String(objectName));
    b->setAutoDefault(false); // Enter confirms a field, it never closes the dialog
    return b;
}

} // namespace

Dialogmaterialaddr::Dialogmaterialaddr(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Dialogmaterialaddr"));
    checkBox = new QCheckBox(this);
    checkBox->setObjectName(QStringLiteral("checkBox"));
    auto *grid = new QGridLayout;
    for (int c = 0; c < 3; ++c) {
        m_heads[c] = new QLabel(this);
        grid->addWidget(m_heads[c], 0, c + 1);
    }
    const auto *kb = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("^[0-9]{0,7}$")), this);
    for (int i = 0; i < kMaterialCount; ++i) {
        const Material m = Material(i);
        Row &r = m_rows[i];
        r.name = new QLabel(OtaAddresses::blockWord(m), this);
        r.start = edit(this, m, "StartAddr", true);
        r.size = edit(this, m, "CurrentSize", true);
        r.reserve = edit(this, m, "ReserveLength", false);
        r.reserve->setValidator(kb);
        grid->addWidget(r.name, i + 1, 0);
        grid->addWidget(r.start, i + 1, 1);
        grid->addWidget(r.size, i + 1, 2);
        grid->addWidget(r.reserve, i + 1, 3);
    }
    m_hint = new QLabel(this);
    m_hint->setStyleSheet(QStringLiteral("QLabel{ color: blue }"));
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("label_Status"));
    m_status->setStyleSheet(QStringLiteral("QLabel{ color: red }"));
    m_status->setWordWrap(true);
    pushButton_OK = button(this, "pushButton_OK");
    pushButton_Cancel = button(this, "pushButton_Cancel");

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(checkBox);
    layout->addLayout(grid);
    layout->addWidget(m_hint);
    layout->addWidget(m_status);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(pushButton_OK);
    buttons->addWidget(pushButton_Cancel);
    layout->addLayout(buttons);
    retranslate();
    QMetaObject::connectSlotsByName(this);
}

void Dialogmaterialaddr::retranslate()
{
    setWindowTitle(tr("OTA Update Addr Setting"));
    checkBox->setText(tr("Fixed material addresses for OTA updates"));
    m_heads[0]->setText(tr("Start Address"));
    m_heads[1]->setText(tr("Current Size (Byte)"));
    m_heads[2]->setText(tr("Reserve Length (KB)"));
    m_hint->setText(tr("Press Enter to confirm after typing!"));
    pushButton_OK->setText(tr("OK"));
    pushButton_Cancel->setText(tr("Cancel"));
}

QString Dialogmaterialaddr::filePath() const
{
    return m_projectDir + QStringLiteral("Addr_Info.txt");
}

void Dialogmaterialaddr::openFor(const QString &projectDir, qint64 alignUnit, qint64 flashLimit)
{
    m_projectDir = projectDir.endsWith(QLatin1Char('/')) ? projectDir : projectDir + QLatin1Char('/');
    m_alignUnit = alignUnit;
    m_flashLimit = flashLimit;
    QStringList problems;
    m_loaded = OtaAddresses::load(filePath(), nullptr, &problems);
    m_previous = OtaMemory::of(m_loaded);
    fill(m_loaded);
    if (m_loaded.enabled) // unchecked, the file shows where the last build put the blocks
        recompute();
    else
        m_status->clear();
    if (!problems.isEmpty())
        Prompts::message(this, QStringLiteral("Warning"),
                         tr("Some lines of Addr_Info.txt can't be read. They are left out here; OK writes the "
                            "file without them."),
                         filePath() + QLatin1Char('\n') + problems.mid(0, 10).join(QLatin1Char('\n')));
}

void Dialogmaterialaddr::fill(const OtaAddresses &a)
{
    checkBox->setChecked(a.enabled);
    for (int i = 0; i < kMaterialCount; ++i) {
        m_rows[i].start->setText(a.blocks[i].start);
        m_rows[i].size->setText(a.blocks[i].currentSize);
        m_rows[i].reserve->setText(a.blocks[i].reserveKb);
    }
}

OtaAddresses Dialogmaterialaddr::addresses() const
{
    OtaAddresses a = m_loaded;
    a.enabled = checkBox->isChecked();
    for (int i = 0; i < kMaterialCount; ++i) {
        a.blocks[i].start = m_rows[i].start->text().trimmed();
        a.blocks[i].currentSize = m_rows[i].size->text().trimmed();
        a.blocks[i].reserveKb = m_rows[i].reserve->text().trimmed();
    }
    return a;
}

void Dialogmaterialaddr::recompute()
{
    OtaAddresses a = addresses();
    const QList<TailOutcome> tails = recomputeBlocks(a, m_previous, m_alignUnit, m_flashLimit);
    m_loaded = a;
    fill(a);
    QStringList refused, moved;
    for (int i = 0; i < tails.size(); ++i) {
        const QString word = OtaAddresses::blockWord(Material(i));
        m_rows[i].reserve->setStyleSheet(tails[i].reserveRefused ? QStringLiteral("QLineEdit{ color: red }")
                                                                 : QString());
        if (tails[i].reserveRefused)
            refused << word;
        const qint64 before = OtaAddresses::addressValue(m_previous.end[i]);
        if (before >= 0 && before != tails[i].endAddress)
            moved << word;
    }
    QStringList status;
    if (tails.isEmpty())
        status << tr("The Font start is not known yet: build the project once.");
    if (!refused.isEmpty())
        status << tr("Reserve beyond the flash, not used: %1.").arg(refused.join(QStringLiteral(", ")));
    if (!moved.isEmpty())
        status << tr("The ends of these blocks move: %1.").arg(moved.join(QStringLiteral(", ")));
    m_status->setText(status.join(QLatin1Char('\n')));
}

void Dialogmaterialaddr::on_lineEdit_Font_ReserveLength_editingFinished() { recompute(); }
void Dialogmaterialaddr::on_lineEdit_MultiLanguage_ReserveLength_editingFinished() { recompute(); }
void Dialogmaterialaddr::on_lineEdit_WAV_ReserveLength_editingFinished() { recompute(); }
void Dialogmaterialaddr::on_lineEdit_GIF_ReserveLength_editingFinished() { recompute(); }
void Dialogmaterialaddr::on_lineEdit_Image_ReserveLength_editingFinished() { recompute(); }
void Dialogmaterialaddr::on_lineEdit_Icon_ReserveLength_editingFinished() { recompute(); }
void Dialogmaterialaddr::on_lineEdit_Text_ReserveLength_editingFinished() { recompute(); }

void Dialogmaterialaddr::on_pushButton_OK_clicked()
{
    recompute();
    QString reason;
    if (!addresses().save(filePath(), &reason)) {
        Prompts::message(this, QStringLiteral("Warning"), QStringLiteral("Fail to create"),
                         FileError{filePath(), reason}.detail());
        return;
    }
    accept();
}

void Dialogmaterialaddr::on_pushButton_Cancel_clicked()
{
    reject();
}

} // namespace vantile
