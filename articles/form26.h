// Form26, "文章编辑和浏览": one article to read, change, add or delete, with the lists of related
// ones to move to. Table wenzhang of the article store; the rules are in ArticleEditor. It takes
// the current article, or for a new one the article context, over at its load. Several can be open.
#pragma once

#include <QTimer>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

#include "articles/article_editor.h"
#include "articles/drafts.h"
#include "base/runs.h"
#include "frame/asking_window.h"
#include "frame/date_boxes.h"
#include "frame/environment.h"
#include "frame/windows.h"

namespace Ui {
class Form26;
}

namespace guanchao {

class Form26 : public AskingWindow {
    Q_OBJECT

public:
    Form26(Environment& environment, Windows& windows);
    ~Form26() override;

    // Every way to close it: asks first if there are unsaved changes.
    void reject() override;

    // Lays the draft over its article, which may have been changed or deleted since.
    void takeUp(const LeftDraft& left);

protected:
    bool event(QEvent* event) override;

private:
    void connectControls();
    void connectTimers();
    ArticleFields fields() const;
    void write(const ArticleFields& article);
    void showArticle(const std::optional<ArticleFields>& article);
    void showRelated(const RelatedArticles& related);
    void showSaved(const ArticleFields& saved, const QString& words);
    void leave(const std::function<void()>& step);
    QCoro::Task<> leaveUnsaved(std::function<void()> step, std::stop_token stop);
    bool save();
    void comeToTheFront();
    void noteChange();
    void forgetDraft();
    void tellBrowser() const;

    void Form_Load();
    void Combo4_Click();
    void related_Click(const EntryBox& box);
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Timer1_Timer();
    void Timer2_Timer();
    void Timer3_Timer();
    void drafts_Timer();

    Environment& environment_;
    std::unique_ptr<Ui::Form26> ui_;
    ArticleEditor editor_;
    DateBoxes* date_ = nullptr;
    ArticleFields kept_;          // the fields as read or last saved
    qint32 next_ = 0;             // the article to move to
    std::exception_ptr failure_;  // of the related lists, until it is told
    QTimer Timer1_;               // hides the flash message
    QTimer Timer2_;               // closes the window of an article that is deleted
    QTimer Timer3_;               // moves to the article chosen in a related list
    QTimer drafts_;               // puts a change aside
    QString draftPath_;
    Runs deletion_;
    Runs leaving_;
};

}  // namespace guanchao
