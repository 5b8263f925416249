// A search condition that the store refuses: where it is wrong and why, from the words with which
// the store library refuses it.
#pragma once

#include <QString>

#include "store/store_error.h"

namespace guanchao {

struct TextPart {
    qsizetype first;
    qsizetype length;

    bool operator==(const TextPart&) const = default;
};

struct Refusal {
    // Of the condition without carriage returns; all of it where no part of it is to blame.
    TextPart part;
    QString words;  // what is wrong with it, in Chinese
};

Refusal refusalOf(QString condition, const QString& reason);

// Its reason are the words of the refusal.
class RefusedCondition : public StoreError {
public:
    RefusedCondition(const QString& condition, const StoreError& refused);

    const TextPart& part() const { return part_; }

private:
    RefusedCondition(const Refusal& refusal, const StoreError& refused);

    TextPart part_;
};

// What a condition may name: the columns of the list, and those of the two tables behind it.
const QStringList& conditionColumns();

}  // namespace guanchao
