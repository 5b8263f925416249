#include "exchange/article_import.h"

#include "base/values.h"
#include "exchange/row_values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// An article without a title is left out.
TableMerge articles() {
    return {
        u"select datetime(rq) as rq,zuozhe,dalei,xiaolei,biaoti,leirong from wenzhang"_s,
        [](const Recordset& article) -> QString {
            return u"select datetime(rq) as rq,zuozhe,dalei,xiaolei,biaoti,leirong from wenzhang"
                   u" where dalei="_s +
                   quoted(article.value(2).toText()) + u" and xiaolei="_s +
                   quoted(article.value(3).toText()) + u" and biaoti="_s +
                   quoted(article.value(4).toText());
        },
        [](const Recordset& article) -> QString {
            if (article.value(4).toText().isEmpty()) {
                return {};
            }
            return u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values("_s +
                   quotedFields(article, 0, 5) + u')';
        },
        u"wenzhang_biaoti on wenzhang(biaoti)"_s};
}

}  // namespace

QCoro::Task<> importArticles(const Stores& stores, Dialogs& dialogs, ExchangeRun& run,
                             std::stop_token stop) {
    const StoreMerge merge = {.activity = u"导入文章"_s,
                              .question = u"请选择文章库文件"_s,
                              .kind = u"文章库"_s,
                              .fileName = u"wenzhang.ztb"_s,
                              .store = stores.article,
                              .tables = {{u"文章"_s, articles()}},
                              .done = u"导入文章完成，共导入新的文章："_s,
                              .unit = u"篇"_s,
                              .stopped = u"导入已停止，没有导入任何文章。"_s};
    return mergePickedFile(merge, dialogs, run, stop);
}

}  // namespace guanchao
