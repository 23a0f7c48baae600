#pragma once
// Undo, redo, auto-save and recovery share one mechanism: numbered step
// files beside each page file. Step K of page NNNN is Plugin/PageNNNN.cfbK
// (K = 1..50, a ring); step 0 is the saved Plugin/PageNNNN.cfg.
// backup.txt names the latest step file of each page while a session runs.

#include "project/LogSink.h"
#include "project/TextFiles.h"

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

    // What taking a step wrote, and what it could not.
    struct StepResult {
        bool stepWritten = true;   // false: the step file could not be written
        bool backupWritten = true; // false: backup.txt could not be written (no crash recovery)
        FileError error;           // the first file that failed
        bool ok() const { return stepWritten && backupWritten; }
        explicit operator bool() const { return ok(); }
    };
    // Takes a step of these lines. When the step file can't be written the
    // counter stays advanced, as it is taken first. No step file is written
    // when the previous step holds the same lines.
    StepResult takeStep(int row, const QStringList &lines, const LogSink &log = {});

    // Undo and redo move the counter round the ring of the .cfg and the
    // existing steps, and return the file to load.
    QString undo(int row);
    QString redo(int row);

    // Enters a step file as the page's entry in backup.txt (whole file
    // rewritten). False when backup.txt can't be written.
    bool enterInBackup(const QString &stepFile, FileError *error = nullptr);
    // Recovery: the path backup.txt names for the row, empty for none.
    QString recoveredPath(int row) const;
    // Recovery: every page whose backup.txt entry names one of its own step
    // files that exists takes that step as its current state, so that it
    // counts as changed until saved. Returns the rows that did.
    QList<int> adoptRecoveredSteps(int pageCount);

    // Removes every file under Plugin whose path has ".cfb" after its
    // eighth character: the step files of an earlier session.
    void deleteStepFiles() const;

    // Two rotating copies of each .cfg, made at open.
    void rotateBackups(int pageCount, const LogSink &log = {}) const;

    // Equality of a page file and lines, as the step check sees it: the
    // decoded records, each trimmed with inner runs of white space reduced
    // to one blank. The file's form and encoding don't count.
    bool sameContent(const QString &path, const QStringList &lines) const;

private:
    QString m_dir;
    quint32 m_key = 0x5E21B7C4u;
    std::array<quint8, MaxPages> m_steps{};
};

} // namespace vantile
