// From the days that the services tell to the rows of the history databases.
#pragma once

#include <QList>

#include "research/day_quotes.h"
#include "research/day_row.h"
#include "research/history_state.h"
#include "services/bar_kind.h"
#include "services/factors.h"

namespace guanchao {

// The rows of the gap, from days that begin before it. Their former closes are left to the store,
// which has the days between; only that of the first one, where nothing is stored before it, is
// told: lowered by the ratio of the factors on an ex-dividend day, so that close / former close is
// the real gain. Factors go on from those that are stored about the gap, whatever they are based
// on. A day without prices has no row, nor has the very first one, whose gain nobody knows.
QList<DayRow> gapRows(const CodeGap& gap, const QList<DayBar>& bars, const FactorList& factors);

// The row of a day's close, whose former close is the exchange's own.
DayRow closeRow(const DayQuote& quote, double factor);

// As the databases keep a price.
qint64 hundredths(double price);

}  // namespace guanchao
