// The places outside the application folder that the program knows. On Windows they are fixed on
// drive D:; elsewhere they lie in the user's home folder.
#pragma once

#include <QString>

namespace guanchao {

enum class FixedPlace {
    exportFolder,  // 导出主题, where exchange files and the user's sounds lie, with a separator
    firstHistory,  // the first history database
    secondHistory,    // the second history database
    maintenanceStore  // the file whose key 设置密码 takes away
};

QString fixedPath(FixedPlace place);

}  // namespace guanchao
