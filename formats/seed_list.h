// A seed list: a comma-separated UTF-8 file with a header line, without quoting.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace guanchao {

// The rows behind the header. Raises std::runtime_error, naming the file and line, if the file
// can't be read or a row hasn't that many fields.
QList<QStringList> readSeedList(const QString& path, qsizetype fields);

}  // namespace guanchao
