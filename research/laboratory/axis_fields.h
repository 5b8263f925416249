// One direction of a sweep: a field of the rule, and its values from, to, by steps of.
#pragma once

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QWidget>
#include <optional>

#include "research/laboratory/sweep.h"

namespace guanchao {

class AxisFields : public QWidget {
    Q_OBJECT

public:
    explicit AxisFields(QWidget* parent = nullptr);

    // `name` tells it from others: 横向. One that is optional begins with no field.
    void setUp(const QString& name, const QString& field, bool isOptional);

    // Nothing if no field is chosen.
    std::optional<SweepAxis> axis() const;

private:
    QDoubleSpinBox* addNumber(const QString& words);
    void showField();

    QComboBox* field_;
    QDoubleSpinBox* from_;
    QDoubleSpinBox* to_;
    QDoubleSpinBox* step_;
};

}  // namespace guanchao
