// 条件 of 题材选股: the menu that puts a kept or offered condition, or the name of a column, into
// the box of the condition, and keeps the box's text under a name.
#pragma once

#include <QMenu>
#include <QPlainTextEdit>

#include "base/runs.h"
#include "platform/dialogs.h"
#include "research/kept_conditions.h"

namespace guanchao {

class ConditionMenu : public QMenu {
    Q_OBJECT

public:
    ConditionMenu(QPlainTextEdit& box, KeptConditions& kept, Dialogs& dialogs, Failures& failures,
                  QWidget* parent);

private:
    void fill();
    void addConditions(const QList<NamedCondition>& conditions);
    bool isTaken(const NamedCondition& condition) const;
    QCoro::Task<> keep(std::stop_token stop);
    void putColumn(const QString& name);

    QPlainTextEdit& box_;
    QString stored_;  // as the window brought it along
    KeptConditions& kept_;
    Dialogs& dialogs_;
    Runs runs_;
};

}  // namespace guanchao
