// Draws the items of a list by the beginnings of their texts: a name may be of any length.
#pragma once

#include <QStyledItemDelegate>

#include "base/values.h"

namespace guanchao {

class ShortTexts : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    QString displayText(const QVariant& value, const QLocale&) const override {
        return shortened(value.toString(), longestShownName);
    }
};

}  // namespace guanchao
