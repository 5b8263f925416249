#include "exchange/kept_copies.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <utility>

#include "base/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString beforeRestoreWord = u"恢复前"_s;
constexpr qsizetype dayLength = 10;

qint64 bytesIn(const QString& folder) {
    qint64 bytes = 0;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) {
        bytes += file.size();
    }
    return bytes;
}

QString inFolder(const QString& folder, const StoreFile& store) {
    return folder + QFileInfo(store.path).fileName();
}

// By its year too: the first days of one can belong to the last week of the other.
std::pair<int, int> weekOf(const QDate& day) {
    int year = 0;
    const int week = day.weekNumber(&year);
    return {year, week};
}

// The names of those that the days and weeks keep.
QSet<QString> keptByAge(const QList<KeptCopy>& copies) {
    QSet<QString> kept;
    QSet<std::pair<int, int>> weeks;
    int days = 0;
    int olderWeeks = 0;
    int beforeRestores = 0;
    for (const KeptCopy& copy : copies) {
        if (copy.beforeRestore) {
            if (++beforeRestores <= beforeRestoresKept) {
                kept << copy.name;
            }
            continue;
        }
        const bool newestOfWeek = !weeks.contains(weekOf(copy.day));
        weeks << weekOf(copy.day);
        if (++days <= daysKept || (newestOfWeek && ++olderWeeks <= weeksKept)) {
            kept << copy.name;
        }
    }
    return kept;
}

}  // namespace

QString copiesFolder(const QString& applicationFolder) {
    return applicationFolder + u"备份/"_s;
}

QString dailyCopyName(const QDate& day) {
    return dateText(day);
}

QString beforeRestoreName(const QDateTime& now) {
    return now.toString(u"yyyy-MM-dd hh.mm.ss "_s) + beforeRestoreWord;
}

QString wordOf(CopiedStore store) {
    switch (store) {
        case CopiedStore::main:
            return u"主题库"_s;
        case CopiedStore::article:
            return u"文章库"_s;
        case CopiedStore::heat:
            return u"采集库"_s;
    }
    return {};
}

QString wordsOf(const QList<CopiedStore>& stores) {
    QStringList words;
    for (const CopiedStore store : stores) {
        words << wordOf(store);
    }
    return words.join(u'、');
}

const StoreFile& fileOf(const Stores& stores, CopiedStore store) {
    switch (store) {
        case CopiedStore::article:
            return stores.article;
        case CopiedStore::heat:
            return stores.heat;
        case CopiedStore::main:
            break;
    }
    return stores.main;
}

Stores storesOfCopy(const Stores& stores, const QString& folder) {
    Stores copied;
    copied.main = {inFolder(folder, stores.main), stores.main.key};
    copied.article = {inFolder(folder, stores.article), stores.article.key};
    copied.heat = {inFolder(folder, stores.heat), stores.heat.key};
    return copied;
}

QList<KeptCopy> keptCopies(const QString& folder) {
    QList<KeptCopy> copies;
    for (const QString& name :
         QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
        const QDate day = QDate::fromString(name.left(dayLength), Qt::ISODate);
        const bool beforeRestore = name.endsWith(beforeRestoreWord);
        if (day.isValid() && (beforeRestore || name == dailyCopyName(day))) {
            copies << KeptCopy{name, day, beforeRestore, bytesIn(folder + name)};
        }
    }
    return copies;
}

QList<KeptCopy> copiesToGo(const QList<KeptCopy>& copies, qint64 mostBytes) {
    const QSet<QString> kept = keptByAge(copies);
    const auto newest = std::find_if(copies.cbegin(), copies.cend(),
                                     [](const KeptCopy& it) { return !it.beforeRestore; });
    QList<KeptCopy> go;
    qint64 bytes = 0;
    for (auto copy = copies.cbegin(); copy != copies.cend(); ++copy) {
        const bool stays = kept.contains(copy->name) && bytes + copy->bytes <= mostBytes;
        if (copy == newest || stays) {
            bytes += copy->bytes;
        } else {
            go.prepend(*copy);
        }
    }
    return go;
}

}  // namespace guanchao
