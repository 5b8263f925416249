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

    // Tells what has come. Gives, in Chinese, what stands in the way, or that the user has stopped
    // it; empty if it is done. Raises StoreError or OperationError. The stores are as they were
    // unless it tells otherwise.
    QCoro::Task<QString> restore(CopyChoice choice, std::stop_token stop);

private:
    QCoro::Task<QString> obstacle(std::stop_token stop);
    void tellDone(const CopyChoice& choice, const QString& settings) const;
    QCoro::Task<> untilNothingIsWritten(std::stop_token stop);
    QString bringSettings(const CopyChoice& choice, const ReadyStores& ready) const;

    Environment& environment_;
    ExchangeRun& run_;
    EndOthers endOthers_;
    std::function<void()> showAnew_;
};

}  // namespace guanchao
