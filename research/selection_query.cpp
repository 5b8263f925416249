#include "research/selection_query.h"

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString columns =
    u"select xuanticaigu.dm as 代码,jc as 简称,date(xuanticai.riqi) as 日期,xuanticai.ticai as"
    u" 题材,ticaizhang as 题材涨, dapanzhang as 大盘涨,zonggeshu as 总个数,zhangtinshu as 涨停数,"
    u"yizishu as 一字数,"
    u"round((cast(fuquansp as Double)/cast(qian1sp as Double)-1)*100,2) as 股涨幅,"
    u"cast(chengjl as Double)/cast(chengjl10ri as Double) as 量比,"
    u"round((cast(hou1kp as Double)/cast(fuquansp as Double)-1)*100,2) as 开盘涨,"
    u"round((cast(fuquansp as Double)/cast(qian3sp as Double)-1)*100,2) as 前3涨,"
    u"round((cast(fuquansp as Double)/cast(qian10sp as Double)-1)*100,2) as 前10涨,"
    u"round((cast(fuquansp as Double)/cast(qian30sp as Double)-1)*100,2) as 前30涨,"
    u"round((cast(hou2kp as Double)/cast(hou1kp as Double)-1)*100,2) as 后1涨,"
    u"round((cast(hou2sp as Double)/cast(hou1kp as Double)-1)*100,2) as 后2涨,"
    u"round((cast(hou5sp as Double)/cast(hou1kp as Double)-1)*100,2) as 后5涨,"
    u"round((cast(hou10sp as Double)/cast(hou1kp as Double)-1)*100,2) as 后10涨,"
    u"cast(hou1liang as Double)/cast(chengjl10ri as Double) as 后1量比,"
    u"round((cast(hou2kp as Double)/cast(hou1sp as Double)-1)*100,2) as 后2开盘"
    u" from xuanticai,xuanticaigu where xuanticai.ticai=xuanticaigu.ticai and"
    u" date(xuanticai.riqi)=date(xuanticaigu.riqi) "_s;

}  // namespace

QString SelectionQuery::statement() const {
    QString words = trimBlanks(condition).toLower();
    if (byTheme) {
        words += u" and xuanticai.ticai="_s + quoted(trimBlanks(theme)) + u" "_s;
    }
    if (byCode) {
        words += u" and dm="_s + quoted(trimBlanks(code).toUpper()) + u" "_s;
    }
    if (byDates) {
        words += u" and date(xuanticai.riqi)>="_s + quoted(dateText(packDate(first))) +
                 u"  and date(xuanticai.riqi)<="_s + quoted(dateText(packDate(last))) + u" "_s;
    }
    return columns + words +
           u"  order by date(xuanticai.riqi) desc,xuanticai.ticai desc,xuanticai.rowid desc,"
           u"xuanticaigu.rowid"_s;
}

}  // namespace guanchao
