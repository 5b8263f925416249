// The three boxes of a date in a window, with their lists and their rule.
#pragma once

#include "base/date_trio.h"
#include "frame/entry_box.h"

namespace guanchao {

class DateBoxes : public QObject {
    Q_OBJECT

public:
    DateBoxes(EntryBox& year, EntryBox& month, EntryBox& day, QObject* parent);

    DateTexts texts() const;
    void setTexts(const DateTexts& texts);
    void setEnabled(bool on);

private:
    EntryBox& year_;
    EntryBox& month_;
    EntryBox& day_;
};

}  // namespace guanchao
