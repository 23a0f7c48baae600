#pragma once
// Files that lie beside the executable, not in a project.

#include <QString>

namespace vantile {

namespace AppPaths {
// The application directory; tests may point it elsewhere.
QString appDir();
void setAppDirOverride(const QString &dir);

QString editorConfigPath();   // editorConfig.ini
QString uiprjPathFile();      // uiprj_path.ini
QString currentBinPathFile(); // currentbin_path.ini

// One-line UTF-8 file with a BOM; empty when missing.
QString readOneLine(const QString &path);
bool writeOneLine(const QString &path, const QString &text);
} // namespace AppPaths

} // namespace vantile
