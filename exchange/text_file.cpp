#include "exchange/text_file.h"

#include <QFile>

#include "base/activity.h"
#include "formats/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QStringList linesOf(const QByteArray& bytes) {
    QString text = textFromUtf8OrGbk(bytes);
    const QChar end = text.contains(u'\r') ? u'\r' : u'\n';
    text.replace(u"\r\n"_s, u"\r"_s);
    QStringList lines = text.split(end);
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

QStringList readLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw OperationError(u"不能读取文件 "_s + path + u"（"_s + file.errorString() + u"）。"_s);
    }
    return linesOf(file.readAll());
}

bool isBroken(const QString& line) {
    return line.contains(QChar::ReplacementCharacter);
}

}  // namespace guanchao
