// What windows hand to each other and the flags that jobs leave for timers. One object, owned by
// the Program; empty and 0 until the main window's load has filled it.
#pragma once

#include <QDate>
#include <QString>

namespace guanchao {

struct Globals {
    QString yingyongmulu;  // 应用目录: the application folder, ending in one separator

    QString dangqiandm;     // 当前代码: the current stock, set by the window that hands it over
    QString dangqianjc;     // 当前简称
    QString dangqianzhuti;  // 当前主题
    QString dangqiangongsi;  // 当前公司: the code of the company chosen in its news ranking

    QString dangqianshangpin;  // 当前商品: the commodity chosen in its monitor

    qint32 dangqianjilu = 0;  // 当前记录: the forecast row that the edits of Form12 act on

    QString wenzhangdalei;    // 文章大类: the article context, "主题" or "个股" or empty
    QString wenzhangxiaolei;  // 文章小类: theme name, or code followed by short name
    qint32 dangqianwenzhang = 0;  // 当前文章: the article row last pressed on; its editor zeroes it

    qint16 bianjimoshi = 0;  // 编辑模式: what a monitor editor opens for, 1 modify, else add

    QDate jintian;  // 今天: the day at start-up

    qint16 hqmang = 0;         // 行情忙: 1 while a quote batch or a download writes
    qint16 jiaoyishiduan = 0;  // 交易时段: 1 in a session, at the last refresh or quote window
    qint16 jiankongkaiqi = 0;  // 监控开启: 1 while monitoring runs
    QDate jiankongshoudong;    // 监控手动: the day on which a hand started or stopped it
};

}  // namespace guanchao
