#include "articles/draft_offer.h"

#include "articles/form26.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString named(const QList<LeftDraft>& drafts) {
    QString names;
    for (const LeftDraft& it : drafts) {
        names += u"\n《"_s + it.draft.typed.title.trimmed() + u"》  "_s +
                 it.draft.time.toString(u"yyyy-MM-dd HH:mm"_s);
    }
    return names;
}

}  // namespace

QCoro::Task<> offerDrafts(Environment& environment, Windows& windows, std::stop_token stop) {
    const QList<LeftDraft> drafts = leftDrafts(environment.applicationFolder);
    if (drafts.isEmpty()) {
        co_return;
    }
    const QString question = u"上次软件没有正常退出，有 "_s + QString::number(drafts.size()) +
                             u" 篇文章没有保存，留有草稿："_s + named(drafts) +
                             u"\n\n点“确定”打开，点“取消”下次启动再问。"_s;
    const bool wanted = co_await environment.dialogs.ask(stop, question);
    if (wanted) {
        for (const LeftDraft& it : drafts) {
            environment.globals.dangqianwenzhang = it.draft.typed.id.toInt();
            auto* editor = new Form26(environment, windows);
            environment.openWindows.adopt(editor);
            editor->takeUp(it);
        }
    }
}

}  // namespace guanchao
