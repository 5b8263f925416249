#include "exchange/form_restore.h"

#include <QFileInfo>
#include <QLocale>

#include "base/values.h"
#include "base/worker.h"
#include "store/store_error.h"
#include "ui_form_restore.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList titles = {u"序号"_s, u"日期"_s, u"时间"_s, u"来源"_s, u"大小"_s,
                            u"主题"_s, u"条数"_s, u"股票"_s, u"文章"_s, u"监控"_s};
const QList<int> widths = {600, 1500, 1100, 1300, 1100, 800, 900, 800, 800, 800};
constexpr int firstCount = 5;

PossibleCounts countsOf(const Stores& stores) {
    try {
        return readCounts(stores);
    } catch (const StoreError&) {
        return std::nullopt;
    }
}

QString wordsOf(const PossibleCounts& counts) {
    return counts ? counts->words() : u"不能读取"_s;
}

QDateTime madeAt(const Stores& stores, const QString& folder) {
    return QFileInfo(storesOfCopy(stores, folder).main.path).lastModified();
}

}  // namespace

FormRestore::FormRestore(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::FormRestore>()),
      folder_(copiesFolder(environment.applicationFolder)),
      copies_(keptCopies(folder_)),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->copies->setGrid(grid_);
    ui_->copies->setHint(u"还没有备份\n\n软件开着时每天自动备份一次"_s);
    connect(ui_->copies, &GridView::rowChosen, this, &FormRestore::enableRestore);
    connect(ui_->restore, &QPushButton::clicked, this,
            [this] { runs_.start([this](std::stop_token stop) { return ask(stop); }); });
    connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
    enableRestore();
    runs_.start([this](std::stop_token stop) { return list(stop); });
}

FormRestore::~FormRestore() = default;

QCoro::Task<> FormRestore::list(std::stop_token stop) {
    const auto job = [stores = environment_.stores, folder = folder_,
                      copies = copies_](const auto& work) {
        QList<PossibleCounts> counts;
        for (const KeptCopy& copy : copies) {
            work.endIfAbandoned();
            counts << countsOf(storesOfCopy(stores, folder + copy.name + u'/'));
        }
        return counts;
    };
    const QList<PossibleCounts> counts = co_await inWorker(job, stop);
    showCopies(counts);
    enableRestore();
}

void FormRestore::showCopies(const QList<PossibleCounts>& counts) {
    if (copies_.isEmpty()) {
        return;
    }
    const GridFill fill(grid_);
    grid_.setRows(static_cast<int>(copies_.size()) + 1);
    grid_.setCols(static_cast<int>(titles.size()));
    for (int col = 0; col < titles.size(); ++col) {
        grid_.setTextMatrix(0, col, titles[col]);
    }
    for (int row = 1; row <= copies_.size(); ++row) {
        fillRow(row, copies_[row - 1], counts[row - 1]);
    }
    grid_.setColWidths(widths);
    grid_.biaoji(1);
}

void FormRestore::fillRow(int row, const KeptCopy& copy, const PossibleCounts& counts) {
    const QDateTime made = madeAt(environment_.stores, folder_ + copy.name + u'/');
    grid_.setInteger(row, 0, row);
    grid_.setTextMatrix(row, 1, dateText(copy.day));
    grid_.setTextMatrix(row, 2, made.toString(u"hh:mm:ss"_s));
    grid_.setTextMatrix(row, 3, copy.beforeRestore ? u"恢复之前"_s : u"每日备份"_s);
    grid_.setTextMatrix(
        row, 4, QLocale::c().formattedDataSize(copy.bytes, 1, QLocale::DataSizeTraditionalFormat));
    if (!counts) {
        grid_.setTextMatrix(row, firstCount, u"不能读取"_s);
        return;
    }
    int col = firstCount;
    for (const qint64 count : {counts->themes, counts->memberships, counts->stocks,
                               counts->articles, counts->monitors}) {
        grid_.setInteger(row, col++, count);
    }
}

void FormRestore::enableRestore() {
    ui_->restore->setEnabled(grid_.markedRow() > 0);
}

QCoro::Task<> FormRestore::ask(std::stop_token stop) {
    const QString name = copies_[grid_.markedRow() - 1].name;
    const auto job = [stores = environment_.stores,
                      folder = QString(folder_ + name + u'/')](const auto&) -> QString {
        return wordsOf(countsOf(stores)) + u"\n备份里有："_s +
               wordsOf(countsOf(storesOfCopy(stores, folder)));
    };
    const QString counts = co_await inWorker(job, stop);
    const bool wanted = co_await environment_.dialogs.ask(
        stop, u"确实要用备份 "_s + name + u" 换掉现在的主题库、文章库和采集库吗?\n\n现在有："_s +
                  counts +
                  u"\n\n现在的数据先另存一份，还可以在这个窗口里换回来。其他窗口会关闭。"_s);
    if (wanted) {
        emit agreed(name);
    }
}

}  // namespace guanchao
