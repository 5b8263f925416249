#include "themes/treemap.h"

#include <algorithm>
#include <cmath>

namespace guanchao {

namespace {

double sizeOf(double value) {
    return std::isfinite(value) && value > 0 ? value : 0;
}

QList<qsizetype> greatestFirst(const QList<double>& values) {
    QList<qsizetype> order;
    for (qsizetype at = 0; at < values.size(); ++at) {
        if (sizeOf(values[at]) > 0) {
            order << at;
        }
    }
    std::ranges::stable_sort(order, std::ranges::greater(),
                             [&](qsizetype at) { return values[at]; });
    return order;
}

// The greatest relation of two sides in a row of such areas along a side of that length.
double worstRelation(double most, double least, double sum, double side) {
    const double square = side * side;
    return std::max(square * most / (sum * sum), sum * sum / (square * least));
}

class Cutting {
public:
    Cutting(const QList<double>& values, const QRectF& room)
        : order_(greatestFirst(values)), room_(room), places_(values.size()) {
        double total = 0;
        for (const qsizetype at : order_) {
            total += values[at];
        }
        for (const qsizetype at : order_) {
            areas_ << values[at] / total * room.width() * room.height();
        }
    }

    QList<QRectF> places() {
        for (qsizetype first = 0; first < order_.size();) {
            first = cutRow(first);
        }
        return places_;
    }

private:
    // A row along the shorter side, for as long as its places get more even by the next one.
    qsizetype cutRow(qsizetype first) {
        const double side = std::min(room_.width(), room_.height());
        double sum = areas_[first];
        double worst = worstRelation(sum, sum, sum, side);
        qsizetype end = first + 1;
        for (; end < areas_.size(); ++end) {
            const double longer = sum + areas_[end];
            const double relation = worstRelation(areas_[first], areas_[end], longer, side);
            if (relation > worst) {
                break;
            }
            sum = longer;
            worst = relation;
        }
        placeRow(first, end, sum);
        return end;
    }

    void placeRow(qsizetype first, qsizetype end, double sum) {
        const bool upright = room_.width() >= room_.height();
        const double thickness = sum / (upright ? room_.height() : room_.width());
        double along = upright ? room_.top() : room_.left();
        for (qsizetype at = first; at < end; ++at) {
            const double length = areas_[at] / thickness;
            places_[order_[at]] = upright ? QRectF(room_.left(), along, thickness, length)
                                          : QRectF(along, room_.top(), length, thickness);
            along += length;
        }
        if (upright) {
            room_.setLeft(room_.left() + thickness);
        } else {
            room_.setTop(room_.top() + thickness);
        }
    }

    QList<qsizetype> order_;
    QList<double> areas_;  // in that order
    QRectF room_;          // that is left
    QList<QRectF> places_;
};

struct Span {
    int first;
    int last;
};

// Along the way, forwards as one goes.
Span along(const QRect& place, MapWay way) {
    switch (way) {
        case MapWay::left:
            return {-place.right(), -place.left()};
        case MapWay::right:
            return {place.left(), place.right()};
        case MapWay::up:
            return {-place.bottom(), -place.top()};
        case MapWay::down:
            break;
    }
    return {place.top(), place.bottom()};
}

Span across(const QRect& place, MapWay way) {
    const bool level = way == MapWay::left || way == MapWay::right;
    return level ? Span{place.top(), place.bottom()} : Span{place.left(), place.right()};
}

}  // namespace

QList<QRectF> treemapOf(const QList<double>& values, const QRectF& room) {
    return room.isEmpty() ? QList<QRectF>(values.size()) : Cutting(values, room).places();
}

QList<QRect> inPixels(const QList<QRectF>& places) {
    QList<QRect> pixels;
    for (const QRectF& it : places) {
        const QPoint end(qRound(it.right()) - 1, qRound(it.bottom()) - 1);
        pixels << (it.isEmpty() ? QRect()
                                : QRect(QPoint(qRound(it.left()), qRound(it.top())), end));
    }
    return pixels;
}

qsizetype neighbourOf(const QList<QRect>& places, qsizetype from, MapWay way) {
    const Span sides = across(places[from], way);
    const int middle = (sides.first + sides.last) / 2;
    const int edge = along(places[from], way).last;
    qsizetype nearest = -1;
    for (qsizetype at = 0; at < places.size(); ++at) {
        const Span here = across(places[at], way);
        const int begin = along(places[at], way).first;
        const bool lies =
            !places[at].isEmpty() && begin > edge && here.first <= middle && here.last >= middle;
        if (lies && (nearest < 0 || begin < along(places[nearest], way).first)) {
            nearest = at;
        }
    }
    return nearest;
}

}  // namespace guanchao
