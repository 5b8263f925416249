// The quote feed: one request for up to 99 codes, written into the code table or the poll list.
// Prices in yuan, gains in percent, volume and turnover as the service gives them.
#pragma once

#include <QString>
#include <QStringList>

#include "base/activity.h"
#include "base/event_pump.h"
#include "base/globals.h"
#include "market/quote_reply.h"
#include "platform/clock.h"
#include "platform/http.h"
#include "store/recordset.h"
#include "store/stores.h"

namespace guanchao {

inline constexpr int codesPerRequest = 99;

// Codes for one request, in lower case and each followed by a comma.
struct CodeBatch {
    QString list;
    int count = 0;
};

// The codes in the field dm of the recordset; the last batch may be a smaller one.
QList<CodeBatch> codeBatches(Recordset& codes);

// Raised by the feed for lines that could not be read, once all others are written.
class RefusedLines : public OperationError {
public:
    explicit RefusedLines(const QStringList& reasons);
};

class QuoteFeed {
public:
    QuoteFeed(const Stores& stores, Globals& globals, const Clock& clock, Http& http,
              const Service& service, EventPump& pump);

    // 更新行情: asks for the lower-case codes of the list, each followed by a comma, and writes the
    // answers in one transaction: into dmb if tojiankong is below 1, else into jiankonghq. A failed
    // request and a reply for a single code write nothing and say nothing. Raises StoreError, which
    // leaves nothing of the batch, and RefusedLines.
    void gengxinhq(const QString& list, qint16 tojiankong);

private:
    void writeRows(Connection& connection, const QList<QuoteRow>& rows, qint16 tojiankong);

    const Stores& stores_;
    Globals& globals_;
    const Clock& clock_;
    Http& http_;
    Service service_;
    EventPump& pump_;
};

}  // namespace guanchao
