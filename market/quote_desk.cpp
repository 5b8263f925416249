#include "market/quote_desk.h"

#include "market/readings.h"
#include "services/chart_picture.h"
#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QString noData(const QString& name) {
    return u"没有找到"_s + name + u"的数据!"_s;
}

QCoro::Task<QuoteRow> QuoteDesk::fetch(QString code, std::stop_token stop) {
    const QuotesReply reply = co_await source_.fetch(code, stop);
    if (reply.lines.isEmpty()) {
        throw NotHad{reply.lack, leadsToServices(reply.lack) ? reply.lack : noConnection};
    }
    co_return quoteRow(reply.lines);
}

QCoro::Task<> QuoteDesk::showChart(QuoteChart chart, QString path, std::stop_token stop) {
    const HttpReply reply = co_await http_.get(services_.chart, path, stop);
    if (reply.answered() && !isPicture(reply.body)) {
        http_.complain(services_.chart, notAPicture);
    }
    screen_.showChart(chart, reply.answered() ? std::optional(reply.body) : std::nullopt);
}

}  // namespace guanchao
