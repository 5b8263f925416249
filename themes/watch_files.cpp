#include "themes/watch_files.h"

#include <QSet>
#include <optional>

#include "base/activity.h"
#include "base/values.h"
#include "formats/text_file.h"
#include "services/stock_code.h"
#include "store/recordset.h"
#include "themes/watch_tables.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostNamed = 10;

QString named(const QStringList& parts) {
    const QString more = parts.size() > mostNamed ? u"……"_s : QString();
    return parts.first(std::min(parts.size(), mostNamed)).join(u"、"_s) + more;
}

// Of a bare number the exchange is the usual one, if the code table has that.
std::optional<QString> listedCode(Connection& store, const QString& code) {
    const bool isBare = code.size() == codeDigits;
    const QStringList tried = isBare ? QStringList{exchangeOf(code) + code, u"SH"_s + code,
                                                   u"SZ"_s + code, u"BJ"_s + code}
                                     : QStringList{code};
    for (const QString& dm : tried) {
        if (shortName(store, dm)) {
            return dm;
        }
    }
    return std::nullopt;
}

bool hasNote(Connection& store, const QString& dm) {
    return Recordset(store, u"select dm from gegubeizhu where dm="_s + quoted(dm)).count() > 0;
}

// What is written of a block.
class BlockImport {
public:
    BlockImport(Connection& store, const QString& list) : store_(store), list_(list) {}

    void take(const BlockStock& stock) {
        const std::optional<QString> dm = listedCode(store_, stock.code);
        if (!dm) {
            result_.unknown << stock.code;
        } else if (taken_.contains(*dm)) {
            ++result_.repeated;
        } else {
            taken_ << *dm;
            add(*dm, stock.note);
        }
    }

    const WatchImport& result() const { return result_; }

private:
    void add(const QString& dm, const QString& note) {
        const bool isThere = isOnList(store_, list_, dm);
        ++(isThere ? result_.present : result_.added);
        if (!isThere) {
            addToList(store_, list_, dm, shortName(store_, dm).value_or(QString()));
        }
        if (!note.isEmpty() && !hasNote(store_, dm)) {
            writeNote(store_, dm, note);
        }
    }

    Connection& store_;
    QString list_;
    QSet<QString> taken_;
    WatchImport result_;
};

}  // namespace

QString WatchImport::words(const QString& list) const {
    QStringList lines = {u"导入到“%1”：添加了 %2 只股票。"_s.arg(shownNameOf(list)).arg(added)};
    if (present > 0) {
        lines << u"%1 只已经在列表里。"_s.arg(present);
    }
    if (repeated > 0) {
        lines << u"重复的有 %1 只。"_s.arg(repeated);
    }
    if (!unknown.isEmpty()) {
        lines << u"代码表里没有的 %1 只，没有添加：%2"_s.arg(unknown.size()).arg(named(unknown));
    }
    if (!unread.isEmpty()) {
        QStringList numbers;
        for (const int line : unread) {
            numbers << QString::number(line);
        }
        lines << u"读不出代码的 %1 行：第 %2 行"_s.arg(unread.size()).arg(named(numbers));
    }
    if (!encoding.isEmpty()) {
        lines << u"文件按 %1 读取。"_s.arg(encoding);
    }
    return lines.join(u'\n');
}

WatchImport importBlock(const Stores& stores, const QString& path, const QString& list) {
    const Activity activity(u"导入自选股"_s, u"列表没有改变。"_s);
    const auto [lines, encoding] = readTextFile(path);
    WatchImport result = importLines(stores, lines, list);
    result.encoding = encoding;
    return result;
}

WatchImport importLines(const Stores& stores, const QStringList& lines, const QString& list) {
    const Activity activity(u"导入自选股"_s, u"列表没有改变。"_s);
    const BlockFile file = readBlock(lines);
    Connection store = stores.main.open();
    Transaction transaction(store);
    makeWatchTables(store);
    BlockImport import(store, list);
    for (const BlockStock& stock : file.stocks) {
        import.take(stock);
    }
    transaction.commit();
    WatchImport result = import.result();
    result.unread = file.unread;
    return result;
}

QString offeredBlockName(const QString& list) {
    QString name = shownNameOf(list);
    return name.replace(u'/', u'-') + u".EBK"_s;
}

QStringList blockFilters() {
    return {u"板块文件(*.EBK)"_s, u"板块文件(*.blk)"_s, u"CSV 表格(*.csv)"_s};
}

}  // namespace guanchao
