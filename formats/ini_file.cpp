#include "formats/ini_file.h"

#include <QFile>
#include <utility>

#include "base/files.h"

namespace guanchao {

IniFile::IniFile(QString path) : path_(std::move(path)) {
    QFile file(path_);
    if (file.open(QIODevice::ReadOnly)) {
        text_ = IniText(file.readAll());
    } else {
        unread_ = file.exists();
    }
}

bool IniFile::setValue(const QString& section, const QString& key, const QString& value) {
    if (unread_) {
        return false;
    }
    text_.setValue(section, key, value);
    return tryToReplaceFile(path_, text_.bytes());
}

}  // namespace guanchao
