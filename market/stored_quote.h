// What the stores keep of a stock's quote, and the statements that write it.
#pragma once

#include <QString>

#include "services/quote_reply.h"

namespace guanchao {

// The texts are the service's own, each of them one number; zhangjine (yuan) and zhangfu (percent)
// are computed.
struct StoredQuote {
    QString dm;  // upper case
    QString kp;
    QString sp;
    QString zg;
    QString zd;
    QString totalsl;
    QString totaljine;
    double zhangjine = 0;
    double zhangfu = 0;
};

// True for a code that the service names without a value.
bool isUnknownCode(const QuoteRow& row);

// False for such a code and for the row behind the last line. A line that breaks off has one, which
// can't be read.
bool hasQuote(const QuoteRow& row);

// Raises OperationError for a row that breaks off, for a field that is no number and for a previous
// close of 0 under a last price.
StoredQuote storedQuote(const QuoteRow& row);

// At the moment `now` as time text.
QString updateCodeTable(const StoredQuote& quote, const QString& now);
QString updatePollList(const StoredQuote& quote, const QString& now);

}  // namespace guanchao
