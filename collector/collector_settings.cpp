#include "collector/collector_settings.h"

#include <algorithm>
#include <stdexcept>

#include "platform/ini_file.h"
#include "store/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double millisecondsPerSecond = 1000;
constexpr double longestPauseSeconds = 86400;

int milliseconds(const QString& seconds) {
    const double typed = std::clamp(numericPrefix(seconds), 0.0, longestPauseSeconds);
    return static_cast<int>(typed * millisecondsPerSecond);
}

class Reader {
public:
    explicit Reader(const QString& iniPath) : ini_(iniPath) {}

    void text(const QString& section, const QString& key, QString& value) const {
        value = ini_.value(section, key).value_or(value);
    }

    void pattern(const QString& key, QRegularExpression& value) const {
        const QRegularExpression typed(ini_.value(u"page"_s, key).value_or(value.pattern()));
        if (!typed.isValid() || typed.pattern().isEmpty()) {
            throw std::runtime_error(
                QString(u"caijiqi.ini："_s + key + u" 不是正则表达式。"_s).toStdString());
        }
        value = typed;
    }

    void weight(const QString& key, double& value) const {
        if (const auto typed = ini_.value(u"weights"_s, key)) {
            value = numericPrefix(*typed);
        }
    }

    void pause(const QString& key, int& value) const {
        if (const auto typed = ini_.value(u"pace"_s, key)) {
            value = milliseconds(*typed);
        }
    }

    void pauses(const QString& key, QList<int>& values) const {
        const auto typed = ini_.value(u"pace"_s, key);
        if (!typed) {
            return;
        }
        values.clear();
        for (const QString& seconds : typed->split(u',', Qt::SkipEmptyParts)) {
            values << milliseconds(seconds);
        }
    }

private:
    IniFile ini_;
};

void readWeights(const Reader& reader, ScoreWeights& weights) {
    reader.weight(u"zhangzi"_s, weights.zhangzi);
    reader.weight(u"shengzi"_s, weights.shengzi);
    reader.weight(u"dazhang"_s, weights.dazhang);
    reader.weight(u"baozhang"_s, weights.baozhang);
    reader.weight(u"diezi"_s, weights.diezi);
    reader.weight(u"jiangzi"_s, weights.jiangzi);
    reader.weight(u"dadie"_s, weights.dadie);
    reader.weight(u"baodie"_s, weights.baodie);
}

}  // namespace

CollectorSettings readCollectorSettings(const QString& iniPath) {
    const Reader reader(iniPath);
    CollectorSettings settings;
    reader.text(u"period"_s, u"one"_s, settings.onePeriod);
    reader.text(u"period"_s, u"all"_s, settings.allPeriod);
    reader.text(u"period"_s, u"custom"_s, settings.customPeriod);
    reader.pattern(u"results"_s, settings.results);
    reader.pattern(u"none"_s, settings.noResults);
    readWeights(reader, settings.weights);
    reader.pause(u"pause"_s, settings.pause);
    reader.pause(u"random"_s, settings.randomPause);
    reader.pauses(u"retries"_s, settings.retries);
    int timeout = settings.timeoutSeconds * static_cast<int>(millisecondsPerSecond);
    reader.pause(u"timeout"_s, timeout);
    settings.timeoutSeconds = timeout / static_cast<int>(millisecondsPerSecond);
    return settings;
}

}  // namespace guanchao
