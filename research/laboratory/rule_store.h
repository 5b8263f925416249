// The rules that the user has named, in 回测.ini of the application folder: a group for each, an
// entry for each field. A field that isn't there has its usual value.
#pragma once

#include "research/laboratory/backtest_rule.h"

namespace guanchao {

class RuleStore {
public:
    explicit RuleStore(const QString& applicationFolder);

    // In the order of their characters.
    QStringList names() const;
    BacktestRule rule(const QString& name) const;

    // In place of one of that name. Both raise OperationError if the file can't be written.
    void keep(const QString& name, const BacktestRule& rule);
    void remove(const QString& name);

private:
    QString path_;
};

}  // namespace guanchao
