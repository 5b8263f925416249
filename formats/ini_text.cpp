#include "formats/ini_text.h"

#include <utility>

#include "formats/text_file.h"

namespace guanchao {

namespace {

bool isSection(const QString& line) {
    return line.trimmed().startsWith(u'[');
}

QString unquoted(const QString& value) {
    const bool quoted = value.size() > 1 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

bool sameName(const QString& left, const QString& right) {
    return left.trimmed().compare(right, Qt::CaseInsensitive) == 0;
}

}  // namespace

IniText::IniText(const QByteArray& bytes) : lines_(linesOf(readText(bytes).text)) {
    while (!lines_.isEmpty() && lines_.last().isEmpty()) {
        lines_.removeLast();
    }
}

std::optional<QString> IniText::value(const QString& section, const QString& key) const {
    const qsizetype start = sectionStart(section);
    const qsizetype line = start < 0 ? -1 : keyLine(start, key);
    if (line < 0) {
        return std::nullopt;
    }
    return unquoted(lines_[line].section(u'=', 1).trimmed());
}

void IniText::setValue(const QString& section, const QString& key, const QString& value) {
    qsizetype start = sectionStart(section);
    if (start < 0) {
        start = lines_.size();
        lines_ << u'[' + section + u']';
    }
    const qsizetype line = keyLine(start, key);
    const QString text = key + u'=' + value;
    if (line < 0) {
        lines_.insert(start + 1, text);
    } else {
        lines_[line] = text;
    }
}

void IniText::removeKey(const QString& section, const QString& key) {
    const qsizetype start = sectionStart(section);
    const qsizetype line = start < 0 ? -1 : keyLine(start, key);
    if (line >= 0) {
        lines_.removeAt(line);
    }
}

void IniText::swapNames(const QString& section, const QString& other) {
    std::swap(lines_[sectionStart(section)], lines_[sectionStart(other)]);
}

QByteArray IniText::bytes() const {
    return bytesOf(lines_.join(u'\n') + u'\n');
}

qsizetype IniText::sectionStart(const QString& section) const {
    for (qsizetype line = 0; line < lines_.size(); ++line) {
        const QString name = lines_[line].trimmed();
        if (isSection(name) && sameName(name.mid(1, name.indexOf(u']') - 1), section)) {
            return line;
        }
    }
    return -1;
}

qsizetype IniText::keyLine(qsizetype start, const QString& key) const {
    for (qsizetype line = start + 1; line < lines_.size() && !isSection(lines_[line]); ++line) {
        if (sameName(lines_[line].section(u'=', 0, 0), key)) {
            return line;
        }
    }
    return -1;
}

}  // namespace guanchao
