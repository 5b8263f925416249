// The fields of a back-test's rule, each by its name. A turn of the wheel changes none of them.
#pragma once

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QWidget>

#include "research/laboratory/backtest_rule.h"

namespace guanchao {

// A box for the numbers of a field; a choice is one too.
void fitToField(QDoubleSpinBox& box, const RuleField& field);

class RuleFields : public QWidget {
    Q_OBJECT

public:
    explicit RuleFields(QWidget* parent = nullptr);

    BacktestRule rule() const;
    void show(const BacktestRule& rule);

signals:
    // By the user.
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* boxOf(const RuleField& field);
    void enableFields();

    QList<QWidget*> boxes_;  // in the order of the fields
};

}  // namespace guanchao
