#include "themes/day_review.h"

#include <QSet>
#include <algorithm>
#include <limits>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostOfGroup = 10;

// A day with the rank of each of its themes.
class RankedDay {
public:
    explicit RankedDay(const BookDay& day) {
        for (const BookedTheme& it : day.themes) {
            byName_.insert(it.theme, it);
            if (it.members >= leastRankedMembers) {
                order_ << it.theme;
            }
        }
        std::ranges::stable_sort(order_, std::greater(),
                                 [this](const QString& it) { return byName_[it].gain; });
        for (const QString& it : order_) {
            ranks_.insert(it, static_cast<int>(ranks_.size()) + 1);
        }
    }

    const QStringList& order() const { return order_; }
    int rank(const QString& theme) const { return ranks_.value(theme); }
    std::optional<double> gain(const QString& theme) const {
        const auto found = byName_.constFind(theme);
        return found == byName_.cend() ? std::nullopt : std::optional(found->gain);
    }
    BookedTheme day(const QString& theme) const { return byName_.value(theme); }
    bool isInFront(const QString& theme) const {
        const int at = rank(theme);
        return at > 0 && at <= frontOf(static_cast<int>(order_.size()));
    }

private:
    QHash<QString, BookedTheme> byName_;
    QStringList order_;
    QHash<QString, int> ranks_;
};

class Review {
public:
    Review(const BookDay& day, const QList<BookDay>& before) : today_(day) {
        days_ << today_;
        for (const BookDay& it : before.first(std::min<qsizetype>(before.size(), daysOfLine - 1))) {
            days_ << RankedDay(it);
        }
        for (const BookedTheme& it : day.themes) {
            names_ << it.theme;
        }
    }

    QList<ReviewRow> rows() {
        const QStringList& order = today_.order();
        const qsizetype half = order.size() / 2;
        addAll(Standing::strongest,
               order.first(std::min<qsizetype>(mostOfGroup, order.size() - half)));
        QStringList weakest = order.last(std::min<qsizetype>(mostOfGroup, half));
        std::ranges::reverse(weakest);
        addAll(Standing::weakest, weakest);
        if (days_.size() > 1) {
            addMoved(Standing::fresh, today_.order(), today_, days_[1]);
            addMoved(Standing::fading, days_[1].order(), days_[1], today_);
        }
        QStringList others = names_;
        others.removeIf([this](const QString& it) { return shown_.contains(it); });
        std::ranges::stable_sort(others, std::greater(),
                                 [this](const QString& it) { return *today_.gain(it); });
        addAll(Standing::other, others);
        return rows_;
    }

private:
    void addMoved(Standing standing, const QStringList& order, const RankedDay& in,
                  const RankedDay& out) {
        QStringList moved = order;
        moved.removeIf([&](const QString& it) {
            return !in.isInFront(it) || out.isInFront(it) || !today_.gain(it);
        });
        addAll(standing, moved);
    }

    void addAll(Standing standing, const QStringList& themes) {
        for (const QString& theme : themes) {
            ReviewRow row{.standing = standing,
                          .day = today_.day(theme),
                          .rank = today_.rank(theme),
                          .gainBefore = {},
                          .rankBefore = 0,
                          .line = {}};
            if (days_.size() > 1) {
                row.gainBefore = days_[1].gain(theme);
                row.rankBefore = days_[1].rank(theme);
            }
            for (const RankedDay& it : days_) {
                row.line.prepend(it.gain(theme).value_or(std::numeric_limits<double>::quiet_NaN()));
            }
            rows_ << row;
            shown_.insert(theme);
        }
    }

    RankedDay today_;
    QList<RankedDay> days_;  // newest first
    QStringList names_;
    QSet<QString> shown_;
    QList<ReviewRow> rows_;
};

}  // namespace

QString standingWords(Standing standing) {
    switch (standing) {
        case Standing::strongest:
            return u"最强"_s;
        case Standing::weakest:
            return u"最弱"_s;
        case Standing::fresh:
            return u"新进前列"_s;
        case Standing::fading:
            return u"退出前列"_s;
        case Standing::other:
            break;
    }
    return u"其他"_s;
}

int frontOf(int ranked) {
    constexpr int most = 20;
    constexpr int share = 5;
    return std::min(most, (ranked + share - 1) / share);
}

QList<ReviewRow> reviewOf(const BookDay& day, const QList<BookDay>& before) {
    return Review(day, before).rows();
}

}  // namespace guanchao
