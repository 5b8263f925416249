#include "app/finder.h"

#include <QKeyEvent>
#include <QMenu>
#include <QVBoxLayout>
#include <utility>

#include "base/worker.h"
#include "frame/short_texts.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostLines = 50;

QString lineOf(const FindItem& item) {
    const QString kind = item.kind == FindItem::Kind::stock   ? u"个股"_s
                         : item.kind == FindItem::Kind::theme ? u"主题"_s
                         : item.kind == FindItem::Kind::page  ? u"主题页"_s
                                                              : u"命令"_s;
    return kind + u"　"_s + item.name + (item.detail.isEmpty() ? QString() : u"　"_s + item.detail);
}

QString wordsOf(const QAction& entry) {
    QString words = entry.text();
    return words.remove(u'&');
}

void addEntries(const QMenu& menu, const QString& path, QList<Finder::Command>& commands) {
    const QList<QAction*> entries = menu.actions();
    for (QAction* entry : entries) {
        if (entry->menu()) {
            addEntries(*entry->menu(), path + wordsOf(*entry) + u" / "_s, commands);
        } else if (!entry->isSeparator()) {
            commands << Finder::Command{path + wordsOf(*entry), entry};
        }
    }
}

}  // namespace

QList<Finder::Command> commandsOf(const QMenuBar& bar) {
    QList<Finder::Command> commands;
    const QList<QAction*> menus = bar.actions();
    for (const QAction* it : menus) {
        if (it->menu()) {
            addEntries(*it->menu(), {}, commands);
        }
    }
    return commands;
}

Finder::Finder(Environment& environment, QList<Command> commands, Choices choices, QWidget* parent)
    : QDialog(parent),
      environment_(environment),
      commands_(std::move(commands)),
      choices_(std::move(choices)),
      typed_(new QLineEdit),
      list_(new QListWidget),
      runs_(environment.failures) {
    setObjectName(u"Finder"_s);
    setWindowTitle(u"快速查找"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    typed_->setAccessibleName(u"要找的股票、主题或命令"_s);
    typed_->setPlaceholderText(u"代码、名称或声母；上下键选择，回车打开"_s);
    list_->setAccessibleName(u"找到的"_s);
    list_->setItemDelegate(new ShortTexts(list_));
    list_->setFocusProxy(typed_);  // a list without the focus tells assistive tools of no choice
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(typed_);
    rows->addWidget(list_);
    resize(520, 420);
    typed_->installEventFilter(this);
    connect(typed_, &QLineEdit::textChanged, this, &Finder::showFound);
    connect(list_, &QListWidget::itemClicked, this, &Finder::choose);
    runs_.start([this](std::stop_token stop) { return read(stop); });
}

QList<FindItem> Finder::commandItems() const {
    QList<FindItem> items;
    for (int at = 0; at < commands_.size(); ++at) {
        const QKeySequence key = commands_[at].action->shortcut();
        items << FindItem{.kind = FindItem::Kind::command,
                          .name = commands_[at].words,
                          .detail = key.toString(QKeySequence::NativeText),
                          .initials = {},
                          .command = at};
    }
    return items;
}

// The commands are found though the store may not be read.
QCoro::Task<> Finder::read(std::stop_token stop) {
    const QList<FindItem> commands = commandItems();
    const auto readCommands = [commands](const auto&) { return withInitials(commands); };
    items_ = co_await inWorker(readCommands, stop);
    showFound();
    const auto job = [stores = environment_.stores](const auto&) { return readFindItems(stores); };
    const QList<FindItem> read = co_await inWorker(job, stop);
    items_ = read + items_;
    isRead_ = true;
    showFound();
}

void Finder::showFound() {
    found_ = foundItems(items_, typed_->text(), mostLines);
    list_->clear();
    for (const FindItem& item : std::as_const(found_)) {
        list_->addItem(lineOf(item));
    }
    list_->setCurrentRow(0);
    if (found_.isEmpty() && isRead_ && !typed_->text().trimmed().isEmpty()) {
        auto* answer = new QListWidgetItem(u"没有找到；可以输入代码、名称或声母"_s, list_);
        answer->setFlags(Qt::NoItemFlags);
    }
}

// Up and down walk the list while the text keeps the keys.
bool Finder::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    switch (static_cast<const QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QCoreApplication::sendEvent(list_, event);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            choose(list_->currentItem());
            return true;
        default:
            return QDialog::eventFilter(watched, event);
    }
}

// The window goes first: what opens gets the keys.
void Finder::choose(const QListWidgetItem* line) {
    if (!line || found_.isEmpty()) {
        return;
    }
    const FindItem item = found_.at(list_->row(line));
    const Choices choices = choices_;
    QAction* command = commands_.value(item.command).action;
    close();
    if (item.kind == FindItem::Kind::stock) {
        choices.stock(item.detail, item.name);
    } else if (item.kind == FindItem::Kind::theme) {
        choices.theme(item.name);
    } else if (item.kind == FindItem::Kind::page) {
        choices.page(item.name);
    } else if (command->isEnabled()) {
        command->trigger();
    }
}

}  // namespace guanchao
