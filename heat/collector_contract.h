// What the program and its companion, the collector caijiqi, agree on: the argument words, and the
// one row of the table canshu of the heat store. The windows write a setting at once, a launch
// orders a run, and the collector reads both. Failed statements raise StoreError.
#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

// The argument words, by what is to be collected.
inline const QString collectThemes = QStringLiteral("zhuti");
inline const QString collectCompanies = QStringLiteral("gongsi");
inline const QString collectCommodities = QStringLiteral("shop");
inline const QString collectCodes = QStringLiteral("gengxindmb");

// In place of a growth that has no base to compare with.
inline constexpr double noGrowth = 1000;

// The custom days where the typed ones are refused.
constexpr int defaultCustomDays = 7;

// The days of the custom period as typed; nothing if they are not within 2 to 1000.
std::optional<int> customDays(const QString& typed);

struct NewsSettings {
    bool customOn = false;
    QString days;
    QString searchTemplate;  // the search page, with tihuandm where the words go
};

struct CommoditySettings {
    QString attention;
    QString searchTemplate;
};

// Nothing if the store has no row.
std::optional<NewsSettings> readNewsSettings(const StoreFile& heat);
std::optional<CommoditySettings> readCommoditySettings(const StoreFile& heat);

void writeCustomDays(const StoreFile& heat, bool on, int days);

// Only what has more attention is collected; a text without a number is 0.
void writeNewsAttention(const StoreFile& heat, const QString& typed);
void writeCommodityAttention(const StoreFile& heat, const QString& typed);

// Orders a run whose rows are written for that day, in a window that shows.
void placeRunOrder(const StoreFile& heat, const QDate& day);
void withdrawRunOrder(const StoreFile& heat);

// What the collector is to do.
struct RunOrder {
    QDate day;                 // the day that the rows are written for
    int customDays = 0;        // 0: no custom period
    double guanzhudu = 0;      // themes and companies of attention above this
    double shopguanzhudu = 0;  // commodities of attention above this
    QString yinqingurl;        // the search page pattern
    bool windowWanted = false;
};

// The day is that of the launch; where that has passed, or there is none, the clock's.
RunOrder readRunOrder(const StoreFile& heat, const Clock& clock);

// False once the order was withdrawn.
bool isRunWanted(const StoreFile& heat);

}  // namespace guanchao
