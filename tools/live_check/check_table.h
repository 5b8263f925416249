// What came of the checks, a line a service, as a table.
#pragma once

#include <QTextStream>

#include "services/check_run.h"

namespace guanchao {

class CheckTable {
public:
    explicit CheckTable(QTextStream& out);

    void add(const CheckRow& row);

    // The purposes that have services, none of which answers.
    QStringList silent() const;

private:
    struct Told {
        QString title;
        bool isFine;
    };

    void write(const QStringList& cells);

    QTextStream& out_;
    QList<Told> told_;
};

}  // namespace guanchao
