#include "store/bound_insert.h"

#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

BoundInsert::BoundInsert(Connection& connection, const QString& statement)
    : connection_(connection), text_(statement), statement_(prepare(connection, statement)) {}

void BoundInsert::row(const QStringList& values) {
    // A value that is missing would be the one of the row before.
    if (values.size() != sqlite3_bind_parameter_count(statement_.get())) {
        throw StoreError(u"值的个数不对"_s, connection_.path(), text_);
    }
    for (int at = 0; at < values.size(); ++at) {
        const QByteArray text = values[at].toUtf8();
        sqlite3_bind_text(statement_.get(), at + 1, text.constData(), static_cast<int>(text.size()),
                          SQLITE_TRANSIENT);
    }
    if (sqlite3_step(statement_.get()) != SQLITE_DONE) {
        raiseLastFailure(connection_, text_);
    }
    sqlite3_reset(statement_.get());
}

}  // namespace guanchao
