// The lists in Form30: their tabs, what is done with a list, and what goes from one to another.
#include <QSettings>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>

#include "base/files.h"
#include "base/worker.h"
#include "formats/text_file.h"
#include "grid/table_text.h"
#include "platform/pick_file.h"
#include "store/patience.h"
#include "themes/form30.h"
#include "themes/watch_files.h"
#include "themes/watch_tables.h"
#include "ui_form30.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString keptList() {
    return u"自选股/列表"_s;
}

QString emptyHint(const QString& list) {
    return list.isEmpty() ? u"还没有自选股\n\n在主窗口的个股表里右击一只股票，选“添加到自选股”"_s
                          : u"“%1”里还没有股票\n\n用“列表”里的“添加自选股”或“导入…”，"
                            u"也可以从别的列表复制过来"_s.arg(list);
}

}  // namespace

void Form30::setUpLists() {
    QTabBar& tabs = *ui_->lists;
    tabs.setExpanding(false);
    tabs.setDrawBase(false);
    tabs.setUsesScrollButtons(true);
    for (QToolButton* scrolls : tabs.findChildren<QToolButton*>()) {
        scrolls->setAccessibleName(u"更多列表"_s);
    }
    connect(&tabs, &QTabBar::currentChanged, this, &Form30::tabChosen);
    connect(&tabs, &QTabBar::tabBarDoubleClicked, this, [this] {
        if (!list_.isEmpty()) {
            重命名列表_Click();
        }
    });
    connect(&tabs, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        ui_->lists->setCurrentIndex(std::max(ui_->lists->tabAt(place), 0));
        listMenu_.popup(ui_->lists->mapToGlobal(place));
    });
    // As in windows of several pages.
    const auto step = [this](const QKeySequence& key, int by) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this, by] {
            const int count = ui_->lists->count();
            ui_->lists->setCurrentIndex((ui_->lists->currentIndex() + by + count) % count);
        });
    };
    addKey(ui_->粘贴, QKeySequence::Paste);
    step(Qt::CTRL | Qt::Key_Tab, 1);
    step(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
    listMenu_.addActions({ui_->添加自选股, ui_->新建列表, ui_->重命名列表, ui_->删除列表});
    listMenu_.addSeparator();
    listMenu_.addActions({ui_->粘贴, ui_->导入列表, ui_->导出列表});
    ui_->listCommands->setMenu(&listMenu_);
    command(ui_->新建列表, &Form30::新建列表_Click);
    command(ui_->重命名列表, &Form30::重命名列表_Click);
    command(ui_->删除列表, &Form30::删除列表_Click);
    command(ui_->粘贴, &Form30::粘贴_Click);
    command(ui_->导入列表, &Form30::导入列表_Click);
    command(ui_->导出列表, &Form30::导出列表_Click);
    connect(ui_->ownOrder, &QPushButton::clicked, this, &Form30::ownOrder_Click);
    connect(ui_->MSHFlexGrid1, &GridView::sortChanged, this, &Form30::showOrder);
    const QSettings kept(environment_.interfaceIniPath(), QSettings::IniFormat);
    list_ = kept.value(keptList()).toString();
    names_ = lists_.names();
    showTabs();
}

// A list that is no more gives way to the first.
void Form30::showTabs() {
    const QSignalBlocker quiet(ui_->lists);
    QTabBar& tabs = *ui_->lists;
    while (tabs.count() > 0) {
        tabs.removeTab(0);
    }
    tabs.addTab(watchlistName);
    for (const QString& name : names_) {
        // An ampersand is no key.
        tabs.addTab(QString(name).replace(u'&', u"&&"_s));
    }
    const qsizetype at = list_.isEmpty() ? 0 : names_.indexOf(list_) + 1;
    tabs.setCurrentIndex(static_cast<int>(at));
    tabChosen(static_cast<int>(at));
}

void Form30::tabChosen(int index) {
    list_ = index > 0 ? names_.value(index - 1) : QString();
    for (QAction* entry : {ui_->重命名列表, ui_->删除列表}) {
        entry->setEnabled(!list_.isEmpty());
    }
    ui_->MSHFlexGrid1->setHint(emptyHint(list_));
    QSettings kept(environment_.interfaceIniPath(), QSettings::IniFormat);
    if (kept.value(keptList()).toString() != list_) {
        kept.setValue(keptList(), list_);
    }
    refresh();
}

// With the tabs as the store has them now.
void Form30::showList(const QString& list) {
    runs_.start([this, list](std::stop_token stop) -> QCoro::Task<> {
        const auto step = [this] { return lists_.names(); };
        const QStringList names = co_await patiently(step, stop);
        names_ = names;
        list_ = list;
        showTabs();
        undoLine_->showLast();
    });
}

void Form30::fillTargets() {
    targets_.clear();
    for (const auto& [verb, way] : {std::pair(u"复制到"_s, WatchLists::Way::copy),
                                    std::pair(u"移动到"_s, WatchLists::Way::move)}) {
        for (const QString& list : QStringList(QString()) + names_) {
            if (list != list_) {
                addTarget(verb + u'“' + shownNameOf(list) + u'”', list, way);
            }
        }
        addTarget(verb + u"新建的列表…"_s, std::nullopt, way);
        targets_.addSeparator();
    }
}

// Nothing for a new list.
void Form30::addTarget(const QString& words, const std::optional<QString>& into,
                       WatchLists::Way way) {
    // An ampersand is no key.
    const QAction* entry = targets_.addAction(QString(words).replace(u'&', u"&&"_s));
    connect(entry, &QAction::triggered, this, [=, this] { transfer(into, way); });
}

void Form30::transfer(const std::optional<QString>& into, WatchLists::Way way) {
    const QStringList dms = codesIn(ui_->MSHFlexGrid1->selectedRows());
    runs_.start([=, this, from = list_](std::stop_token stop) {
        return into ? take(dms, from, *into, way, stop) : transferToNew(dms, from, way, stop);
    });
}

QCoro::Task<> Form30::transferToNew(QStringList dms, QString from, WatchLists::Way way,
                                    std::stop_token stop) {
    const std::optional<QString> made = co_await lists_.create(stop);
    if (made) {
        co_await take(dms, from, *made, way, stop);
        showList(from);
    }
}

QCoro::Task<> Form30::take(QStringList dms, QString from, QString into, WatchLists::Way way,
                           std::stop_token stop) {
    const auto step = [=, this] { return lists_.transfer(dms, from, into, way); };
    const QString words = co_await patiently(step, stop);
    say(words);
    refresh();
}

void Form30::新建列表_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const std::optional<QString> made = co_await lists_.create(stop);
        if (made) {
            showList(*made);
        }
    });
}

void Form30::重命名列表_Click() {
    runs_.start([this, list = list_](std::stop_token stop) -> QCoro::Task<> {
        const std::optional<QString> name = co_await lists_.rename(list, stop);
        if (name) {
            showList(*name);
        }
    });
}

void Form30::删除列表_Click() {
    runs_.start([this, list = list_](std::stop_token stop) -> QCoro::Task<> {
        const bool gone = co_await lists_.remove(list, stop);
        if (gone) {
            showList({});
        }
    });
}

void Form30::导入列表_Click() {
    runs_.start([this, list = list_](std::stop_token stop) -> QCoro::Task<> {
        const QString title = u"导入到“%1”"_s.arg(shownNameOf(list));
        const std::optional<QString> path =
            co_await pickFile(environment_.dialogs, title, {}, stop);
        if (!path) {
            co_return;
        }
        const std::function import = [=](const Stores& stores) {
            return importBlock(stores, *path, list);
        };
        co_await bring(import, list, stop);
    });
}

void Form30::粘贴_Click() {
    const QStringList lines = linesOf(environment_.clipboard.text());
    const std::function import = [lines, list = list_](const Stores& stores) {
        return importLines(stores, lines, list);
    };
    runs_.start(
        [this, import, list = list_](std::stop_token stop) { return bring(import, list, stop); });
}

QCoro::Task<> Form30::bring(std::function<WatchImport(const Stores&)> import, QString list,
                            std::stop_token stop) {
    const auto job = [=, stores = environment_.stores](const auto&) { return import(stores); };
    const WatchImport came = co_await inWorker(job, stop);
    environment_.dialogs.tell(came.words(list));
    refresh();
}

// As the list stands when it is asked for.
void Form30::导出列表_Click() {
    const QStringList dms = codesIn(allRows());
    runs_.start([=, this, list = list_, table = table()](std::stop_token stop) -> QCoro::Task<> {
        const QString folder = offeredFolder();
        const QString name = offeredBlockName(list);
        const QStringList filters = blockFilters();
        const QString path =
            co_await environment_.dialogs.baocunwenjian(stop, folder, name, filters);
        if (path.isEmpty()) {
            co_return;
        }
        const Activity activity(u"导出自选股"_s, u"文件没有写入；原来有的文件没有变。"_s);
        replaceFile(path,
                    path.endsWith(u".csv"_s, Qt::CaseInsensitive) ? table : blockBytes(path, dms));
        environment_.dialogs.tell(u"已导出 %1 只股票到：%2"_s.arg(dms.size()).arg(path));
    });
}

QByteArray Form30::table() const {
    const QList<int> cols = {WatchColumn::dm, WatchColumn::jc, WatchColumn::note};
    QByteArray lines = csvMark;
    for (int row = 0; row < grid_.rows(); ++row) {
        lines += csvLine(grid_, row, cols).toUtf8();
    }
    return lines;
}

void Form30::showOrder() {
    ui_->ownOrder->setEnabled(!ui_->MSHFlexGrid1->sortedBy().isEmpty());
}

// Back from a sort by a header.
void Form30::ownOrder_Click() {
    ui_->MSHFlexGrid1->forgetSort();
    say({});
    refreshRuns_.stop();
    refreshRuns_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const auto step = [this] { return watchlist_.list(grid_, list_); };
        const bool isOwn = co_await patiently(step, stop);
        if (!isOwn) {
            say(u"还没有自己的顺序，按涨幅排列：拖动一行，或按 Alt+↑、Alt+↓ 来排。"_s);
        }
    });
}

}  // namespace guanchao
