#include "base/log_words.h"

#include "tests/support/qt_printers.h"

namespace guanchao {

TEST(LogWordsTest, OfATextNothingIsKeptThatAUserMayHaveWritten) {
    const std::pair<QString, QString> texts[] = {
        {u"5400 / 5403 只"_s, u"5400 / 5403 只"_s},
        {u"列表“短线没有了"_s, u"列表“…”"_s},
        {u"请用“工具 / 历史行情”补全"_s, u"请用“工具 / 历史行情”补全"_s},
        {u"主题“备份”秘密“备份”没有了"_s, u"主题“…”没有了"_s},
        {u"near \"mimi\": syntax error"_s, u"near “…”: syntax error"_s},
        {u"连不上 https://hq.sinajs.cn:81/list?token=mimi"_s,
         u"连不上 https://hq.sinajs.cn:81/…"_s},
        {u"读 http://yong:mi/mi@host/ 失败"_s, u"读 http://… 失败"_s},
        {u"代理 yong:mimi@10.0.0.1:80 不通"_s, u"代理 … 不通"_s},
        {u"密码：mimi 不对"_s, u"密码=… 不对"_s},
        {u"无法写入 /home/yong/秘密 文件，甲/a.txt（磁盘已满）。请腾出空间后再做。"_s,
         u"无法写入 …（磁盘已满）"_s},
        {u"找不到数据文件 /home/yong/.local/dzhzhuti.mzdat。"_s,
         u"找不到数据文件 …/dzhzhuti.mzdat"_s},
        {u"第一行\n第二行\x01"_s, u"第一行 第二行"_s},
    };
    for (const auto& [text, logged] : texts) {
        EXPECT_EQ(loggable(text), logged);
    }
    EXPECT_EQ(loggable(QString(5000, u'字')).size(), 301);
}

TEST(LogWordsTest, AReasonIsKeptAsFarAsItIsTheProgramsOwn) {
    const std::pair<QString, QString> reasons[] = {
        {u"另一次计算正在进行，请等它结束或先停止它。"_s,
         u"另一次计算正在进行，请等它结束或先停止它。"_s},
        {u"请另选一个文件夹，例如那里的“备份”里的一份。"_s,
         u"请另选一个文件夹，例如那里的“备份”里的一份。"_s},
        {u"代码表里没有 秘密 600000"_s, u"代码表里没有 …"_s},
        {u"行情数据的第3个字段不是数字：秘密"_s, u"行情数据的第3个字段不是数字：…"_s},
        {u"数据文件 wenzhang.mzdat 已损坏"_s, u"数据文件 wenzhang.mzdat …"_s},
        {u"caijiqi.ini 的 [秘密] 里 a=b"_s, u"caijiqi.ini …"_s},
        {u"写不了 x.ini 时 /root/秘密（没有访问的权限）"_s, u"写不了 …（没有访问的权限）"_s},
        {u"std::bad_alloc"_s, u"std::bad_alloc"_s},
    };
    for (const auto& [reason, logged] : reasons) {
        EXPECT_EQ(headOf(reason), logged);
    }
    EXPECT_TRUE(isOwnFile(u"dzhzhuti.mzdat-journal"_s));
    EXPECT_FALSE(isOwnFile(u"秘密dzhzhuti.mzdat"_s));
}

}  // namespace guanchao
