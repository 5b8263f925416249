#include "store/store_error.h"

namespace guanchao {

namespace {

thread_local const Activity* innermost = nullptr;

}  // namespace

Activity::Activity(const QString& name) : outer_(innermost), name_(name) {
    innermost = this;
}

Activity::~Activity() {
    innermost = outer_;
}

QString Activity::current() {
    return innermost ? innermost->name_ : QString();
}

QStringList Activity::currentlyWritten() {
    return innermost ? innermost->written_ : QStringList();
}

OperationError::OperationError(const QString& reason)
    : std::runtime_error(reason.toStdString()),
      reason_(reason),
      activity_(Activity::current()),
      written_(Activity::currentlyWritten()) {}

StoreError::StoreError(const QString& reason, const QString& path, const QString& statement)
    : OperationError(reason), path_(path), statement_(statement) {}

}  // namespace guanchao
