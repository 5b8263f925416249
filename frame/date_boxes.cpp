#include "frame/date_boxes.h"

namespace guanchao {

// The list of days is renewed as the month changes, so that it is right whenever it drops down.
DateBoxes::DateBoxes(EntryBox& year, EntryBox& month, EntryBox& day, QObject* parent)
    : QObject(parent), year_(year), month_(month), day_(day) {
    connect(&month_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        const QString shown = day_.currentText();
        day_.clear();
        day_.addItems(daysOfMonth(text));
        day_.setText(shown);
    });
    connect(&month_, &QComboBox::activated, this,
            [this] { day_.setText(dayAfterMonth(month_.currentText(), day_.currentText())); });
    year_.refill(listedYears());
    month_.refill(listedMonths());
}

DateTexts DateBoxes::texts() const {
    return {year_.currentText(), month_.currentText(), day_.currentText()};
}

void DateBoxes::setTexts(const DateTexts& texts) {
    year_.setText(texts.year);
    month_.setText(texts.month);
    day_.setText(texts.day);
}

void DateBoxes::setEnabled(bool on) {
    for (EntryBox* box : {&year_, &month_, &day_}) {
        box->setEnabled(on);
    }
}

}  // namespace guanchao
