// The search conditions of 题材选股: the one of the last search and those that the user has named,
// in 题材选股.ini of the application folder, and those that the program brings along.
#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace guanchao {

struct NamedCondition {
    QString name;
    QString text;

    bool operator==(const NamedCondition&) const = default;
};

// The rules of the window itself, mended where a line's end stands inside a word.
const QList<NamedCondition>& offeredConditions();

class KeptConditions {
public:
    explicit KeptConditions(QString iniPath) : iniPath_(std::move(iniPath)) {}

    std::optional<QString> last() const;
    // What can't be kept raises OperationError.
    void keepLast(const QString& text);

    // By their names, in their order.
    QList<NamedCondition> named() const;
    // A name that is there takes the new text.
    void keep(const NamedCondition& condition);
    void remove(const QString& name);

private:
    void write(const QString& key, const QString& text);

    QString iniPath_;
};

}  // namespace guanchao
