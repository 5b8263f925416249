// The text of a small INI file as the system's profile functions read it: sections in brackets,
// names without regard to case, a value taken to the end of its line less a pair of quotes. What is
// changed leaves all other lines as they are, comments and unknown entries among them.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace guanchao {

class IniText {
public:
    // In the encoding in which its user has written it.
    explicit IniText(const QByteArray& bytes = {});

    // The trimmed value, or nothing if the section or the key isn't there.
    std::optional<QString> value(const QString& section, const QString& key) const;

    bool hasSection(const QString& section) const { return sectionStart(section) >= 0; }

    // A section that isn't there comes to the end.
    void setValue(const QString& section, const QString& key, const QString& value);
    void removeKey(const QString& section, const QString& key);

    // The two sections, which are there, with their entries take each other's names.
    void swapNames(const QString& section, const QString& other);

    // In UTF-8.
    QByteArray bytes() const;

private:
    qsizetype sectionStart(const QString& section) const;
    qsizetype keyLine(qsizetype start, const QString& key) const;

    QStringList lines_;
};

}  // namespace guanchao
