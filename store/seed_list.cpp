#include "store/seed_list.h"

#include <QFile>
#include <stdexcept>

namespace guanchao {

QList<QStringList> readSeedList(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    const qsizetype fields = lines.first().split(u',').size();
    QList<QStringList> rows;
    for (qsizetype line = 1; line < lines.size(); ++line) {
        if (lines[line].isEmpty()) {
            continue;
        }
        rows << lines[line].split(u',');
        if (rows.last().size() != fields) {
            throw std::runtime_error(path.toStdString() + ":" + std::to_string(line + 1) +
                                     ": wrong count of fields");
        }
    }
    return rows;
}

}  // namespace guanchao
