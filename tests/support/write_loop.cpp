// Writes to the heat store of a folder, without a pause, until it is killed: each transaction gives
// the commodities 甲 and 乙 the same new text. Writes one byte to the output after each.
#include <cstdio>

#include "store/stores.h"

using namespace guanchao;

int main(int, char** argv) {
    const Stores stores = storesIn(applicationFolder(QString::fromLocal8Bit(argv[1])));
    const QString update = QStringLiteral("update shopname set aboutgegu='%1' where shopname='%2'");
    for (int commits = 1;; ++commits) {
        const QString number = QString::number(commits);
        Connection heat = stores.heat.open();
        Transaction transaction(heat);
        heat.execute(update.arg(number, QStringLiteral("甲")));
        heat.execute(update.arg(number, QStringLiteral("乙")));
        transaction.commit();
        std::fputc('.', stdout);
        std::fflush(stdout);
    }
}
