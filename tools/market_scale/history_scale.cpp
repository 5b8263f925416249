#include "tools/market_scale/history_scale.h"

#include <QDate>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "research/history_store.h"
#include "services/stock_code.h"
#include "services/trading_day.h"
#include "tools/market_scale/market_scale.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate firstDay(2017, 4, 7);
// About a dividend a year.
constexpr int daysOfFactor = 250;

class History {
public:
    explicit History(const HistoryScale& scale) : scale_(scale) {
        for (QDate day = firstDay; days_.size() < scale.days; day = day.addDays(1)) {
            if (isWeekday(day)) {
                days_ << day;
            }
        }
        for (int at = 0; at < scale.stocks; ++at) {
            codes_ << marketCode(at);
        }
        pickMembers();
        pickHotDays();
    }

    void eachDay(const TakeDay& take) {
        eachDay(take, leadingIndex, std::nullopt);
        for (int stock = 0; stock < scale_.stocks; ++stock) {
            eachDay(take, codes_[stock], stock);
        }
    }

    QList<ThemeMember> members() const {
        QList<ThemeMember> members;
        for (const auto& [theme, stock] : members_) {
            members << ThemeMember{marketTheme(theme), codes_[stock]};
        }
        return members;
    }

private:
    int pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

    void pickMembers() {
        while (members_.size() < static_cast<size_t>(scale_.memberships)) {
            members_.insert({pick(scale_.themes), pick(scale_.stocks)});
        }
    }

    // Every other day four in ten stocks of a theme reach their limit.
    void pickHotDays() {
        std::vector<QList<int>> ofTheme(static_cast<size_t>(scale_.themes));
        for (const auto& [theme, stock] : members_) {
            ofTheme[static_cast<size_t>(theme)] << stock;
        }
        for (int day = 0; day < scale_.days; day += 2) {
            for (const int stock : ofTheme[static_cast<size_t>(pick(scale_.themes))]) {
                if (pick(10) < 4) {
                    atLimit_.insert({day, stock});
                }
            }
        }
    }

    // The rows of a stock, or of the index.
    void eachDay(const TakeDay& take, const QString& dm, std::optional<int> stock) {
        int close = 500 + pick(5000);
        for (int day = 0; day < scale_.days; ++day) {
            const int former = close;
            const bool limit = stock && atLimit_.contains({day, *stock});
            const int open = former + former * (pick(600) - 300) / 10000;
            close = limit ? static_cast<int>(std::lround(former * 1.1))
                          : former + former * (pick(800) - 400) / 10000;
            const int high = std::max(open, close) + (limit ? 0 : pick(20));
            const int formerFactors = day / daysOfFactor;
            take({.dm = dm,
                  .day = days_[day],
                  .open = open,
                  .high = high,
                  .low = limit && pick(3) == 0 ? high : std::min(open, close) - pick(20),
                  .close = close,
                  .formerClose = former,
                  .volume = 10000.0 + pick(90000000),
                  .turnover = 1000000.0 + pick(900000000),
                  .factor = 1 + formerFactors * 0.125});
        }
    }

    HistoryScale scale_;
    QList<QDate> days_;
    QStringList codes_;
    std::set<std::pair<int, int>> members_;  // theme and stock
    std::set<std::pair<int, int>> atLimit_;  // day and stock
    std::mt19937 random_{20170407};
};

}  // namespace

void makeHistoryScale(const StoreFile& first, const StoreFile& second, const HistoryScale& scale,
                      bool indexed) {
    History history(scale);
    readIntoHistory(
        {first.path, second.path}, [&](const TakeDay& take) { history.eachDay(take); },
        history.members());
    if (!indexed) {
        dropIndexes(first.path);
        dropIndexes(second.path);
    }
}

}  // namespace guanchao
