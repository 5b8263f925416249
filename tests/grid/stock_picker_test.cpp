#include "grid/stock_picker.h"

#include "tests/support/qt_printers.h"
#include "tests/support/test_stores.h"

namespace guanchao {

TEST(StockPickerTest, EachTestAnswersItsKindOfText) {
    TestStores store;
    store.run(
        {u"insert into dmb(dm,numdm,jc,shenmu) values('SH600519','600519','贵州茅台','gzmt'),"
         u"('SZ000001','000001','平安银行','payh'),('SH600000','600000','浦发银行','pfyh'),"
         u"('SH000001','000001','上证指数','szzs'),('SZ300999','300999','盛虹','shh'),"
         u"('BJ920799','920799','艾融软件','arrj'),('SH900901','900901','云赛B股','ysbg')"_s,
         u"insert into bankuaidmb values('999901','银行')"_s});
    const std::pair<QString, QStringList> cases[] = {
        {u"600"_s, {u"SH600519  贵州茅台"_s, u"SH600000  浦发银行"_s}},
        {u"000001"_s, {u"SZ000001  平安银行"_s, u"SH000001  上证指数"_s}},
        {u"P"_s, {u"SZ000001  平安银行"_s, u"SH600000  浦发银行"_s}},
        {u"gzmt"_s, {u"SH600519  贵州茅台"_s}},
        {u"sh"_s, {u"SZ300999  盛虹"_s}},
        {u"sh6"_s, {u"SH600519  贵州茅台"_s, u"SH600000  浦发银行"_s}},
        {u"SH6"_s, {u"SH600519  贵州茅台"_s, u"SH600000  浦发银行"_s}},
        {u"Sz000001"_s, {u"SZ000001  平安银行"_s}},
        {u"9"_s, {u"BJ920799  艾融软件"_s}},
        {u"bj92"_s, {u"BJ920799  艾融软件"_s}},
    };
    for (const auto& [text, lines] : cases) {
        EXPECT_EQ(candidateLines(chazhaodaima(store.stores.main, text)), lines)
            << text.toStdString();
    }
    for (const QString& text : {u"bj8"_s, u"900901"_s, u"999901"_s, u"600a"_s, u"sh6x"_s, u"'"_s,
                                u"茅台"_s, u"6000000"_s, QString()}) {
        EXPECT_EQ(chazhaodaima(store.stores.main, text), QString()) << text.toStdString();
    }
}

}  // namespace guanchao
