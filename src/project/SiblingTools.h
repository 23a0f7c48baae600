#pragma once
// The sibling programs the designer starts from its Tool menu (font maker,
// picture-digit maker, emulator, serial debugger, sound tool). Each is an
// executable in the application directory whose file name contains the
// tool's name, so a version suffix is accepted. A tool that already runs is
// not started again; a missing one does nothing.

#include <QString>
#include <QStringList>

namespace vantile {

namespace SiblingTools {

// The executables of a directory by name: "*.exe" on Windows, elsewhere
// the regular files with the executable bit.
QStringList executables(const QString &dir);
// The first of them whose name contains toolName; empty when none does.
QString find(const QString &dir, const QString &toolName);
// True when a running process has this executable file name: Windows asks
// the process list tool, Linux reads /proc.
bool isRunning(const QString &fileName);
// Finds the tool and starts it detached unless it runs already. Returns
// the file name started, empty when nothing was started.
QString start(const QString &dir, const QString &toolName);

} // namespace SiblingTools

} // namespace vantile
