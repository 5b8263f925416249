#include "app/undo_menu.h"

#include <QScopeGuard>
#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestName = 40;  // in a menu

const QString undoWord = u"撤消"_s;
const QString redoWord = u"重做"_s;

QString wordOf(Way way) {
    return way == Way::back ? undoWord : redoWord;
}

QString changedMeanwhile(const Edit& edit, Way way) {
    const QString button = edit.removed && way == Way::back
                               ? u"\n\n要只取回缺少的，请用“已删除”旁边的“撤消删除”按钮。"_s
                               : QString();
    return u"没有"_s + wordOf(way) + u"“"_s + edit.name +
           u"”：这些数据后来又改动过（导入、恢复或者别处的修改）。\n\n现在的数据没有改动，"
           u"这一步不再列在菜单里。"_s +
           button;
}

}  // namespace

UndoMenu::UndoMenu(QAction& undo, QAction& redo, Environment& environment,
                   std::function<void(const Edit&, Way)> changed)
    : undo_(undo),
      redo_(redo),
      environment_(environment),
      changed_(std::move(changed)),
      runs_(environment.failures) {
    undo_.setShortcuts({Qt::CTRL | Qt::Key_Z});
    redo_.setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    connect(&undo_, &QAction::triggered, this, [this] { start(Way::back); });
    connect(&redo_, &QAction::triggered, this, [this] { start(Way::again); });
    connect(&environment_.edits, &Edits::changed, this, qOverload<>(&UndoMenu::showNext));
    showNext();
}

void UndoMenu::showNext() {
    showNext(undo_, undoWord, Way::back);
    showNext(redo_, redoWord, Way::again);
}

void UndoMenu::showNext(QAction& entry, const QString& word, Way way) {
    const std::optional<Edit> next = environment_.edits.next(way);
    QString name = next ? u' ' + shortened(next->name, longestName) : QString();
    entry.setText(word + name.replace(u'&', u"&&"_s));
    const QString nothing = u"没有可以"_s + word + u"的主题修改"_s;
    entry.setToolTip(next ? QString(word + u' ' + next->name) : nothing);
    entry.setEnabled(next.has_value() && !isUnderWay_);
}

void UndoMenu::start(Way way) {
    const std::optional<Edit> next = environment_.edits.next(way);
    if (next && !isUnderWay_) {
        runs_.start(
            [this, edit = *next, way](std::stop_token stop) { return run(edit, way, stop); });
    }
}

QCoro::Task<> UndoMenu::run(Edit edit, Way way, std::stop_token stop) {
    isUnderWay_ = true;
    showNext();
    const auto end = qScopeGuard([this] {
        isUnderWay_ = false;
        showNext();
    });
    const auto job = [edit, way](const auto&) {
        const Activity activity(wordOf(way) + u"主题修改"_s);
        return carryOut(edit, way);
    };
    const bool done = co_await inWorker(job, stop);
    if (done) {
        environment_.edits.carriedOut(edit, way);
        changed_(edit, way);
    } else {
        environment_.edits.drop(edit, way);
        environment_.dialogs.tell(changedMeanwhile(edit, way));
    }
}

}  // namespace guanchao
