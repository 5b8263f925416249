#include "store/value.h"

#include "base/activity.h"
#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

double Value::toNumber() const {
    if (isNull()) {
        throw OperationError(u"缺少一个数值（空值）"_s);
    }
    if (const auto* integer = std::get_if<qint64>(&value_)) {
        return static_cast<double>(*integer);
    }
    if (const auto* real = std::get_if<double>(&value_)) {
        return *real;
    }
    return numericPrefix(std::get<QString>(value_));
}

QString Value::toText() const {
    if (const auto* text = std::get_if<QString>(&value_)) {
        return *text;
    }
    if (const auto* integer = std::get_if<qint64>(&value_)) {
        return QString::number(*integer);
    }
    return isReal() ? numberText(std::get<double>(value_)) : QString();
}

}  // namespace guanchao
