#include "research/laboratory/axis_fields.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <cmath>

#include "research/laboratory/rule_fields.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int usualValues = 6;

double usualStep(const RuleField& field) {
    return field.decimals < 2 ? 1 : std::pow(10, 1 - field.decimals);
}

}  // namespace

AxisFields::AxisFields(QWidget* parent) : QWidget(parent), field_(new QComboBox(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(field_, 1);
    from_ = addNumber(u"从"_s);
    to_ = addNumber(u"到"_s);
    step_ = addNumber(u"步长"_s);
    connect(field_, &QComboBox::currentIndexChanged, this, &AxisFields::showField);
}

QDoubleSpinBox* AxisFields::addNumber(const QString& words) {
    auto* box = new QDoubleSpinBox(this);
    layout()->addWidget(new QLabel(words, this));
    layout()->addWidget(box);
    return box;
}

void AxisFields::setUp(const QString& name, const QString& field, bool isOptional) {
    field_->setAccessibleName(name);
    field_->setObjectName(name);
    auto* row = qobject_cast<QHBoxLayout*>(layout());
    row->insertWidget(0, new QLabel(name + u'：', this));
    const std::pair<QDoubleSpinBox*, QString> numbers[] = {
        {from_, u"从"_s}, {to_, u"到"_s}, {step_, u"步长"_s}};
    for (const auto& [box, words] : numbers) {
        box->setAccessibleName(name + words);
        box->setObjectName(name + words);
    }
    if (isOptional) {
        field_->addItem(u"不扫"_s);
    }
    for (const RuleField& it : ruleFields()) {
        field_->addItem(it.words);
    }
    field_->setCurrentText(field);
    showField();
}

std::optional<SweepAxis> AxisFields::axis() const {
    const RuleField* field = ruleField(field_->currentText());
    if (!field) {
        return std::nullopt;
    }
    return SweepAxis{field, from_->value(), to_->value(), step_->value()};
}

// Around the usual value of the field.
void AxisFields::showField() {
    const RuleField* field = ruleField(field_->currentText());
    for (QDoubleSpinBox* box : {from_, to_, step_}) {
        box->setEnabled(field);
        if (field) {
            fitToField(*box, *field);
        }
    }
    if (!field) {
        return;
    }
    const double step = usualStep(*field);
    const BacktestRule usual;
    const double middle = usual.*field->value;
    constexpr int below = usualValues / 2 - 1;
    const double from = std::max(field->least, middle - below * step);
    step_->setRange(step / 10, field->most - field->least);
    from_->setValue(from);
    to_->setValue(from + (usualValues - 1) * step);
    step_->setValue(step);
}

}  // namespace guanchao
