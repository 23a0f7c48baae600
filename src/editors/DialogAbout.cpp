#include "editors/DialogAbout.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace vantile {

const char *const DialogAbout::kWebAddress = "https://vantile.example/";

DialogAbout::DialogAbout(const QString &title, const QString &version, const QString &built, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("DialogAbout"));
    setWindowTitle(tr("About"));
    setStyleSheet(QStringLiteral("QDialog{background-color: #ffffff;border-radius: 4px;}"));
    auto *layout = new QVBoxLayout(this);
    auto *name = new QLabel(title, this);
    name->setObjectName(QStringLiteral("label_Title"));
    QFont big = name->font();
    big.setPointSize(big.pointSize() + 6);
    big.setBold(true);
    name->setFont(big);
    layout->addWidget(name);
    auto addLine = [&](const char *objectName, const QString &text) {
        auto *l = new QLabel(text, this);
        l->setObjectName(QLatin1String(objectName));
        l->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse);
        layout->addWidget(l);
        return l;
    };
    addLine("label_Version", tr("Version: %1").arg(version));
    addLine("label_Built", tr("Built: %1").arg(built));
    QLabel *web = addLine("label_Web", QStringLiteral("<a href=\"%1\">%1</a>").arg(QLatin1String(kWebAddress)));
    web->setOpenExternalLinks(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
}

void DialogAbout::done(int result)
{
    QDialog::done(result);
    emit Background_mask_Close_Signal_about();
}

} // namespace vantile
