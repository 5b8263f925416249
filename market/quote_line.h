// One line of the quote service, cut by position, with the change and the gain computed here.
#pragma once

#include <QString>
#include <optional>

namespace guanchao {

// The texts are the service's own, each of them one number; zhangjine (yuan) and zhangfu (percent)
// are computed.
struct QuoteLine {
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

// Reads one piece of a reply. Nothing for a piece without a quote: the line feed at the end, a code
// that the service doesn't know. Raises OperationError for a piece that breaks off, for a
// field that is no number and for a previous close of 0 under a last price.
std::optional<QuoteLine> readQuoteLine(QStringView piece);

// The statements that write a line, at the moment `now` as time text.
QString updateCodeTable(const QuoteLine& line, const QString& now);
QString updatePollList(const QuoteLine& line, const QString& now);

}  // namespace guanchao
