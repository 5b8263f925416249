// The rules that the user has named, and the one that was run last, in 回测.ini of the application
// folder: a group for each, an entry for each field. A field that isn't there has its usual value.
#pragma once

#include "research/laboratory/backtest_rule.h"

namespace guanchao {

class RuleStore {
public:
    explicit RuleStore(const QString& applicationFolder);

    // In the order of their characters.
    QStringList names() const;
    BacktestRule rule(const QString& name) const;

    BacktestRule last() const;

    // In place of one of that name. All three raise OperationError if the file can't be written.
    void keep(const QString& name, const BacktestRule& rule);
    void remove(const QString& name);
    void keepLast(const BacktestRule& rule);

private:
    BacktestRule read(const QString& group) const;
    void write(const QString& group, const BacktestRule& rule);

    QString path_;
};

}  // namespace guanchao
