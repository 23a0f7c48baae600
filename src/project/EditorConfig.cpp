#include "project/EditorConfig.h"

#include <QSettings>
#include <QTextCodec>

namespace vantile {

EditorConfig EditorConfig::load(const QString &path)
{
    QSettings s(path, QSettings::IniFormat);
    s.setIniCodec("UTF-8");
    EditorConfig c;
    c.lastLoadPath = s.value(QStringLiteral("/set/LastLoadPath")).toString();
    c.languageIndex = s.value(QStringLiteral("/set/LanguageIndex")).toInt() != 0 ? 1 : 0;
    c.toolBarTextIndex = s.value(QStringLiteral("/set/ToolBarTextIndex")).toInt() != 0 ? 1 : 0;
    c.autoSaveIndex = s.value(QStringLiteral("/set/Auto_Save_index")).toInt();
    c.headerFileIndex = s.value(QStringLiteral("/set/Header_file_index")).toInt();
    return c;
}

bool EditorConfig::save(const QString &path) const
{
    QSettings s(path, QSettings::IniFormat);
    s.setIniCodec("UTF-8");
    s.setValue(QStringLiteral("/set/LastLoadPath"), lastLoadPath);
    s.setValue(QStringLiteral("/set/LanguageIndex"), languageIndex);
    s.setValue(QStringLiteral("/set/ToolBarTextIndex"), toolBarTextIndex);
    s.setValue(QStringLiteral("/set/Auto_Save_index"), autoSaveIndex);
    s.setValue(QStringLiteral("/set/Header_file_index"), headerFileIndex);
    s.sync();
    return s.status() == QSettings::NoError;
}

} // namespace vantile
