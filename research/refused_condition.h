// Where a search condition is wrong, from the words with which the store library refuses it.
#pragma once

#include <QString>
#include <optional>

namespace guanchao {

struct TextPart {
    qsizetype first;
    qsizetype length;

    bool operator==(const TextPart&) const = default;
};

// The part of the condition that the reason names; nothing if it names none that stands there.
std::optional<TextPart> refusedPart(const QString& condition, const QString& reason);

// What a condition may name: the columns of the list, and those of the two tables behind it.
const QStringList& conditionColumns();

}  // namespace guanchao
