// A small INI file as the system's profile functions read it: sections in brackets, names without
// regard to case, a value taken to the end of its line less a pair of quotes. In the encoding in
// which its user has written it; what is written here is UTF-8.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace guanchao {

class IniFile {
public:
    // A file that is missing or can't be read gives no values.
    explicit IniFile(QString path);

    // The trimmed value, or nothing if the section or the key isn't there.
    std::optional<QString> value(const QString& section, const QString& key) const;

    bool hasSection(const QString& section) const { return sectionStart(section) >= 0; }

    // Writes the value and leaves all other entries; false if the file can't be written, or is
    // there and couldn't be read.
    bool setValue(const QString& section, const QString& key, const QString& value);

private:
    qsizetype sectionStart(const QString& section) const;
    qsizetype keyLine(qsizetype sectionLine, const QString& key) const;

    QString path_;
    QStringList lines_;
    bool unread_ = false;
};

}  // namespace guanchao
