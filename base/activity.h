// What the program is doing at a moment, and the failure that names it.
#pragma once

#include <QString>
#include <QStringList>
#include <stdexcept>

namespace guanchao {

// Names what is being done ("更新行情数据") for as long as it lives; the innermost one counts, and
// ends first, which none does that stands across an await: asserted.
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
    // `forLog` tells the same without a word that users have written; where it is empty the log
    // keeps the beginning of the reason.
    explicit OperationError(const QString& reason, const QString& forLog = {});

    const QString& reason() const { return reason_; }
    const QString& forLog() const { return forLog_; }
    const QString& activity() const { return activity_; }
    const QString& remains() const { return remains_; }

private:
    QString reason_;
    QString forLog_;
    QString activity_;
    QString remains_;
};

}  // namespace guanchao
