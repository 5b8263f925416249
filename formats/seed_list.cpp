#include "formats/seed_list.h"

#include <QFile>
#include <stdexcept>

#include "formats/text_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QList<QStringList> readSeedList(const QString& path, qsizetype fields) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error(QString(u"不能读取 "_s + path).toStdString());
    }
    const QStringList lines = linesOf(readText(file.readAll()).text);
    QList<QStringList> rows;
    for (qsizetype line = 1; line < lines.size(); ++line) {
        if (lines[line].isEmpty()) {
            continue;
        }
        rows << lines[line].split(u',');
        if (rows.last().size() != fields) {
            throw std::runtime_error(
                QString(path + u" 第 "_s + QString::number(line + 1) + u" 行的项数不对"_s)
                    .toStdString());
        }
    }
    return rows;
}

}  // namespace guanchao
