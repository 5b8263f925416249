#include "collector/collector_settings.h"

#include <QTemporaryDir>

#include "base/activity.h"
#include "store/failure.h"
#include "tests/support/files.h"
#include "tests/support/outcome_of.h"

namespace guanchao {

static CollectorSettings settingsOf(const QByteArray& file) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"caijiqi.ini"_s);
    writeFile(path, file);
    return readCollectorSettings(path);
}

TEST(CollectorSettingsTest, EveryEntryTakesThePlaceOfItsStandardValue) {
    const CollectorSettings standard = readCollectorSettings(u"/missing"_s);
    EXPECT_EQ(standard.onePeriod, u"&lm=1"_s);
    EXPECT_EQ(standard.retries, (QList<int>{10000, 60000, 300000}));
    const CollectorSettings own = settingsOf(
        u"[period]\none=&a\nall=&b\ncustom=&c\n[page]\nresults=(\\d+)\nnone=\n[weights]\n"
        u"baodie=-0.5\n[pace]\npause=0.5\nrandom=0\nretries=1,2.5\ngiveup=0\ntimeout=0.2\n"_s
            .toUtf8());
    EXPECT_EQ(own.onePeriod + own.allPeriod + own.customPeriod, u"&a&b&c"_s);
    EXPECT_EQ(own.results.pattern() + own.noResults.pattern(), u"(\\d+)"_s);
    EXPECT_EQ(own.weights.baodie + own.weights.dadie, -0.5 + -2);
    EXPECT_EQ(own.pause, 500);
    EXPECT_EQ(own.retries, (QList<int>{1000, 2500}));
    EXPECT_EQ(own.randomPause + own.giveUpAfter, 0);
    EXPECT_EQ(own.timeoutSeconds, 1) << "without any a dead service would hold the run for good";
}

TEST(CollectorSettingsTest, WhatIsAmissIsNamed) {
    const QString utf16 = u"\ufeff[pace]\npause=1"_s;
    const struct {
        QByteArray file;
        QString reason, logged;
    } cases[] = {
        {"[pace]\nretries=1,x,y\nmimi=1", u"、pages。\n[pace] 里 retries=x：不是数字。"_s,
         u"第 3 行：[pace] 里没有这一项；[pace] 里 retries 的值不是数字"_s},
        {"[pace]\npause=-5", u"[pace] 里 pause=-5：不能小于 0。"_s,
         u"[pace] 里 pause 的值不能小于 0"_s},
        {"[weights]\ndadie=", u"[weights] 里 dadie=：不是数字。"_s,
         u"[weights] 里 dadie 的值不是数字"_s},
        {u"[page]\nresults=约([0-9"_s.toUtf8(), u"[page] 里 results=约([0-9：不是正则表达式。"_s,
         u"[page] 里 results 的值不是正则表达式"_s},
        {u"[page]\nresults=约[0-9]+"_s.toUtf8(),
         u"[page] 里 results=约[0-9]+：没有用括号标出结果数。"_s,
         u"[page] 里 results 的值没有用括号标出结果数"_s},
        {"; c\n[pace]\nmimi=1", u"第 3 行：[pace] 里没有 mimi 这一项，只有 pause、"_s,
         u"第 3 行：[pace] 里没有这一项"_s},
        {"pause=1\n[pace]", u"第 1 行：pause 写在所有的节之前，请移到它的一节 [pace] 里"_s,
         u"第 1 行：写在所有的节之前"_s},
        {"[pace]\n\n[PACE]\npause=1", u"第 3 行：[pace] 前面已有一节"_s,
         u"第 3 行：[pace] 前面已有一节，请合成一节"_s},
        {"[pace]\npause=1\nPause=2", u"第 3 行：pause 前面已写过"_s,
         u"第 3 行：这一项前面已写过"_s},
        {"[mimi]\nnone=1\n[pace",
         u"没有 [mimi] 这一节，只有 [pace]、[page]、[period]、[weights]。\n第 3 行：[pace 少了"_s,
         u"第 1 行：没有这样的一节；第 3 行：一节的名字少了后面的 ]"_s},
        {"[pace]\nmimi 1", u"第 2 行：“mimi 1”不是“名字=值”"_s, u"第 2 行：没有等号"_s},
        {QByteArray(reinterpret_cast<const char*>(utf16.utf16()), 2 * utf16.size()),
         u"第 1 行起：文件是 UTF-16 编码"_s, u"第 1 行起：文件是 UTF-16 编码"_s},
    };
    for (const auto& it : cases) {
        const auto failure = raisedBy<OperationError>([&] { settingsOf(it.file); });
        EXPECT_TRUE(holds(failure.reason(), it.reason));
        const QString logged = loggedReason(failure);
        EXPECT_TRUE(holds(logged, it.logged));
        EXPECT_FALSE(holds(logged, u"mimi"_s));
    }
}

}  // namespace guanchao
