#include "exchange/text_file.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>

#include "base/activity.h"
#include "formats/gbk.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isAscii(const QByteArray& bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

QString textOf(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(bytes);
    // A byte order mark settles it: then a broken byte spoils its own line only.
    if (bytes.startsWith("\xEF\xBB\xBF") || (!utf8.hasError() && !isAscii(bytes))) {
        return text;
    }
    // Half a character at the very end only shows when something comes behind it.
    return textFromGbk(bytes + '\n').chopped(1);
}

}  // namespace

QStringList linesOf(const QByteArray& bytes) {
    QString text = textOf(bytes);
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
