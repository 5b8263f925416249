#include "app/alarm_banner.h"

#include <QMouseEvent>
#include <QScreen>
#include <QStringList>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostLines = 6;
constexpr int distanceFromEdges = 24;

// The latest first.
QString wordsOf(const QList<FiredMonitor>& fired) {
    QStringList lines;
    for (auto it = fired.crbegin(); it != fired.crend() && lines.size() < mostLines; ++it) {
        lines << it->words;
    }
    if (fired.size() > lines.size()) {
        lines << u"还有 %1 个"_s.arg(fired.size() - lines.size());
    }
    return u"报警，点这里查看\n"_s + lines.join(u'\n');
}

}  // namespace

AlarmBanner::AlarmBanner()
    : QLabel(nullptr, Qt::ToolTip | Qt::X11BypassWindowManagerHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setObjectName(u"alarmBanner"_s);
    setAccessibleName(u"报警提示"_s);
    setTextFormat(Qt::PlainText);
    setMargin(12);
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
}

void AlarmBanner::tell(const QList<FiredMonitor>& fired) {
    setText(wordsOf(fired));
    setAccessibleDescription(text());
    adjustSize();
    const QRect room = screen()->availableGeometry();
    move(room.right() - width() - distanceFromEdges, room.top() + distanceFromEdges);
    show();
    raise();
}

void AlarmBanner::mousePressEvent(QMouseEvent* press) {
    press->accept();
    emit clicked();
}

}  // namespace guanchao
