// What happens in the program when stores of a copy, or of an earlier application folder with its
// settings, take the place of those that are here: the other windows close,
// what is under way ends, quotes and polls wait, and the main window shows what is there then.
#pragma once

#include <QString>
#include <functional>

#include "base/runs.h"
#include "exchange/exchange_run.h"
#include "exchange/restore.h"
#include "frame/environment.h"

namespace guanchao {

class RestoreDesk {
public:
    // `endOthers` ends what the main window has under way and returns when no worker is at a store.
    using EndOthers = std::function<QCoro::Task<>(std::stop_token stop)>;

    RestoreDesk(Environment& environment, ExchangeRun& run, EndOthers endOthers,
                std::function<void()> showAnew);

    // Tells how it has ended. Raises StoreError or OperationError; the stores are then as they
    // were.
    QCoro::Task<> restore(CopyChoice choice, std::stop_token stop);

private:
    QCoro::Task<bool> isFree(std::stop_token stop);
    QCoro::Task<> untilNothingIsWritten(std::stop_token stop);
    QString bringSettings(const CopyChoice& choice, const ReadyStores& ready) const;

    Environment& environment_;
    ExchangeRun& run_;
    EndOthers endOthers_;
    std::function<void()> showAnew_;
};

}  // namespace guanchao
