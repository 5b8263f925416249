#include "exchange/article_import.h"

#include "base/activity.h"
#include "exchange/table_merge.h"
#include "platform/pick_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// An article without a title is left out.
TableMerge articles() {
    return {
        u"select datetime(rq) as rq,zuozhe,dalei,xiaolei,biaoti,leirong from wenzhang"_s,
        [](const Recordset& article) -> QString {
            return u"select datetime(rq) as rq,zuozhe,dalei,xiaolei,biaoti,leirong from wenzhang"
                   u" where dalei='"_s +
                   article.value(2).toText() + u"' and xiaolei='"_s + article.value(3).toText() +
                   u"' and biaoti='"_s + article.value(4).toText() + u"'"_s;
        },
        [](const Recordset& article) -> QString {
            if (article.value(4).toText().isEmpty()) {
                return {};
            }
            QString values = article.value(0).toText();
            for (int field = 1; field < article.fieldCount(); ++field) {
                values += u"','"_s + article.value(field).toText();
            }
            return u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values('"_s +
                   values + u"')"_s;
        }};
}

}  // namespace

ArticleImport::ArticleImport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run)
    : stores_(stores), dialogs_(dialogs), run_(run) {}

void ArticleImport::importArticles() {
    const std::optional<QString> path =
        pickFile(dialogs_, u"请选择文章库文件"_s, u"wenzhang.ztb"_s);
    if (!path) {
        return;
    }
    int count = 0;
    const bool complete = run_.run([&] {
        const Activity activity(u"导入文章"_s);
        Connection store = stores_.article.open();
        Connection file(*path, stores_.article.key);
        count = mergeTable(articles(), store, file, run_);
    });
    if (complete) {
        dialogs_.tell(u"导入文章完成，共导入新的文章："_s + QString::number(count) + u"篇"_s);
    }
}

}  // namespace guanchao
