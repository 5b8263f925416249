#include "app/finder.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <utility>

#include "base/worker.h"
#include "formats/initials.h"
#include "frame/short_texts.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostLines = 50;

QString wordsOf(const QAction& command) {
    QString words = command.text();
    return words.remove(u'&');
}

QString lineOf(const FindItem& item) {
    const QString kind = item.kind == FindItem::Kind::stock   ? u"个股"_s
                         : item.kind == FindItem::Kind::theme ? u"主题"_s
                                                              : u"命令"_s;
    return kind + u"　"_s + item.name + (item.detail.isEmpty() ? QString() : u"　"_s + item.detail);
}

}  // namespace

Finder::Finder(Environment& environment, QList<QAction*> commands, Choices choices, QWidget* parent)
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
    list_->setFocusPolicy(Qt::NoFocus);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(typed_);
    rows->addWidget(list_);
    resize(520, 420);
    typed_->installEventFilter(this);
    connect(typed_, &QLineEdit::textChanged, this, &Finder::showFound);
    connect(list_, &QListWidget::itemClicked, this, &Finder::choose);
    addCommands();
    runs_.start([this](std::stop_token stop) { return read(stop); });
}

void Finder::addCommands() {
    const Initials initials({});
    for (int at = 0; at < commands_.size(); ++at) {
        const QAction& command = *commands_[at];
        const QString words = wordsOf(command);
        items_ << FindItem{.kind = FindItem::Kind::command,
                           .name = words,
                           .detail = command.shortcut().toString(QKeySequence::NativeText),
                           .initials = initials.of(words),
                           .command = at};
    }
}

QCoro::Task<> Finder::read(std::stop_token stop) {
    const auto job = [stores = environment_.stores](const auto&) { return readFindItems(stores); };
    const QList<FindItem> read = co_await inWorker(job, stop);
    items_ = read + items_;
    showFound();
}

void Finder::showFound() {
    found_ = foundItems(items_, typed_->text(), mostLines);
    list_->clear();
    for (const FindItem& item : std::as_const(found_)) {
        list_->addItem(lineOf(item));
    }
    list_->setCurrentRow(0);
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
    if (!line) {
        return;
    }
    const FindItem item = found_.at(list_->row(line));
    const Choices choices = choices_;
    QAction* command = commands_.value(item.command);
    close();
    if (item.kind == FindItem::Kind::stock) {
        choices.stock(item.detail, item.name);
    } else if (item.kind == FindItem::Kind::theme) {
        choices.theme(item.name);
    } else if (command->isEnabled()) {
        command->trigger();
    }
}

}  // namespace guanchao
