#pragma once
// The About box: the program's title, version, when this copy was built,
// and where to read more.

#include <QDialog>

namespace vantile {

class DialogAbout : public QDialog
{
    Q_OBJECT

public:
    static const char *const kWebAddress;

    DialogAbout(const QString &title, const QString &version, const QString &built, QWidget *parent = nullptr);

signals:
    // Sent when the box closes, however it closes (the main window drops its mask).
    void Background_mask_Close_Signal_about();

protected:
    void done(int result) override;
};

} // namespace vantile
