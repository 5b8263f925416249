// The one failure that a store raises, and the note of what the program was doing at that moment.
#pragma once

#include <QString>
#include <QStringList>
#include <stdexcept>

namespace guanchao {

// Names what is being done ("更新行情数据") for as long as it lives; the innermost one counts.
class Activity {
public:
    // `remains` tells the user what a failure leaves written; most operations leave nothing.
    explicit Activity(const QString& name,
                      const QString& remains = QStringLiteral("这一步没有写入任何数据。"));
    ~Activity();
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

    // Notes a part that is written and stays so if a later one fails ("主题库"): from then on that
    // is what remains, also where an activity inside this one fails.
    void wrote(const QString& part);

    // While it lives nothing is being done: events that happen in the middle of an activity are
    // not its matter, nor are their failures.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        const Activity* paused_;
    };

    static QString currentName();
    static QString currentRemains();

private:
    const Activity* outer_;
    QString name_;
    QString remains_;
    QStringList written_;
};

// An operation that could not be carried out, with the activity during which it failed.
class OperationError : public std::runtime_error {
public:
    explicit OperationError(const QString& reason);

    const QString& reason() const { return reason_; }
    const QString& activity() const { return activity_; }
    const QString& remains() const { return remains_; }

private:
    QString reason_;
    QString activity_;
    QString remains_;
};

// What a user can do something about.
enum class StoreFault { other, busy, notADatabase, full, readOnly, unreadable, damaged };

// A failed opening or statement: `reason` is the store's own message, which each version of the
// library words in its own way; only `fault` tells what it means.
class StoreError : public OperationError {
public:
    StoreError(const QString& reason, const QString& path, const QString& statement,
               StoreFault fault = StoreFault::other);

    const QString& path() const { return path_; }
    const QString& statement() const { return statement_; }
    StoreFault fault() const { return fault_; }

private:
    QString path_;
    QString statement_;
    StoreFault fault_;
};

}  // namespace guanchao
