// What the main program has ordered: the one row of settings in the heat store.
#pragma once

#include <QDate>
#include <QString>

#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

struct RunOrder {
    QDate day;                 // the day that the rows are written for
    int customDays = 0;        // 0: no custom period
    double guanzhudu = 0;      // themes and companies of attention above this
    double shopguanzhudu = 0;  // commodities of attention above this
    QString yinqingurl;        // the search page pattern
    bool windowWanted = false;
};

// Without a usable day the clock's. Raises StoreError.
RunOrder readRunOrder(const StoreFile& heat, const Clock& clock);

// False once the main program has taken its order back. Raises StoreError.
bool isRunWanted(const StoreFile& heat);

}  // namespace guanchao
