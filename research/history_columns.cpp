#include "research/history_columns.h"

#include <QScopeGuard>
#include <future>

#include "research/stock_reading.h"

namespace guanchao {

void HistoryColumns::take(const StoreFile& firstHistory, const StoreFile& secondHistory) {
    const FileStamp first = stampOf(firstHistory);
    if (first != first_) {
        themeDays_.reset();
        market_.reset();
        stocksAreRead_ = false;
        first_ = first;
    }
    const FileStamp second = stampOf(secondHistory);
    if (second != second_) {
        stocks_.clear();
        stocksAreRead_ = false;
        second_ = second;
    }
}

void HistoryColumns::readStocks(const StoreFile& secondHistory, const Memberships& memberships,
                                const Meanwhile& meanwhile) {
    if (stocksAreRead_) {
        return;
    }
    const auto nothing = [] {};
    StockReading stocks(secondHistory, memberships, stocks_);
    readBeside(stocks, nothing, meanwhile);
}

void HistoryColumns::readAll(const StoreFile& firstHistory, const StoreFile& secondHistory,
                             const Meanwhile& meanwhile) {
    if (market_ && stocksAreRead_) {
        return;
    }
    Connection days = firstHistory.open();
    StockReading stocks(secondHistory, Memberships(days), stocks_);
    const auto readMarket = [&] {
        if (!market_) {
            market_ = std::make_unique<MarketColumns>(days, meanwhile);
        }
    };
    readBeside(stocks, readMarket, meanwhile);
}

// Another thread reads stocks from the beginning, this one once its own work is done.
void HistoryColumns::readBeside(StockReading& stocks, const std::function<void()>& ownWork,
                                const Meanwhile& meanwhile) {
    const std::future<void> beside =
        std::async(std::launch::async, [&stocks] { stocks.readOn([](int, int) {}); });
    const auto stop = qScopeGuard([&stocks] { stocks.stop(); });
    ownWork();
    stocks.readOn(meanwhile);
    beside.wait();
    stocks.moveInto(stocks_);
    stocksAreRead_ = true;
}

const ThemeDays& HistoryColumns::themeDays(const Meanwhile& meanwhile) {
    if (!themeDays_) {
        themeDays_.emplace(*market_, meanwhile);
    }
    return *themeDays_;
}

size_t HistoryColumns::bytes() const {
    size_t sum = market_ ? market_->bytes() : 0;
    for (const auto& [dm, stock] : stocks_) {
        sum += stock.bytes();
    }
    return sum;
}

}  // namespace guanchao
