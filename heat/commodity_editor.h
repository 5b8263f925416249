// The list of commodities that the collector follows: adding, changing and deleting one by its
// name. Table shopname of the heat store, and shophq at a deletion. Nothing that is typed is
// checked. Failed statements raise StoreError.
#pragma once

#include <functional>
#include <optional>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "store/removals.h"
#include "store/stores.h"

namespace guanchao {

// A commodity as the window shows it and as it is typed there.
struct Commodity {
    QString name;
    QString stocks;     // 相关股票
    QString attention;  // 关注度; read as its leading number
};

// Of what the windows of commodities can take back.
inline const QString commodityPlace = QStringLiteral("商品");

// Asks, then deletes the commodity with its whole history, which can be taken back, and says so;
// false if the user refuses.
QCoro::Task<bool> deleteCommodity(const Stores& stores, Dialogs& dialogs, Removals& removals,
                                  QString name, std::stop_token stop);

class CommodityEditor {
public:
    using Show = std::function<void(const Commodity&)>;

    CommodityEditor(const Stores& stores, Globals& globals, Dialogs& dialogs, Removals& removals)
        : stores_(stores), globals_(globals), dialogs_(dialogs), removals_(removals) {}

    // The stored row of the current commodity, which is then forgotten; nothing for a new one.
    std::optional<Commodity> load();

    // A name that is there already is not touched: its stored row is shown.
    void add(const Commodity& typed, const Show& show);
    void modify(const Commodity& typed);
    QCoro::Task<> remove(QString name, std::stop_token stop);

    // For a commodity of the typed attention that the collector will pass by; empty if it is
    // collected.
    QString notCollectedWords(const QString& attention) const;

private:
    static std::optional<Commodity> stored(Connection& store, const QString& name);
    std::optional<Commodity> insertUnlessStored(const QString& name, const Commodity& typed);
    bool update(const QString& name, const Commodity& typed);

    const Stores& stores_;
    Globals& globals_;
    Dialogs& dialogs_;
    Removals& removals_;
};

}  // namespace guanchao
