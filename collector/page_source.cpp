#include "collector/page_source.h"

namespace guanchao {

QCoro::Task<Page> WebPages::get(int way, QString request, std::stop_token stop) {
    const Service service = services_.at(way);
    const HttpReply reply = co_await http_.get(service, request, stop);
    co_return Page{reply.body, failureWords(reply)};
}

QCoro::Task<Page> QuotePages::get(int, QString request, std::stop_token stop) {
    const QuotesReply reply = co_await quotes_.fetch(request, stop);
    co_return Page{reply.lines.toUtf8(), reply.lack};
}

}  // namespace guanchao
