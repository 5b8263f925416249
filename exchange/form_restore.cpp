#include "exchange/form_restore.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QScopeGuard>

#include "base/short_amounts.h"
#include "base/values.h"
#include "base/worker.h"
#include "exchange/user_files.h"
#include "grid/table_columns.h"
#include "ui_form_restore.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 600;
const QList<TableColumn> firstColumns = {
    {u"日期"_s, 1200}, {u"时间"_s, 1100}, {u"来源"_s, 1100}, {u"大小"_s, 1000}};
constexpr int countWidth = 900;

const QString unreadable = u"不能读取"_s;

QDateTime madeAt(const Stores& stores, const QString& folder) {
    return QFileInfo(storesOfCopy(stores, folder).main.path).lastModified();
}

QList<CopiedStore> unreadableOf(const StoreContents& contents) {
    QList<CopiedStore> stores;
    for (const auto& [store, content] : contents.asKeyValueRange()) {
        if (!content.isReadable()) {
            stores << store;
        }
    }
    return stores;
}

// 主题库不能读取（已损坏），采集库不能读取（没有这个文件）
QString faultWords(const StoreContents& contents) {
    QStringList words;
    for (const CopiedStore store : unreadableOf(contents)) {
        words << wordOf(store) + contents[store].words(store);
    }
    return words.join(u'，');
}

// `files` are the user's files that the copy has, as after a takeover.
QString question(const CopyChoice& choice, const StoreContents& present,
                 const StoreContents& copied, const QStringList& files) {
    QStringList swaps;
    QStringList stays;
    StoreContents lost;
    for (const CopiedStore store : allCopied) {
        const QString here = u"现在有："_s + present[store].words(store);
        if (choice.stores.contains(store)) {
            swaps << wordOf(store) + u'\n' + here + u"\n备份里有："_s + copied[store].words(store);
            lost[store] = present[store];
        } else {
            stays << wordOf(store) + u"不换，"_s + here;
        }
    }
    QString text = u"确实要用备份 "_s + choice.copy + u" 换掉现在的"_s + wordsOf(choice.stores) +
                   u"吗?\n\n"_s + (swaps + stays).join(u"\n\n"_s) +
                   (files.isEmpty() ? QString() : u"\n\n也换回来："_s + files.join(u'、')) +
                   u"\n\n现在的数据先另存一份，还可以在这个窗口里换回来。"_s;
    const QList<CopiedStore> gone = unreadableOf(lost);
    if (!gone.isEmpty()) {
        text += u"现在的"_s + wordsOf(gone) + u"不能读取，换不回来。"_s;
    }
    return text + u"其他窗口会关闭。"_s;
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
    ui_->copies->allowExport(environment_.dialogs, environment_.failures);
    ui_->copies->setHint(u"还没有备份\n\n软件开着时每天自动备份一次"_s);
    connect(ui_->copies, &GridView::rowChosen, this, &FormRestore::showMarked);
    for (const CopiedStore store : allCopied) {
        connect(boxOf(store), &QCheckBox::clicked, this, [this, store](bool on) {
            left_.removeAll(store);
            if (!on) {
                left_ << store;
            }
            enableRestore();
        });
    }
    connect(ui_->restore, &QPushButton::clicked, this, [this] {
        if (!runs_.running()) {
            runs_.start([this](std::stop_token stop) { return ask(stop); });
        }
    });
    connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
    showMarked();
    runs_.start([this](std::stop_token stop) { return list(stop); });
}

FormRestore::~FormRestore() = default;

QCheckBox* FormRestore::boxOf(CopiedStore store) const {
    switch (store) {
        case CopiedStore::article:
            return ui_->articleStore;
        case CopiedStore::heat:
            return ui_->heatStore;
        case CopiedStore::main:
            break;
    }
    return ui_->mainStore;
}

QCoro::Task<> FormRestore::list(std::stop_token stop) {
    const auto job = [stores = environment_.stores, folder = folder_,
                      copies = copies_](const auto& work) {
        QList<StoreContents> contents;
        for (const KeptCopy& copy : copies) {
            work.endIfAbandoned();
            const Stores copied = storesOfCopy(stores, folder + copy.name + u'/');
            contents << contentsOf(allCopied, copied, Look::quick);
        }
        return contents;
    };
    contents_ = co_await inWorker(job, stop);
    showCopies();
    showMarked();
}

void FormRestore::showCopies() {
    if (copies_.isEmpty()) {
        return;
    }
    QList<TableColumn> columns = firstColumns;
    for (const CopiedStore store : allCopied) {
        for (const StoreCount& count : countsOf(store)) {
            columns << TableColumn{count.title, countWidth};
        }
    }
    const GridFill fill(grid_);
    beginTable(grid_, columns, copies_.size(), numberWidth);
    for (int row = 1; row <= copies_.size(); ++row) {
        fillRow(row, copies_[row - 1], contents_[row - 1]);
    }
    grid_.biaoji(1);
}

void FormRestore::fillRow(int row, const KeptCopy& copy, const StoreContents& contents) {
    const QDateTime made = madeAt(environment_.stores, folder_ + copy.name + u'/');
    grid_.setTextMatrix(row, 1, dateText(copy.day));
    grid_.setTextMatrix(row, 2, made.toString(u"hh:mm:ss"_s));
    grid_.setTextMatrix(row, 3, copy.beforeRestore ? u"恢复之前"_s : u"每日备份"_s);
    grid_.setTextMatrix(row, 4, sizeWords(copy.bytes));
    int col = static_cast<int>(firstColumns.size()) + 1;
    for (const CopiedStore store : allCopied) {
        const StoreContent& content = contents[store];
        for (qsizetype it = 0; it < countsOf(store).size(); ++it, ++col) {
            if (content.isReadable()) {
                grid_.setInteger(row, col, content.counts[it]);
            } else {
                grid_.setTextMatrix(row, col, unreadable);
            }
        }
    }
}

// What of the marked copy can be chosen, and why the rest can't.
void FormRestore::showMarked() {
    const int row = grid_.markedRow();
    const StoreContents contents = row > 0 ? contents_[row - 1] : StoreContents();
    for (const CopiedStore store : allCopied) {
        const bool canGo = row == 0 || contents[store].isReadable();
        boxOf(store)->setEnabled(canGo);
        boxOf(store)->setChecked(canGo && !left_.contains(store));
    }
    ui_->unreadable->setText(faultWords(contents));
    enableRestore();
}

void FormRestore::enableRestore() {
    ui_->restore->setEnabled(grid_.markedRow() > 0 && !choice().stores.isEmpty());
}

CopyChoice FormRestore::choice() const {
    CopyChoice wanted{copies_.value(grid_.markedRow() - 1).name, {}};
    for (const CopiedStore store : allCopied) {
        if (boxOf(store)->isChecked()) {
            wanted.stores << store;
        }
    }
    return wanted;
}

QCoro::Task<> FormRestore::ask(std::stop_token stop) {
    const CopyChoice chosen = choice();
    const StoreContents copied = contents_[grid_.markedRow() - 1];
    const bool whole = co_await isWhole(chosen, stop);
    if (!whole) {
        co_return;
    }
    const auto job = [stores = environment_.stores](const auto&) {
        return contentsOf(allCopied, stores, Look::quick);
    };
    const StoreContents present = co_await inWorker(job, stop);
    const QString text = question(chosen, present, copied, userFileWords(chosen.folder(folder_)));
    const bool wanted = co_await environment_.dialogs.ask(stop, text);
    if (wanted) {
        emit agreed(chosen);
    }
}

// Damage that the counts have not met is shown as if they had.
QCoro::Task<bool> FormRestore::isWhole(CopyChoice chosen, std::stop_token stop) {
    const int row = grid_.markedRow();
    ui_->unreadable->setText(u"正在检查备份…"_s);
    const auto end = qScopeGuard([this] { showMarked(); });
    const auto job = [stores = environment_.stores, folder = folder_, chosen](const auto&) {
        return contentsOf(chosen.stores, storesOfCopy(stores, chosen.folder(folder)), Look::whole);
    };
    const StoreContents found = co_await inWorker(job, stop);
    contents_[row - 1].insert(found);
    fillRow(row, copies_[row - 1], contents_[row - 1]);
    const QString faults = faultWords(found);
    if (!faults.isEmpty()) {
        environment_.dialogs.tell(u"备份 "_s + chosen.copy + u" 的"_s + faults + u"。"_s);
    }
    co_return faults.isEmpty();
}

}  // namespace guanchao
