#include "themes/told_map.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include "themes/map_view.h"

namespace guanchao {

namespace {

class ToldBox : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    ToldBox(MapView& map, int at) : map_(&map), at_(at) {}

    int at() const { return at_; }

    bool isValid() const override { return map_ && at_ < map_->boxes().size(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(map_);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        return kind == QAccessible::Name          ? map_->boxes()[at_].name
               : kind == QAccessible::Description ? map_->wordsOf(at_)
                                                  : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        const QRect place = isValid() ? map_->places()[at_] : QRect();
        return place.isEmpty() ? QRect() : place.translated(map_->mapToGlobal(QPoint()));
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (isValid()) {
            state.selectable = state.focusable = true;
            state.selected = map_->chosen() == at_;
            state.focused = state.selected && map_->hasFocus();
            state.invisible = !map_->isVisible() || map_->places()[at_].isEmpty();
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (!isValid()) {
            return;
        }
        if (name == pressAction()) {
            map_->open(at_);
        } else if (name == setFocusAction()) {
            map_->setFocus();
            map_->choose(at_);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<MapView> map_;
    int at_;
};

class ToldMap : public QAccessibleWidget {
public:
    explicit ToldMap(MapView& map) : QAccessibleWidget(&map, QAccessible::List) {}
    ~ToldMap() override {
        for (const QAccessible::Id id : std::as_const(boxes_)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
    Q_DISABLE_COPY_MOVE(ToldMap)

    int childCount() const override { return static_cast<int>(map().boxes().size()); }
    QAccessibleInterface* child(int at) const override {
        if (at < 0 || at >= childCount()) {
            return nullptr;
        }
        if (!boxes_.contains(at)) {
            boxes_.insert(at, QAccessible::registerAccessibleInterface(new ToldBox(map(), at)));
        }
        return QAccessible::accessibleInterface(boxes_.value(at));
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint point = map().mapFromGlobal(QPoint(x, y));
        for (int at = 0; at < childCount(); ++at) {
            if (map().places()[at].contains(point)) {
                return child(at);
            }
        }
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* box = dynamic_cast<const ToldBox*>(child);
        return box ? box->at() : -1;
    }
    QAccessibleInterface* focusChild() const override {
        return map().hasFocus() ? child(static_cast<int>(map().chosen())) : nullptr;
    }

private:
    MapView& map() const { return *static_cast<MapView*>(widget()); }

    mutable QHash<int, QAccessible::Id> boxes_;
};

QAccessibleInterface* toldMap(const QString&, QObject* object) {
    auto* map = qobject_cast<MapView*>(object);
    return map ? new ToldMap(*map) : nullptr;
}

}  // namespace

void tellBoxesOfMaps() {
    QAccessible::installFactory(toldMap);  // once, however often
}

}  // namespace guanchao
