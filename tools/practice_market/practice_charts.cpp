#include "tools/practice_market/practice_charts.h"

#include <gd.h>
#include <gdfonts.h>

#include <QHash>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "tools/practice_market/practice_quotes.h"

namespace guanchao {

namespace {

constexpr int minutesOfDay = 240;
constexpr int daysShown = 60;
constexpr int calendarDaysShown = daysShown * 7 / 5 + 1;

struct Size {
    int width;
    int height;
};
constexpr Size large = {545, 300};
constexpr Size small = {280, 150};

// One picture with a price axis at its left; prices run from `lowest` to `highest`.
class Chart {
public:
    Chart(const Size& size, double lowest, double highest)
        : image_(gdImageCreate(size.width, size.height)),
          size_(size),
          lowest_(lowest),
          highest_(highest) {
        gdImageColorAllocate(image_, 10, 11, 13);  // the first colour is the ground
        grid_ = gdImageColorAllocate(image_, 48, 52, 60);
        text_ = gdImageColorAllocate(image_, 170, 175, 184);
        line_ = gdImageColorAllocate(image_, 235, 238, 242);
        rise_ = gdImageColorAllocate(image_, 255, 82, 82);
        fall_ = gdImageColorAllocate(image_, 82, 255, 82);
        gdFTUseFontConfig(1);
    }
    ~Chart() { gdImageDestroy(image_); }
    Chart(const Chart&) = delete;
    Chart& operator=(const Chart&) = delete;

    int x(int step, int steps) const { return left + (size_.width - left - right) * step / steps; }
    int y(double price) const {
        const double part = (price - lowest_) / (highest_ - lowest_);
        return static_cast<int>(std::lround(size_.height - bottom - part * plotHeight()));
    }

    void drawTitle(const QString& title) {
        char font[] = "Noto Sans CJK SC";
        QByteArray words = title.toUtf8();
        int box[8];
        gdImageStringFT(image_, box, text_, font, 9, 0, left, top - 6, words.data());
    }
    void drawPrices(int rows) {
        for (int row = 0; row <= rows; ++row) {
            const double price = std::lerp(lowest_, highest_, static_cast<double>(row) / rows);
            gdImageLine(image_, left, y(price), size_.width - right, y(price), grid_);
            write(2, y(price) - 6, QByteArray::number(price, 'f', 2));
        }
    }
    void drawMark(int step, int steps, const QByteArray& words) {
        const int place = x(step, steps);
        gdImageLine(image_, place, top, place, size_.height - bottom, grid_);
        const int width = static_cast<int>(words.size()) * gdFontGetSmall()->w;
        write(std::min(place, size_.width - width - 2), size_.height - bottom + 2, words);
    }
    void drawLine(int step, int steps, double from, double to) {
        gdImageLine(image_, x(step, steps), y(from), x(step + 1, steps), y(to), line_);
    }
    void drawCandle(int step, int steps, const PracticeDay& day) {
        const int colour = day.close < day.open ? fall_ : rise_;
        const int middle = (x(step, steps) + x(step + 1, steps)) / 2;
        gdImageLine(image_, middle, y(day.high), middle, y(day.low), colour);
        gdImageFilledRectangle(image_, x(step, steps) + 1, y(std::max(day.open, day.close)),
                               x(step + 1, steps) - 2, y(std::min(day.open, day.close)), colour);
    }

    QByteArray gif() const {
        int size = 0;
        void* bytes = gdImageGifPtr(image_, &size);
        QByteArray gif(static_cast<const char*>(bytes), size);
        gdFree(bytes);
        return gif;
    }

private:
    static constexpr int left = 56;
    static constexpr int right = 8;
    static constexpr int top = 24;
    static constexpr int bottom = 18;

    double plotHeight() const { return size_.height - top - bottom; }
    void write(int x, int y, QByteArray words) {
        gdImageString(image_, gdFontGetSmall(), x, y,
                      reinterpret_cast<unsigned char*>(words.data()), text_);
    }

    gdImagePtr image_;
    Size size_;
    double lowest_;
    double highest_;
    int grid_;
    int text_;
    int line_;
    int rise_;
    int fall_;
};

QByteArray minuteChart(const Size& size, const QString& title, const PracticeMinutes& minutes) {
    double reach = minutes.formerClose * 0.01;
    for (const double price : minutes.prices) {
        reach = std::max(reach, std::abs(price - minutes.formerClose));
    }
    Chart chart(size, minutes.formerClose - reach, minutes.formerClose + reach);
    chart.drawTitle(title);
    chart.drawPrices(4);
    const char* const marks[] = {"09:30", "10:30", "11:30", "14:00", "15:00"};
    const int hoursPerMark = size.width < large.width ? 2 : 1;
    for (int hour = 0; hour < 5; hour += hoursPerMark) {
        chart.drawMark(hour, 4, marks[hour]);
    }
    for (size_t minute = 0; minute + 1 < minutes.prices.size(); ++minute) {
        chart.drawLine(static_cast<int>(minute), minutesOfDay, minutes.prices[minute],
                       minutes.prices[minute + 1]);
    }
    return chart.gif();
}

QByteArray dayChart(const QString& title, const std::vector<PracticeDay>& days) {
    double lowest = days.front().low;
    double highest = days.front().high;
    for (const PracticeDay& day : days) {
        lowest = std::min(lowest, day.low);
        highest = std::max(highest, day.high);
    }
    Chart chart(large, lowest, std::max(highest, lowest + 0.01));
    chart.drawTitle(title);
    chart.drawPrices(4);
    const int steps = static_cast<int>(days.size());
    for (int step = 0; step < steps; ++step) {
        const PracticeDay& day = days[static_cast<size_t>(step)];
        if (step % 15 == 0) {
            chart.drawMark(step, steps, day.day.toString(QStringLiteral("MM-dd")).toLatin1());
        }
        chart.drawCandle(step, steps, day);
    }
    return chart.gif();
}

// The code behind a chart's file name: the service names the indexes of other countries otherwise.
QString codeOf(const QString& file) {
    static const QHash<QString, QString> others = {
        {QStringLiteral("HSI"), QStringLiteral("r_HSI")},
        {QStringLiteral(".dji"), QStringLiteral("int_dji")},
        {QStringLiteral(".ixic"), QStringLiteral("int_nasdaq")}};
    const QString home = file.startsWith(u'n') ? file.sliced(1) : file;
    return others.value(file, home);
}

}  // namespace

QByteArray practiceChart(const PracticeQuotes& quotes, const QString& path, const QDateTime& now) {
    static const QRegularExpression chartPath(QStringLiteral("^/newchart/(.+)/([^/]+)\\.gif$"));
    const QRegularExpressionMatch match = chartPath.match(path);
    const QString kind = match.captured(1);
    const QString code = codeOf(match.captured(2));
    const QString title = quotes.name(code) + u' ' + code.toUpper();
    if (kind == QLatin1String("daily/n")) {
        const std::vector<PracticeDay> days =
            quotes.days(code, now.date().addDays(-calendarDaysShown), now.date(), now);
        return days.empty() ? QByteArray() : dayChart(title, days);
    }
    const std::optional<PracticeMinutes> minutes = quotes.minutes(code, now);
    if (!minutes) {
        return {};
    }
    return minuteChart(kind == QLatin1String("min/n") ? large : small, title, *minutes);
}

}  // namespace guanchao
