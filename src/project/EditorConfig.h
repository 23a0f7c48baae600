#pragma once
// editorConfig.ini beside the executable: the user's own settings.

#include <QString>

namespace vantile {

struct EditorConfig {
    QString lastLoadPath;
    int languageIndex = 0;     // 1 Chinese, 0 English
    int toolBarTextIndex = 0;  // 0 text under icons, 1 icons only
    int autoSaveIndex = 0;     // 1 on, 0 off
    int headerFileIndex = 0;

    // Missing or unreadable file: everything reads as 0 or empty.
    // Non-zero language and tool bar values are read as 1.
    static EditorConfig load(const QString &path);
    bool save(const QString &path) const;
};

} // namespace vantile
