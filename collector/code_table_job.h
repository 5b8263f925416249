// 更新代码表: asks the quote services for every code that a stock can have and brings the code
// table of the main store up to date: new codes enter, changed short names are corrected, nothing
// is deleted. A batch of codes is an item.
#pragma once

#include "collector/job.h"
#include "formats/initials.h"
#include "platform/clock.h"
#include "store/stores.h"

namespace guanchao {

class CodeTableJob : public Job {
public:
    // Raises OperationError where there is no service to ask.
    CodeTableJob(const Stores& stores, const Clock& clock, const Initials& initials,
                 QList<Service> quote);

    QString title() const override { return QStringLiteral("更新代码表"); }
    QList<Item> items() const override;
    bool endsWithMainProgram() const override { return false; }
    QList<Service> services() const override { return quote_; }
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override;
    std::optional<Fault> faultOf(const Item& item, const Asked& before,
                                 const QByteArray& page) const override;
    void write(const Item& item, const Asked& asked) override;

private:
    QString linesOf(const Item& item, const Asked& asked, const QByteArray& page) const;

    const Stores& stores_;
    const Clock& clock_;
    const Initials& initials_;
    QList<Service> quote_;
};

}  // namespace guanchao
