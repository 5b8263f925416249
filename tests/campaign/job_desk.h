// What an operation of the campaign works on: the stores of an application folder, a market for all
// services, a clock that stands still, and a user who agrees and types the last argument.
#pragma once

#include <QTextStream>
#include <map>

#include "exchange/backup_export.h"
#include "exchange/kept_copies.h"
#include "exchange/text_import.h"
#include "exchange/theme_import.h"
#include "heat/commodity_editor.h"
#include "market/quote_feed.h"
#include "platform/qt_http_client.h"
#include "services/services.h"
#include "tests/support/fakes.h"
#include "themes/theme_commands.h"
#include "themes/theme_editing.h"
#include "utilities/proxies.h"

namespace guanchao {

inline void print(const QString& line) {
    QTextStream(stdout) << line << Qt::endl;
}

struct JobDesk {
    JobDesk(const QString& applicationFolder, const QString& host, const QStringList& words)
        : folder(applicationFolder),
          arguments(words),
          services(readServices(folder + u"services.ini"_s)) {
        services.vendor.host = host;
        services.quote = services.history = {services.vendor};
        dialogs.typed = dialogs.picked = words.isEmpty() ? QString() : words.last();
        globals.yingyongmulu = folder;
        globals.jiankongkaiqi = 1;
    }

    QString argument(int at = 0) const { return arguments.value(at); }
    // The practice market is of every kind.
    Service listing() const {
        Service service = services.vendor;
        service.kind = u"sina"_s;
        return service;
    }
    // As a user who tries it again, since the program still holds what it takes.
    void onceMore(const std::function<void()>& step) {
        try {
            step();
        } catch (const OperationError& failure) {
            failures.report(failure);
            step();
        }
    }

    QString folder;
    QStringList arguments;
    Stores stores = storesIn(folder);
    Services services;
    FakeFailures failures;
    Globals globals;
    FakeClock clock;
    FakeDialogs dialogs;
    QtHttpClient client;
    QuoteFeed feed{stores, globals, clock, QuoteSource(client, clock, services.quote)};
    ExchangeRun exchange{[](const ShownExchange&) {}};
    Removals removals{copiesFolder(folder) + u"撤消/"_s};
    Edits edits{removals};
    BackupExport exports{stores, dialogs, exchange};
    TextImport textImport{stores, clock, dialogs, exchange};
    ThemeImport themeImport{stores, clock, dialogs, exchange, removals, edits};
    ThemeCommands themes{stores, clock, dialogs, removals, edits};
    ThemeEditing editing{stores, clock, dialogs, edits};
    CommodityEditor commodities{stores, globals, dialogs, removals};
    Proxies proxies{stores, dialogs, client, services.vendor};
};

// The operations by their words: runs that wait, and steps.
using Stop = std::stop_token;
using Run = QCoro::Task<> (*)(JobDesk& it, Stop stop);
using Step = void (*)(JobDesk& it);
std::map<QString, Run> runs();
std::map<QString, Step> steps();

}  // namespace guanchao
