#include "research/laboratory/sale.h"

#include <limits>

#include "research/laboratory/stock_day.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double never = std::numeric_limits<double>::infinity();

class Holding {
public:
    Holding(const StockColumns& stock, size_t bought, const BacktestRule& rule,
            std::optional<DayNumber> lastDay)
        : stock_(stock), rule_(rule), lastDay_(lastDay), former_(bought) {
        const double price = stock.fuquankp(bought);
        stop_ = rule.stopLoss > 0 ? price * (1 - rule.stopLoss / 100) : -never;
        profit_ = rule.takeProfit > 0 ? price * (1 + rule.takeProfit / 100) : never;
        const size_t before = formerTraded(stock, bought);
        if (before < stock.size()) {
            decideByClose(bought, stock.fuquansp(before));
        }
    }

    // A day of the stock on which it trades.
    std::optional<Sale> take(size_t at) {
        ++days_;
        std::optional<Sale> sale;
        if (isClosedToSellers(stock_, at)) {
            decideByLockedDay(at);
        } else if (!decided_ && isPastLastDay(at)) {
            sale = Sale{at, stock_.fuquankp(at), true, SaleReason::report};
        } else {
            sale = saleAtOpen(at);
            sale = sale ? sale : saleWithin(at);
        }
        decideByClose(at, stock_.fuquansp(former_));
        former_ = at;
        return sale;
    }

private:
    bool isLastDay(size_t at) const {
        return lastDay_ ? stock_.day(at) >= *lastDay_ : days_ >= rule_.holdDays;
    }
    bool isPastLastDay(size_t at) const { return lastDay_ && stock_.day(at) > *lastDay_; }
    SaleReason reasonOfLastDay() const { return lastDay_ ? SaleReason::report : SaleReason::days; }

    std::optional<Sale> saleAtOpen(size_t at) const {
        const double open = stock_.fuquankp(at);
        if (decided_) {
            return Sale{at, open, true, *decided_};
        }
        if (open <= stop_) {
            return Sale{at, open, true, SaleReason::stopLoss};
        }
        if (open >= profit_) {
            return Sale{at, open, true, SaleReason::takeProfit};
        }
        return std::nullopt;
    }

    std::optional<Sale> saleWithin(size_t at) const {
        const double factor = stock_.fuquanyz(at);
        if (factor * stock_.zd(at) <= stop_) {
            return Sale{at, stop_, false, SaleReason::stopLoss};
        }
        if (factor * stock_.zg(at) >= profit_) {
            return Sale{at, profit_, false, SaleReason::takeProfit};
        }
        if (isLastDay(at)) {
            return Sale{at, stock_.fuquansp(at), false, reasonOfLastDay()};
        }
        return std::nullopt;
    }

    void decide(SaleReason reason) { decided_ = decided_ ? decided_ : reason; }

    void decideByLockedDay(size_t at) {
        if (stock_.fuquansp(at) <= stop_) {
            decide(SaleReason::stopLoss);
        } else if (isLastDay(at)) {
            decide(reasonOfLastDay());
        }
    }

    void decideByClose(size_t at, double former) {
        if (rule_.firstFall > 0 && stock_.fuquansp(at) < former) {
            decide(SaleReason::firstFall);
        }
    }

    const StockColumns& stock_;
    const BacktestRule& rule_;
    std::optional<DayNumber> lastDay_;
    double stop_;
    double profit_;
    size_t former_;  // the day before
    int days_ = 0;
    std::optional<SaleReason> decided_;
};

}  // namespace

QString wordsOf(SaleReason reason) {
    switch (reason) {
        case SaleReason::stopLoss:
            return u"止损"_s;
        case SaleReason::takeProfit:
            return u"止盈"_s;
        case SaleReason::firstFall:
            return u"首次下跌"_s;
        case SaleReason::report:
            return u"业绩预约日前"_s;
        case SaleReason::days:
            break;
    }
    return u"持有到期"_s;
}

std::optional<Sale> saleOf(const StockColumns& stock, size_t bought, const BacktestRule& rule,
                           std::optional<DayNumber> lastDay) {
    Holding holding(stock, bought, rule, lastDay);
    for (size_t at = bought + 1; at < stock.size(); ++at) {
        const bool isDayAnew = stock.day(at) == stock.day(at - 1);
        const std::optional<Sale> sale =
            isDayAnew || !isTraded(stock, at) ? std::nullopt : holding.take(at);
        if (sale) {
            return sale;
        }
    }
    return std::nullopt;
}

}  // namespace guanchao
