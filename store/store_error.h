// The one failure that a store raises, and the note of what the program was doing at that moment
// and what of it was written for good already.
#pragma once

#include <QString>
#include <QStringList>
#include <stdexcept>

namespace guanchao {

// Names what is being done ("更新行情数据") for as long as it lives; the innermost one counts.
class Activity {
public:
    explicit Activity(const QString& name);
    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

    // Notes a part that is written and stays so if a later one fails ("主题库").
    void wrote(const QString& part) { written_ << part; }

    static QString current();
    static QStringList currentlyWritten();

private:
    const Activity* outer_;
    QString name_;
    QStringList written_;
};

// An operation that could not be carried out, with the activity during which it failed.
class OperationError : public std::runtime_error {
public:
    explicit OperationError(const QString& reason);

    const QString& reason() const { return reason_; }
    const QString& activity() const { return activity_; }
    // The parts of the activity that stay written; empty if nothing was.
    const QStringList& written() const { return written_; }

private:
    QString reason_;
    QString activity_;
    QStringList written_;
};

// A failed opening or statement: `reason` is the store's own message.
class StoreError : public OperationError {
public:
    StoreError(const QString& reason, const QString& path, const QString& statement);

    const QString& path() const { return path_; }
    const QString& statement() const { return statement_; }

private:
    QString path_;
    QString statement_;
};

}  // namespace guanchao
