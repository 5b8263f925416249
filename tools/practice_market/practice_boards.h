// The boards of the practice market, in the shapes of Sina and Eastmoney: its themes are the
// concepts, the markets of the exchanges its industries, the exchanges its regions; and the lists
// of all stocks. Both kinds tell the same stocks, in the order of their codes. Nothing is thrown.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <optional>
#include <vector>

#include "tools/practice_market/practice_quotes.h"

namespace guanchao {

struct PracticeBoard {
    QString node;  // of Sina
    QString key;   // of Eastmoney
    QString name;
    QStringList codes;
};

class PracticeBoards {
public:
    // Rows of theme and code, as THEMES.csv has them; codes that aren't listed are left out.
    explicit PracticeBoards(const std::vector<PracticeStock>& stocks = {},
                            const QList<QStringList>& memberships = {});

    // Sina's in GBK, Eastmoney's in UTF-8; nothing for a path of neither.
    std::optional<QByteArray> reply(const QString& target) const;

private:
    struct Sort {
        QString sina;       // its word in a request: class
        QString eastmoney;  // t:3
        QList<PracticeBoard> boards;
    };

    void add(Sort& sort, const QString& prefix, const QMap<QString, QStringList>& boards);
    QString sinaBoards(const QString& word) const;
    QStringList stocksOf(bool ofBeijing) const;
    QStringList codesOf(const QString& node) const;
    QString sinaStocks(const QString& node, int page, int rows) const;
    QString eastmoneyStock(const QString& code) const;
    QString eastmoneyPage(const QString& wanted, int page, int rows) const;

    QMap<QString, QString> names_;  // by code
    QList<Sort> sorts_;
};

}  // namespace guanchao
