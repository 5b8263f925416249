#include "collector/collector_settings.h"

#include <QFile>
#include <algorithm>
#include <optional>

#include "base/activity.h"
#include "base/files.h"
#include "base/values.h"
#include "collector/settings_check.h"
#include "formats/ini_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double millisecondsPerSecond = 1000;
constexpr double longestPauseSeconds = 86400;
constexpr double longestTimeoutSeconds = 600;
constexpr double mostFailedPages = 10000;
constexpr double mostHeadlinePages = 20;

// Reads each entry that is there, and collects those that are amiss.
class Reader {
public:
    explicit Reader(const QString& iniPath) : ini_(iniPath) {}

    void text(const QString& section, const QString& key, QString& value) const {
        value = ini_.value(section, key).value_or(value);
    }

    void pattern(const QString& key, int groups, QRegularExpression& value) {
        const QRegularExpression typed(ini_.value(u"page"_s, key).value_or(value.pattern()),
                                       value.patternOptions());
        if (!typed.isValid()) {
            complain(u"page"_s, key, typed.pattern(), u"不是正则表达式"_s);
        } else if (typed.captureCount() < groups) {
            complain(u"page"_s, key, typed.pattern(), u"没有用括号标出结果数"_s);
        } else {
            value = typed;
        }
    }

    void weight(const QString& key, double& value) {
        if (const auto typed = ini_.value(u"weights"_s, key)) {
            value = number(u"weights"_s, key, *typed).value_or(value);
        }
    }

    // A number within the limits.
    void pace(const QString& key, double least, double most, int& value) {
        const auto typed = ini_.value(u"pace"_s, key);
        if (const auto given = typed ? time(key, *typed) : std::nullopt) {
            value = static_cast<int>(std::clamp(*given, least, most));
        }
    }

    // Seconds in the file, milliseconds in the settings.
    void pause(const QString& key, int& value) {
        const auto typed = ini_.value(u"pace"_s, key);
        if (const auto given = typed ? milliseconds(key, *typed) : std::nullopt) {
            value = *given;
        }
    }

    void pauses(const QString& key, QList<int>& values) {
        const auto typed = ini_.value(u"pace"_s, key);
        if (!typed) {
            return;
        }
        values.clear();
        for (const QString& seconds : typed->split(u',', Qt::SkipEmptyParts)) {
            const std::optional<int> given = milliseconds(key, seconds);
            if (!given) {
                return;
            }
            values << *given;
        }
    }

    const QList<SettingsComplaint>& complaints() const { return complaints_; }

private:
    void complain(const QString& section, const QString& key, const QString& typed,
                  const QString& what) {
        complaints_ << SettingsComplaint{
            u"[%1] 里 %2=%3：%4。"_s.arg(section, key, shortened(typed, longestShownName), what),
            u"[%1] 里 %2 的值%3"_s.arg(section, key, what)};
    }

    std::optional<double> number(const QString& section, const QString& key, const QString& typed) {
        if (!readsAsNumber(typed)) {
            complain(section, key, typed, u"不是数字"_s);
            return std::nullopt;
        }
        return numericPrefix(typed);
    }

    std::optional<double> time(const QString& key, const QString& typed) {
        const std::optional<double> time = number(u"pace"_s, key, typed);
        if (time && *time < 0) {
            complain(u"pace"_s, key, typed, u"不能小于 0"_s);
            return std::nullopt;
        }
        return time;
    }

    std::optional<int> milliseconds(const QString& key, const QString& seconds) {
        const std::optional<double> pause = time(key, seconds);
        if (!pause) {
            return std::nullopt;
        }
        return static_cast<int>(std::min(*pause, longestPauseSeconds) * millisecondsPerSecond);
    }

    IniFile ini_;
    QList<SettingsComplaint> complaints_;
};

const KnownEntries known = {
    {u"period"_s, {u"one"_s, u"all"_s, u"custom"_s}},
    {u"page"_s, {u"results"_s, u"none"_s, u"person"_s}},
    {u"weights"_s,
     {u"zhangzi"_s, u"shengzi"_s, u"dazhang"_s, u"baozhang"_s, u"diezi"_s, u"jiangzi"_s, u"dadie"_s,
      u"baodie"_s}},
    {u"pace"_s, {u"pause"_s, u"random"_s, u"retries"_s, u"giveup"_s, u"timeout"_s, u"pages"_s}},
};

QList<SettingsComplaint> complaintsOnLines(const QString& iniPath) {
    QFile file(iniPath);
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        const QString words = u"caijiqi.ini 不能读取（%1）。"_s.arg(reasonOf(file));
        throw OperationError(words, words);
    }
    return complaintsOf(file.readAll(), known);
}

void refuse(const QList<SettingsComplaint>& complaints) {
    QStringList words, forLog;
    for (const SettingsComplaint& it : complaints) {
        words << it.words;
        forLog << it.forLog;
    }
    if (!words.isEmpty()) {
        throw OperationError(
            u"caijiqi.ini 里有看不懂的地方，请改好后再采集：\n"_s + words.join(u'\n'),
            u"caijiqi.ini 里有看不懂的地方："_s + forLog.join(u'；'));
    }
}

void readWeights(Reader& reader, ScoreWeights& weights) {
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
    const QList<SettingsComplaint> onLines = complaintsOnLines(iniPath);
    Reader reader(iniPath);
    CollectorSettings settings;
    reader.text(u"period"_s, u"one"_s, settings.onePeriod);
    reader.text(u"period"_s, u"all"_s, settings.allPeriod);
    reader.text(u"period"_s, u"custom"_s, settings.customPeriod);
    reader.pattern(u"results"_s, 1, settings.results);
    reader.pattern(u"none"_s, 0, settings.noResults);
    reader.pattern(u"person"_s, 0, settings.person);
    readWeights(reader, settings.weights);
    reader.pause(u"pause"_s, settings.pause);
    reader.pause(u"random"_s, settings.randomPause);
    reader.pauses(u"retries"_s, settings.retries);
    reader.pace(u"giveup"_s, 0, mostFailedPages, settings.giveUpAfter);
    reader.pace(u"timeout"_s, 1, longestTimeoutSeconds, settings.timeoutSeconds);
    reader.pace(u"pages"_s, 1, mostHeadlinePages, settings.headlinePages);
    refuse(onLines + reader.complaints());
    return settings;
}

}  // namespace guanchao
