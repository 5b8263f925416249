#include "frame/run_panel.h"

#include "base/values.h"
#include "frame/run_share.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

RunPanel::RunPanel(const Controls& controls) : controls_(controls) {
    for (QLabel* told : {controls_.step, controls_.words}) {
        told->setTextFormat(Qt::PlainText);
    }
    show(ShownRun());
    say({});
}

void RunPanel::show(const ShownRun& run) {
    const bool isFree = run.running && !run.stopping;
    if (controls_.pause) {
        controls_.pause->setEnabled(isFree);
        controls_.pause->setText(run.paused ? u"继续(&P)"_s : u"暂停(&P)"_s);
    }
    controls_.stop->setEnabled(isFree);
    controls_.stop->setText(run.stopping ? u"正在停止…"_s : u"停止(&S)"_s);
    controls_.step->setVisible(run.running);
    controls_.progress->setVisible(run.running);
}

void RunPanel::show(const RunProgress& progress) {
    const QString share =
        progress.total > 0 ? u"（%1 / %2）"_s.arg(progress.done).arg(progress.total) : QString();
    controls_.step->setText(shortened(progress.step, longestShownName) + share);
    showShare(*controls_.progress, progress.done, progress.total, progress.timeLeft);
}

void RunPanel::say(const QString& words) {
    controls_.words->setText(shortened(words, longestShownMessage));
    controls_.words->setVisible(!words.isEmpty());
}

}  // namespace guanchao
