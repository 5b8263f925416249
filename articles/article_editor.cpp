#include "articles/article_editor.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "articles/article_removal.h"
#include "articles/installation.h"
#include "base/activity.h"
#include "base/values.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

qint32 idOf(const ArticleFields& fields) {
    using Range = std::numeric_limits<qint32>;
    const double id = roundToWhole(numericPrefix(fields.id));
    return static_cast<qint32>(std::clamp<double>(id, Range::min(), Range::max()));
}

}  // namespace

ArticleEditor::ArticleEditor(const Stores& stores, Globals& globals, const Clock& clock,
                             Dialogs& dialogs)
    : stores_(stores), globals_(globals), clock_(clock), dialogs_(dialogs) {}

ArticleLists ArticleEditor::lists() const {
    const Activity activity(u"读取文章分类"_s);
    Connection store = stores_.article.open();
    return readArticleLists(store);
}

std::optional<ArticleFields> ArticleEditor::open() {
    const QString kind = std::exchange(globals_.wenzhangdalei, QString());
    const QString value = std::exchange(globals_.wenzhangxiaolei, QString());
    if (globals_.dangqianwenzhang > 0) {
        return moveTo(std::exchange(globals_.dangqianwenzhang, 0));
    }
    return newArticle(kind, value);
}

std::optional<ArticleFields> ArticleEditor::moveTo(qint32 id) {
    const Activity activity(u"打开文章"_s);
    id_ = id;
    std::optional<ArticleFields> article;
    {
        Connection store = stores_.article.open();
        const Recordset row(store,
                            u"select id,date(rq) as rq,zuozhe,dalei,xiaolei,biaoti,leirong  FROM"
                            u" wenzhang where id="_s +
                                QString::number(id));
        if (row.count() > 0) {
            article =
                ArticleFields{row.value(u"id").toText(),
                              dateTexts(QDate::fromString(row.value(u"rq").toText(), Qt::ISODate)),
                              trimBlanks(row.value(u"zuozhe").toText()),
                              trimBlanks(row.value(u"dalei").toText()),
                              trimBlanks(row.value(u"xiaolei").toText()),
                              trimBlanks(row.value(u"biaoti").toText()),
                              kongzhuanhuan(row.value(u"leirong").toText())};
            store.execute(u"update wenzhang set cishu=cishu+1 where id="_s + QString::number(id));
        }
    }
    if (!article) {
        tellDeleted();
    }
    return article;
}

void ArticleEditor::tellDeleted() {
    dialogs_.tell(u"此文章已删除!"_s);
}

ArticleFields ArticleEditor::newArticle(const QString& kind, const QString& value) const {
    ArticleFields fields;
    fields.date = dateTexts(clock_.now().date());
    fields.author = installationText(globals_.yingyongmulu);
    fields.category = kind;
    fields.subcategory = value;
    fields.title = u"关于("_s + value + u")的内容"_s;
    return fields;
}

RelatedArticles ArticleEditor::related(const ArticleFields& fields) const {
    const Activity activity(u"读取相关文章"_s);
    Connection store = stores_.article.open();
    return readRelatedArticles(store, fields, id_);
}

bool ArticleEditor::add(ArticleFields& fields) {
    const Activity activity(u"添加文章"_s);
    const std::optional<Checked> it = check(fields);
    if (!it) {
        return false;
    }
    Connection store = stores_.article.open();
    Transaction transaction(store);
    store.execute(u"insert into wenzhang(rq,zuozhe,dalei,xiaolei,biaoti,leirong) values("_s +
                  quotedList({it->day + u" 00:00:00"_s, it->author, it->category, it->subcategory,
                              it->title, it->body}) +
                  u")"_s);
    transaction.commit();
    fields.id = Recordset(store, u"select max(id) as maxid FROM wenzhang"_s).value(0).toText();
    return true;
}

QString ArticleEditor::save(ArticleFields& fields) {
    id_ = idOf(fields);
    if (id_ < 1) {
        return add(fields) ? added : QString();
    }
    const Activity activity(u"保存文章"_s);
    const std::optional<Checked> checked = check(fields);
    if (!checked) {
        return {};
    }
    if (!update(*checked)) {
        fields.id = ArticleFields().id;
        tellDeleted();
        return {};
    }
    return changed;
}

// False if the article is no longer there.
bool ArticleEditor::update(const Checked& it) const {
    Connection store = stores_.article.open();
    Transaction transaction(store);
    store.execute(u"update wenzhang set rq="_s + quoted(it.day) + u",zuozhe="_s +
                  quoted(it.author) + u",dalei="_s + quoted(it.category) + u",xiaolei="_s +
                  quoted(it.subcategory) + u",biaoti="_s + quoted(it.title) + u",leirong="_s +
                  quoted(it.body) + u" where id="_s + QString::number(id_));
    const bool found = store.changedRows() > 0;
    transaction.commit();
    return found;
}

std::optional<ArticleEditor::Checked> ArticleEditor::check(ArticleFields& fields) {
    const QDate day = packDate(fields.date);
    if (day < QDate(1990, 1, 1)) {
        return refuse(u" 请检查一下日期!"_s);
    }
    Checked checked;
    checked.day = dateText(day);
    checked.author = trimBlanks(fields.author);
    checked.category = trimBlanks(fields.category);
    if (checked.category.isEmpty()) {
        return refuse(u" 大类不能为空!"_s);
    }
    checked.subcategory = trimBlanks(fields.subcategory);
    checked.title = trimBlanks(fields.title);
    if (checked.title.isEmpty()) {
        return refuse(u" 标题不能为空!"_s);
    }
    checked.body = kongzhuanhuan(fields.body);
    if (checked.body.isEmpty()) {
        return refuse(u" 文章内容不能为空!"_s);
    }
    return checked;
}

std::optional<ArticleEditor::Checked> ArticleEditor::refuse(const QString& answer) {
    dialogs_.tell(answer);
    return std::nullopt;
}

QCoro::Task<bool> ArticleEditor::remove(ArticleFields fields, std::stop_token stop) {
    const bool agreed = co_await dialogs_.ask(stop, u"确实要删除这篇文章吗?"_s);
    if (!agreed) {
        co_return false;
    }
    const Activity activity(u"删除文章"_s);
    Connection store = stores_.article.open();
    removeArticle(store, idOf(fields), globals_);
    dialogs_.tell(u" 已删除这篇文章!"_s);
    co_return true;
}

QCoro::Task<Unsaved> ArticleEditor::askToSave(ArticleFields fields, std::stop_token stop) {
    return dialogs_.askToSave(
        stop, u"文章《"_s + trimBlanks(fields.title) + u"》有修改还没有保存，要保存吗?"_s);
}

}  // namespace guanchao
