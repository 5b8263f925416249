#include "research/laboratory/rule_fields.h"

#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

void fitToField(QDoubleSpinBox& box, const RuleField& field) {
    box.setDecimals(field.decimals);
    box.setRange(field.least, field.most);
    box.setSuffix(field.unit);
}

RuleFields::RuleFields(QWidget* parent) : QWidget(parent) {
    auto* groups = new QVBoxLayout(this);
    groups->setContentsMargins(0, 0, 4, 0);
    QFormLayout* rows = nullptr;
    QString group;
    for (const RuleField& field : ruleFields()) {
        if (field.group != group) {
            group = field.group;
            auto* box = new QGroupBox(group, this);
            rows = new QFormLayout(box);
            rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
            groups->addWidget(box);
        }
        QWidget* box = boxOf(field);
        rows->addRow(field.words, box);
        boxes_ << box;
    }
    groups->addStretch();
    connect(this, &RuleFields::changed, this, &RuleFields::enableFields);
    show(BacktestRule());
}

void RuleFields::enableFields() {
    const bool byThemes = rule().source == 0;
    for (qsizetype at = 0; at < boxes_.size(); ++at) {
        boxes_[at]->setEnabled(byThemes || !ruleFields()[at].ofThemesOnly);
    }
}

QWidget* RuleFields::boxOf(const RuleField& field) {
    QWidget* box = nullptr;
    if (field.choices.isEmpty()) {
        auto* number = new QDoubleSpinBox(this);
        fitToField(*number, field);
        connect(number, &QDoubleSpinBox::valueChanged, this, &RuleFields::changed);
        box = number;
    } else {
        auto* choice = new QComboBox(this);
        choice->addItems(field.choices);
        connect(choice, &QComboBox::currentIndexChanged, this, &RuleFields::changed);
        box = choice;
    }
    box->setObjectName(field.words);
    box->setAccessibleName(field.words);
    box->setToolTip(field.tip);
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    return box;
}

bool RuleFields::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

BacktestRule RuleFields::rule() const {
    BacktestRule rule;
    for (qsizetype at = 0; at < boxes_.size(); ++at) {
        const auto* choice = qobject_cast<const QComboBox*>(boxes_[at]);
        rule.*ruleFields()[at].value =
            choice ? choice->currentIndex()
                   : qobject_cast<const QDoubleSpinBox*>(boxes_[at])->value();
    }
    return rule;
}

void RuleFields::show(const BacktestRule& rule) {
    const QSignalBlocker blocker(this);
    for (qsizetype at = 0; at < boxes_.size(); ++at) {
        const double value = rule.*ruleFields()[at].value;
        if (auto* choice = qobject_cast<QComboBox*>(boxes_[at])) {
            choice->setCurrentIndex(static_cast<int>(value));
        } else {
            qobject_cast<QDoubleSpinBox*>(boxes_[at])->setValue(value);
        }
    }
    enableFields();
}

}  // namespace guanchao
