#include "collector/collector_settings.h"

#include <QTemporaryDir>

#include "base/activity.h"
#include "tests/support/files.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

static CollectorSettings settingsOf(const QString& text) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"caijiqi.ini"_s);
    writeFile(path, text.toUtf8());
    return readCollectorSettings(path);
}

TEST(CollectorSettingsTest, EveryEntryTakesThePlaceOfItsStandardValue) {
    const CollectorSettings standard = readCollectorSettings(u"/missing"_s);
    EXPECT_EQ(standard.onePeriod, u"&lm=1"_s);
    EXPECT_EQ(standard.retries, (QList<int>{10000, 60000, 300000}));
    const CollectorSettings own = settingsOf(
        u"[period]\none=&a\nall=&b\ncustom=&c\n[page]\nresults=(\\d+)\nnone=\n[weights]\n"
        u"baodie=-0.5\n[pace]\npause=0.5\nrandom=0\nretries=1,2.5\ngiveup=0\ntimeout=0.2\n"_s);
    EXPECT_EQ(own.onePeriod + own.allPeriod + own.customPeriod, u"&a&b&c"_s);
    EXPECT_EQ(own.results.pattern() + own.noResults.pattern(), u"(\\d+)"_s);
    EXPECT_EQ(own.weights.baodie, -0.5);
    EXPECT_EQ(own.weights.dadie, -2);
    EXPECT_EQ(own.pause, 500);
    EXPECT_EQ(own.randomPause, 0);
    EXPECT_EQ(own.retries, (QList<int>{1000, 2500}));
    EXPECT_EQ(own.giveUpAfter, 0);
    EXPECT_EQ(own.timeoutSeconds, 1) << "without any a dead service would hold the run for good";
}

TEST(CollectorSettingsTest, ARefusedEntryIsNamed) {
    const struct {
        QString text;
        QString reason;
    } cases[] = {
        {u"[pace]\npause=three"_s, u"caijiqi.ini：pause 不是数字。"_s},
        {u"[pace]\nretries=1,x"_s, u"caijiqi.ini：retries 不是数字。"_s},
        {u"[weights]\ndadie="_s, u"caijiqi.ini：dadie 不是数字。"_s},
        {u"[page]\nresults=约([0-9"_s, u"caijiqi.ini：results 不是正则表达式。"_s},
        {u"[page]\nresults=约[0-9]+"_s, u"caijiqi.ini：results 没有用括号标出结果数。"_s},
    };
    for (const auto& it : cases) {
        try {
            settingsOf(it.text);
            ADD_FAILURE() << it.text.toStdString();
        } catch (const OperationError& failure) {
            EXPECT_EQ(failure.reason(), it.reason);
        }
    }
}

}  // namespace guanchao
