#pragma once
// Undo, redo, auto-save and recovery share one mechanism: numbered step
// files beside each page file. Step K of page NNNN is Plugin/PageNNNN.cfbK
// (K = 1..50, a ring); step 0 is the saved Plugin/PageNNNN.cfg.
// backup.txt names the latest step file of each page while a session runs.

#include "project/LogSink.h"

#include <QString>
#include <QStringList>
#include <array>

namespace vantile {

class PageHistory
{
public:
    static constexpr int MaxPages = 10240;
    static constexpr int RingSize = 50;

    // dir: the project directory with its trailing "/".
    void reset(const QString &projectDir, quint32 supplierKey);
    void setSupplierKey(quint32 key) { m_key = key; }

    QString cfgPath(int row) const;
    QString stepPath(int row, int k) const;
    QString backupFile() const { return m_dir + QStringLiteral("backup.txt"); }

    int step(int row) const;
    void setStep(int row, int k);
    void zeroAll();

    // The highest K in 1..50 whose step file exists, gaps or not; 0 for none.
    int highestStep(int row) const;
    // The file that holds the page's current state: step K when K is not
    // zero and not above the highest existing step, else the .cfg.
    QString currentFile(int row) const;

    // Takes a step of these lines. Returns false when the step file could
    // not be written (the counter stays advanced, as it is taken first).
    bool takeStep(int row, const QStringList &lines, const LogSink &log = {});

    // Undo and redo move the counter round the ring of the .cfg and the
    // existing steps, and return the file to load.
    QString undo(int row);
    QString redo(int row);

    // Enters a step file as the page's entry in backup.txt (whole file
    // rewritten). False when backup.txt can't be written.
    bool enterInBackup(const QString &stepFile);
    // Recovery: the path backup.txt names for the row, empty for none.
    QString recoveredPath(int row) const;

    // Removes every file under Plugin whose path has ".cfb" after its
    // eighth character: the step files of an earlier session.
    void deleteStepFiles() const;

    // Two rotating copies of each .cfg, made at open.
    void rotateBackups(int pageCount, const LogSink &log = {}) const;

    // Equality of a file and lines, as the step check sees it: the file's
    // lines as bytes, each line and each given line trimmed with inner runs
    // of white space reduced to one blank. A file with a BOM, a sealed file
    // or text that is not ASCII never compares equal.
    static bool sameContent(const QString &path, const QStringList &lines);

private:
    QString m_dir;
    quint32 m_key = 0x5E21B7C4u;
    std::array<quint8, MaxPages> m_steps{};
};

} // namespace vantile
