// The places outside the application folder that the program knows; they lie in the user's home
// folder.
#pragma once

#include <QString>

namespace guanchao {

enum class HomePlace {
    exportFolder,  // 导出主题, where exchange files and the user's sounds lie, with a separator
    firstHistory,  // the first history database
    secondHistory,    // the second history database
    maintenanceStore  // the file whose key 设置密码 takes away
};

QString homePath(HomePlace place);

// An application folder with a folder of this name has history databases of its own in it, and
// doesn't look for the user's, whether they are there or not.
inline const QString historyFolder = QStringLiteral("听涛阁/");

}  // namespace guanchao
