#include "exchange/board_tally.h"

#include <algorithm>

#include "services/service_names.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype shownBoards = 5;

QString heading(const BoardTally& tally) {
    if (!tally.ending.isEmpty()) {
        return u"没有导入完："_s + tally.ending + u"。已经导入的都已保留。"_s;
    }
    if (tally.stopped) {
        return u"已停止，已经导入的都已保留。"_s;
    }
    return tally.failed.isEmpty()
               ? u"导入完成。"_s
               : u"没有导入完：有 %1 个板块没有读到。"_s.arg(tally.failed.size());
}

QString firstOf(const QStringList& boards) {
    const QString more = boards.size() > shownBoards ? u" 等"_s : QString();
    return boards.first(std::min(boards.size(), shownBoards)).join(u'、') + more;
}

QString failedWords(const QList<BoardTally::Failed>& failed, const QString& again) {
    QStringList boards;
    for (const BoardTally::Failed& it : failed) {
        boards << u"%1（%2）"_s.arg(it.board, it.why);
    }
    return u"%1 个板块没有读到：%2。\n"_s.arg(failed.size()).arg(firstOf(boards)) + again;
}

}  // namespace

bool BoardTally::isNothing() const {
    return boards == 0 && failed.isEmpty() && nameless.isEmpty() && !stopped;
}

QString BoardTally::words() const {
    return words(u"它们还勾着。"_s + adviceOn({}, u"过一会儿再点“导入”就补上"_s));
}

QString BoardTally::words(const QString& again) const {
    QStringList lines = {
        heading(*this) +
        u"导入了 %1 个板块：新主题 %2 个，新成份股 %3 条。"_s.arg(boards).arg(themes).arg(members)};
    if (members > 0 && !isShown) {
        lines << u"新成份股的关注度是 0：在主窗口的“关注度大于”里写 -1，按 F5 就显示。"_s;
    }
    if (!failed.isEmpty()) {
        lines << failedWords(failed, again);
    }
    if (!nameless.isEmpty()) {
        lines << u"%1 个板块的名称不能作主题名（只有数字，或超过 20 个字），没有导入：%2。"_s
                     .arg(nameless.size())
                     .arg(firstOf(nameless));
    }
    if (strangers > 0) {
        lines << u"%1 条成份股不是沪深 A 股，没有导入。"_s.arg(strangers);
    }
    return lines.join(u'\n');
}

}  // namespace guanchao
