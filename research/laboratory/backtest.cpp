#include "research/laboratory/backtest.h"

#include <algorithm>

#include "research/laboratory/stock_day.h"

namespace guanchao {

namespace {

// What costs take of a buy and of a sale.
struct Costs {
    explicit Costs(const BacktestRule& rule)
        : buy((1 + rule.slippage / 100) * (1 + rule.commission / 100)),
          sale((1 - rule.slippage / 100) * (1 - (rule.commission + rule.stampTax) / 100)) {}

    double buy;
    double sale;
};

struct Position {
    const StockColumns* stock;
    double shares;  // by adjusted prices
    double price;   // adjusted, of the buy
    std::optional<Sale> sale;
    size_t at;        // the last day that it has traded
    qsizetype trade;  // its place in the list

    double worth() const { return shares * stock->fuquansp(at); }
    bool isSoldOn(DayNumber day) const { return sale && stock->day(sale->at) == day; }
};

class Portfolio {
public:
    Portfolio(const BacktestRule& rule, const MarketCalendar& calendar, BacktestResult& result)
        : rule_(rule), calendar_(calendar), result_(result), costs_(rule) {}

    void takeDay(size_t at, const std::vector<Signal>& signalsOfDay) {
        const DayNumber day = calendar_.day(at);
        sell(day, true);
        for (const Signal& signal : signalsOfDay) {
            buy(signal, day);
        }
        sell(day, false);
        close(day);
    }

    double capital() const { return capital_; }

    void end() {
        for (const Position& it : positions_) {
            note(it, it.at, it.stock->fuquansp(it.at), std::nullopt);
        }
        result_.sum.held = static_cast<int>(positions_.size());
    }

private:
    void sell(DayNumber day, bool atOpen) {
        std::erase_if(positions_, [&](const Position& it) {
            const bool sells = it.isSoldOn(day) && it.sale->atOpen == atOpen;
            if (sells) {
                money_ += it.shares * it.sale->price * costs_.sale;
                note(it, it.sale->at, it.sale->price, it.sale->reason);
            }
            return sells;
        });
    }

    void buy(const Signal& signal, DayNumber day) {
        const StockColumns& stock = *signal.stock;
        const size_t at = tradedAt(stock, day);
        BacktestSum& sum = result_.sum;
        if (holds(stock)) {
            ++sum.heldAlready;
        } else if (at == stock.size()) {
            ++sum.halted;
        } else if (isClosedToBuyers(stock, signal.dm, at)) {
            ++sum.atLimit;
        } else if (positions_.size() >= static_cast<size_t>(rule_.positions) || money_ <= 0) {
            ++sum.withoutPlace;
        } else if (const auto last = lastDayOf(signal); last && *last <= day) {
            ++sum.tooLate;
        } else {
            take(signal, at, last);
        }
    }

    bool holds(const StockColumns& stock) const {
        return std::ranges::find(positions_, &stock, &Position::stock) != positions_.end();
    }

    // None by the rule's own days, nor while the calendar doesn't reach it.
    std::optional<DayNumber> lastDayOf(const Signal& signal) const {
        if (signal.until == 0) {
            return std::nullopt;
        }
        const size_t until = calendar_.firstFrom(signal.until);
        return until < calendar_.size() ? calendar_.day(until - 1) : signal.until;
    }

    void take(const Signal& signal, size_t at, std::optional<DayNumber> lastDay) {
        const StockColumns& stock = *signal.stock;
        const double amount = std::min(capital_ / rule_.positions, money_);
        const double price = stock.fuquankp(at);
        money_ -= amount;
        positions_.push_back({&stock, amount / (price * costs_.buy), price,
                              saleOf(stock, at, rule_, lastDay), at, result_.trades.size()});
        result_.trades.push_back({signal.dm,
                                  {},
                                  signal.theme,
                                  signal.day,
                                  stock.day(at),
                                  stock.kp(at) / 100,
                                  0,
                                  0,
                                  std::nullopt,
                                  0});
    }

    void note(const Position& position, size_t at, double price, std::optional<SaleReason> reason) {
        Trade& trade = result_.trades[position.trade];
        trade.sellDay = position.stock->day(at);
        trade.sellPrice = price / position.stock->fuquanyz(at) / 100;
        trade.reason = reason;
        trade.gain = (price * costs_.sale / (position.price * costs_.buy) - 1) * 100;
    }

    void close(DayNumber day) {
        capital_ = money_;
        for (Position& it : positions_) {
            const size_t at = tradedAt(*it.stock, day);
            it.at = at < it.stock->size() ? at : it.at;
            capital_ += it.worth();
        }
    }

    const BacktestRule& rule_;
    const MarketCalendar& calendar_;
    BacktestResult& result_;
    Costs costs_;
    std::vector<Position> positions_;
    double money_ = 1;
    double capital_ = 1;
};

void sumUp(BacktestResult& result) {
    BacktestSum& sum = result.sum;
    double gains = 0;
    for (const Trade& trade : result.trades) {
        if (trade.reason) {
            ++sum.trades;
            sum.wins += trade.gain > 0 ? 1 : 0;
            gains += trade.gain;
        }
    }
    sum.meanGain = sum.trades > 0 ? gains / sum.trades : 0;
    for (const BacktestDay& day : result.days) {
        sum.drawdown = std::min(sum.drawdown, day.drawdown);
    }
    if (!result.days.isEmpty()) {
        sum.gain = (result.days.last().capital - 1) * 100;
        sum.indexGain = (result.days.last().index - 1) * 100;
    }
}

}  // namespace

BacktestResult backtest(const BacktestRule& rule, const MarketCalendar& calendar,
                        const SignalDays& signalDays) {
    BacktestResult result;
    result.rule = rule;
    constexpr DayNumber year = 10000;
    const size_t first = calendar.firstFrom(static_cast<DayNumber>(rule.firstYear) * year);
    const size_t behind = calendar.firstFrom(static_cast<DayNumber>(rule.lastYear + 1) * year);
    Portfolio portfolio(rule, calendar, result);
    double highest = 1;
    for (size_t at = first; at < behind; ++at) {
        portfolio.takeDay(at, signalDays[at]);
        const double capital = portfolio.capital();
        highest = std::max(highest, capital);
        result.days.push_back({calendar.day(at), capital,
                               calendar.close(at) / calendar.close(first > 0 ? first - 1 : 0),
                               (capital / highest - 1) * 100});
    }
    portfolio.end();
    sumUp(result);
    return result;
}

BacktestResult backtest(const BacktestRule& rule, LaboratoryHistory& history,
                        const std::vector<ReportDate>& reports, const ResearchWork& work) {
    const SignalDays signalDays = rule.source == 0 ? themeSignals(rule, history, work)
                                                   : reportSignals(rule, history, reports, work);
    return backtest(rule, history.calendar(), signalDays);
}

}  // namespace guanchao
