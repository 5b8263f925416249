// A small INI file on the disk: formats/ini_text tells how it is read. What is written here is
// UTF-8.
#pragma once

#include "formats/ini_text.h"

namespace guanchao {

class IniFile {
public:
    // A file that is missing or can't be read gives no values.
    explicit IniFile(QString path);

    const IniText& text() const { return text_; }
    std::optional<QString> value(const QString& section, const QString& key) const {
        return text_.value(section, key);
    }
    bool hasSection(const QString& section) const { return text_.hasSection(section); }

    // Writes the value and leaves all other entries; false if the file can't be written, or is
    // there and couldn't be read.
    bool setValue(const QString& section, const QString& key, const QString& value);

private:
    QString path_;
    IniText text_;
    bool unread_ = false;
};

}  // namespace guanchao
