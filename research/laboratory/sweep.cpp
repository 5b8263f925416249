#include "research/laboratory/sweep.h"

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QList<double> SweepAxis::values() const {
    QList<double> values;
    for (int at = 0; step > 0 && at <= mostSweepCells; ++at) {
        const double value = roundTo(from + at * step, field->decimals);
        if (value > to) {
            break;
        }
        const bool isNew = values.isEmpty() || value != values.last();
        if (isNew && value >= field->least && value <= field->most) {
            values << value;
        }
    }
    return values;
}

SweepResult sweep(const BacktestRule& rule, const SweepAxis& across,
                  const std::optional<SweepAxis>& down, LaboratoryHistory& history,
                  const std::vector<ReportDate>& reports, ResearchWork& work) {
    if (down && down->field == across.field) {
        throw OperationError(u"横向和纵向选了同一项，请选不同的。"_s);
    }
    SweepResult result;
    result.across = across.field;
    result.down = down ? down->field : nullptr;
    result.acrossValues = across.values();
    result.downValues = down ? down->values() : QList<double>{0};
    const qsizetype cells = result.acrossValues.size() * result.downValues.size();
    if (cells == 0) {
        throw OperationError(u"这样没有可算的值：“到”应不小于“从”，步长应大于 0。"_s);
    }
    if (cells > mostSweepCells) {
        throw OperationError(u"一次最多算 %1 条规则，请把步长取大一些。"_s.arg(mostSweepCells));
    }
    work.begin(static_cast<int>(cells));
    for (const double y : std::as_const(result.downValues)) {
        for (const double x : std::as_const(result.acrossValues)) {
            BacktestRule one = rule;
            one.*across.field->value = x;
            if (down) {
                one.*down->field->value = y;
            }
            result.sums << backtest(one, history, reports, work).sum;
            work.oneDone();
            work.endIfStopped();
        }
    }
    return result;
}

}  // namespace guanchao
