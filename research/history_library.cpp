#include "research/history_library.h"

#include "research/history_state.h"
#include "services/stock_code.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isHistoryCode(const QString& dm) {
    return isWholeCode(dm) && hasExchange(dm) && dm != leadingIndex;
}

QList<HistoryCode> readCodes(Connection& main) {
    QList<HistoryCode> codes;
    for (Recordset rows(main, u"select upper(dm),jc from dmb order by upper(dm)"_s); !rows.atEnd();
         rows.moveNext()) {
        const QString dm = rows.value(0).toText();
        const bool isAnother = codes.isEmpty() || codes.last().dm != dm;
        if (isHistoryCode(dm) && isAnother) {
            codes << HistoryCode{dm, rows.value(1).toText()};
        }
    }
    return codes;
}

QList<ThemeMember> readMembers(Connection& main) {
    QList<ThemeMember> members;
    for (Recordset rows(main, u"select zhutiname,dm from dzhzhuti"_s); !rows.atEnd();
         rows.moveNext()) {
        members << ThemeMember{rows.value(0).toText(), rows.value(1).toText()};
    }
    return members;
}

}  // namespace

HistoryLibrary readHistoryLibrary(const StoreFile& main) {
    Connection store = main.open();
    return {readCodes(store), readMembers(store)};
}

}  // namespace guanchao
