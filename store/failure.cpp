#include "store/failure.h"

#include <QFileInfo>
#include <algorithm>

#include "base/log.h"
#include "base/log_words.h"
#include "store/store_error.h"
#include "store/stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Of each day's copies.
bool isCopiedDaily(const QString& path) {
    const Stores own = storesIn({});
    const QString name = QFileInfo(path).fileName();
    return name == own.main.path || name == own.article.path || name == own.heat.path;
}

QString remedyOf(const QString& path) {
    return isCopiedDaily(path) ? u"，请用“数据”菜单的“恢复…”换上每天的备份。"_s
                               : u"，请换上完好的文件。"_s;
}

// Of one that is missing.
QString wayBackTo(const QString& path) {
    if (QFileInfo(path).fileName().startsWith(u"hangqing"_s)) {
        return u"历史行情请在“工具 / 历史行情”里补全。"_s;
    }
    return isCopiedDaily(path) ? u"请用“数据”菜单的“恢复…”换上每天的备份。"_s : QString();
}

bool hasHan(const QString& words) {
    return std::ranges::any_of(words, [](QChar c) { return c.script() == QChar::Script_Han; });
}

QString meaningOf(const StoreError& failure) {
    switch (failure.fault()) {
        case StoreFault::busy:
            return u" 正被其他程序占用，请稍后再试。"_s;
        case StoreFault::notADatabase:
            return u" 不是数据库，或者密码不对"_s + remedyOf(failure.path());
        case StoreFault::full:
            return u" 无法写入，磁盘已满，请腾出空间后再做。"_s;
        case StoreFault::readOnly:
            return u" 只能读取，没有写入的权限。"_s;
        case StoreFault::unreadable:
            return u" 无法读写，请检查磁盘空间、磁盘好坏和访问权限。"_s;
        case StoreFault::damaged:
            return u" 已损坏"_s + remedyOf(failure.path());
        case StoreFault::condition:
        case StoreFault::other:
            break;
    }
    return u" 执行语句失败。"_s;
}

// The failures that a user can do something about, in the user's language.
QString explanation(const StoreError& failure) {
    const QString file = QFileInfo(failure.path()).fileName();
    // A file that a failure has taken away was there.
    if (failure.fault() == StoreFault::unreadable && !QFileInfo::exists(failure.path())) {
        return u"找不到数据文件 "_s + failure.path() + u"。"_s + wayBackTo(failure.path());
    }
    if (failure.fault() == StoreFault::condition) {
        return u"条件写得不对。"_s;
    }
    if (!failure.holder().isEmpty()) {
        return u"数据文件 "_s + file + u" 正由“"_s + failure.holder() +
               u"”使用，请等它结束后再试。"_s;
    }
    return u"数据文件 "_s + file + meaningOf(failure);
}

// The library's own words are English: they count only where the explanation tells nothing.
bool saysMore(const StoreError& failure) {
    const bool onlyTheReasonTells =
        failure.fault() == StoreFault::other || failure.fault() == StoreFault::condition;
    return onlyTheReasonTells || hasHan(failure.reason());
}

// The library names what it doesn't know of a statement, which may be a user's word.
QString libraryWords(const StoreError& failure) {
    const bool isTyped = failure.fault() != StoreFault::other || hasHan(failure.reason()) ||
                         failure.reason().contains(u"no such column"_s);
    return isTyped ? QString() : u"（"_s + headOf(failure.reason()) + u"）"_s;
}

// A store that the user has picked has a name of its own.
QString loggedExplanation(const StoreError& failure) {
    const QString file = QFileInfo(failure.path()).fileName();
    const QString words = explanation(failure);
    return loggable(isOwnFile(file) ? words : QString(words).replace(file, u"…"_s));
}

void note(const std::exception& failure) {
    const auto* operation = dynamic_cast<const OperationError*>(&failure);
    const QString activity = operation ? headOf(operation->activity()) : QString();
    writeLog({LogKind::failure, activity, loggedReason(failure)});
}

}  // namespace

QString loggedReason(const std::exception& failure) {
    if (const auto* store = dynamic_cast<const StoreError*>(&failure)) {
        const QString holder =
            store->holder().isEmpty() ? QString() : u"，使用它的是"_s + headOf(store->holder());
        return loggedExplanation(*store) + holder + libraryWords(*store);
    }
    const auto* operation = dynamic_cast<const OperationError*>(&failure);
    if (operation && !operation->forLog().isEmpty()) {
        return loggable(operation->forLog());
    }
    return headOf(operation ? operation->reason() : QString::fromUtf8(failure.what()));
}

QString failureReason(const std::exception& failure) {
    note(failure);
    if (const auto* store = dynamic_cast<const StoreError*>(&failure)) {
        return explanation(*store);
    }
    const auto* operation = dynamic_cast<const OperationError*>(&failure);
    return operation ? operation->reason() : QString::fromUtf8(failure.what());
}

QString failureText(const std::exception& failure) {
    note(failure);
    const auto* operation = dynamic_cast<const OperationError*>(&failure);
    const bool named = operation && !operation->activity().isEmpty();
    const auto* store = dynamic_cast<const StoreError*>(&failure);
    QStringList reasons;
    if (store) {
        reasons << explanation(*store);
    }
    if (!store || saysMore(*store)) {
        reasons << u"原因："_s +
                       (operation ? operation->reason() : QString::fromUtf8(failure.what()));
    }
    QString text =
        (named ? operation->activity() : u"操作"_s) + u"没有完成。\n\n"_s + reasons.join(u'\n');
    if (named && !operation->remains().isEmpty()) {
        text += u"\n\n"_s + operation->remains();
    }
    return text;
}

}  // namespace guanchao
