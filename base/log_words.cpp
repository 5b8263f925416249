#include "base/log_words.h"

#include <QRegularExpression>

#include "base/files.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestLogged = 300;
const QString leftOut = u"…"_s;

const QString ownFiles =
    u"(?:dzhzhuti|caijiqi|wenzhang|py|yzhutibackup)\\.mzdat|hangqing2006-2017(?:dan)?\\.db3|"
    "(?:services|caijiqi|read|banben|界面)\\.ini|services\\.ini\\.以前|initials\\.csv|"
    "(?:运行|采集)日志(?:\\.以前)?\\.log"_s;
const QString besideThem = u"(?:-journal|-wal|-shm|\\.lock|\\.new)?"_s;

// The menus and buttons to which failures send the user.
const QString ownNames =
    u"备份|补全|扫描|撤消删除|接管文件夹|工具 / 行情来源|工具 / 历史行情|数据 / 恢复…|"
    "数据 / 导入主题|主题 / 导入概念板块"_s;
const QString ownWords = u"“("_s + ownNames + u")”|“数据”菜单的“恢复…”"_s;
const QString hiddenWords = u"“…”"_s;

QString withoutAddresses(QString text) {
    static const QRegularExpression address(u"[A-Za-z][A-Za-z0-9+.-]*://\\S*"_s);
    QRegularExpressionMatch match = address.match(text);
    while (match.hasMatch()) {
        const QString shown = shownAddress(match.captured());
        text.replace(match.capturedStart(), match.capturedLength(), shown);
        match = address.match(text, match.capturedStart() + shown.size());
    }
    return text;
}

QString withoutSecrets(QString text) {
    static const QRegularExpression account(u"\\S+@\\S*"_s);
    static const QRegularExpression entry(
        u"(key|token|secret|password|passwd|pwd|密码|口令|密钥)\\s*[=:：]\\s*\\S+"_s,
        QRegularExpression::CaseInsensitiveOption);
    return text.replace(account, leftOut).replace(entry, u"\\1=…"_s);
}

QString withoutQuoted(QString text) {
    static const QRegularExpression quotes[] = {
        QRegularExpression(u"“(?:.*”|.*$)"_s),   QRegularExpression(u"‘(?:.*’|.*$)"_s),
        QRegularExpression(u"《(?:.*》|.*$)"_s), QRegularExpression(u"「(?:.*」|.*$)"_s),
        QRegularExpression(u"\"(?:.*\"|.*$)"_s), QRegularExpression(u"'(?:.*'|.*$)"_s)};
    for (const QRegularExpression& it : quotes) {
        text.replace(it, hiddenWords);
    }
    return text;
}

// Why the system refused stands behind the path.
QString systemReasonBehind(const QString& text) {
    const QString reason = systemReasonIn(text);
    return reason.isEmpty() ? reason : u"（"_s + reason + u"）"_s;
}

// The name of a folder may hold whatever also ends one: nothing behind its beginning is kept.
QString withoutPaths(const QString& text) {
    static const QRegularExpression path(u"(?:^|[^A-Za-z0-9/…])(~?/(?=[^\\s/]))"_s);
    static const QRegularExpression own(u"/("_s + ownFiles + u")(?![^\\s，。；：、（）“”])"_s);
    const QRegularExpressionMatch match = path.match(text);
    if (!match.hasMatch()) {
        return text;
    }
    const QString tail = text.mid(match.capturedStart(1));
    return text.left(match.capturedStart(1)) + leftOut +
           (own.match(tail).hasMatch() ? u"/"_s + own.match(tail).captured(1) : QString()) +
           systemReasonBehind(tail);
}

// Of a text with one such quote and no other: among more, one may be the user's.
QString withOwnWords(QString shown, const QString& text) {
    static const QString noQuote = u"[^“”‘’《》「」\"']*"_s;
    static const QRegularExpression only(u'^' + noQuote + u'(' + ownWords + u')' + noQuote + u'$');
    const QRegularExpressionMatch match = only.match(text);
    return match.hasMatch() ? shown.replace(hiddenWords, match.captured(1)) : shown;
}

QString printable(QString text) {
    text.removeIf([](QChar it) { return !it.isPrint() && !it.isSpace(); });
    return text.simplified();
}

QString safeWords(const QString& text) {
    const QString safe =
        withoutPaths(withoutQuoted(withoutSecrets(withoutAddresses(printable(text)))));
    return safe.size() > longestLogged ? safe.left(longestLogged) + leftOut : safe;
}

}  // namespace

QString loggable(const QString& text) {
    return withOwnWords(safeWords(text), text);
}

QString headOf(const QString& text) {
    static const QRegularExpression end(u"[：=]|:(?=\\s|$)| (?!…|[0-9]|(?:"_s + ownFiles +
                                        u")(?:[\\s，。；、（）]|$))"_s);
    const QString safe = safeWords(text);
    const QRegularExpressionMatch match = end.match(safe);
    if (!match.hasMatch()) {
        return withOwnWords(safe, text);
    }
    const QString head = safe.left(match.capturedEnd()) + leftOut;
    const QString reason = systemReasonIn(head).isEmpty() ? systemReasonBehind(safe) : QString();
    return withOwnWords(head + reason, text);
}

QString shownAddress(const QString& address) {
    static const QRegularExpression parts(
        u"^([A-Za-z][A-Za-z0-9+.-]*://)([A-Za-z0-9.-]+(?::[0-9]+)?)?(.*)$"_s);
    const QRegularExpressionMatch match = parts.match(address);
    if (!match.hasMatch() || match.captured(2).isEmpty() || address.contains(u'@')) {
        return address.isEmpty() ? address : match.captured(1) + leftOut;
    }
    const QString rest = match.captured(3);
    return match.captured(1) + match.captured(2) +
           (rest.isEmpty() || rest == u"/"_s ? QString() : u"/…"_s);
}

bool isOwnFile(const QString& name) {
    static const QRegularExpression own(u"^(?:"_s + ownFiles + u')' + besideThem + u'$');
    return own.match(name).hasMatch();
}

}  // namespace guanchao
