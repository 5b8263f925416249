// The files beside the stores of an application folder that are the user's: settings, rules, lists
// and drafts.
#pragma once

#include <QString>
#include <QStringList>

namespace guanchao {

// What of them is in a folder, which ends in a separator: 回测规则（回测.ini）, 文章草稿 3 个.
QStringList userFileWords(const QString& folder);

// Brings them from one application folder to another; what differs there is first kept in the
// folder `kept`. Gives those that have come. Raises OperationError.
QStringList bringUserFiles(const QString& from, const QString& own, const QString& kept);

}  // namespace guanchao
