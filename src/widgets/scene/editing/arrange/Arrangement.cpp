#include "widgets/scene/editing/arrange/Arrangement.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Widgets {

namespace {

using Arrangement::enKind;

/// A rectangle seen along one axis.
struct Span
{
    int at;
    int size;
};
using Spans = QVector<Span>;

Spans spansOf(const QVector<QRect> &rects, Qt::Orientation axis)
{
    Spans spans;
    for (const QRect &rect : rects)
        spans.append(axis == Qt::Horizontal ? Span{rect.x(), rect.width()}
                                            : Span{rect.y(), rect.height()});
    return spans;
}

QVector<QRect> withSpans(QVector<QRect> rects, Qt::Orientation axis, const Spans &spans)
{
    for (int i = 0; i < rects.size(); ++i) {
        const Span &span = spans.at(i);
        QRect &rect = rects[i];
        rect = axis == Qt::Horizontal ? QRect(span.at, rect.y(), span.size, rect.height())
                                      : QRect(rect.x(), span.at, rect.width(), span.size);
    }
    return rects;
}

int rounded(double value)
{
    return static_cast<int>(std::floor(value + 0.5));
}

/// `share` of an element stands where that share of the key element does: 0 begins, 1 ends.
void align(Spans &spans, const Span &key, double share)
{
    for (Span &span : spans)
        span.at = rounded(key.at + (key.size - span.size) * share);
}

double centreOf(const Span &span)
{
    return span.at + span.size / 2.0;
}

template <class Value> QVector<int> orderBy(const Spans &spans, Value value)
{
    QVector<int> order(spans.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return value(spans.at(a)) < value(spans.at(b)); });
    return order;
}

// What does not divide is spread over all gaps, not left to the last.
void spreadGaps(Spans &spans)
{
    const QVector<int> order = orderBy(spans, [](const Span &span) { return double(span.at); });
    const Span last = spans.at(order.last());
    double free = last.at - spans.at(order.first()).at;
    for (int i = 0; i + 1 < order.size(); ++i)
        free -= spans.at(order.at(i)).size;
    const double gap = free / (order.size() - 1);
    double at = spans.at(order.first()).at;
    for (int i = 0; i + 1 < order.size(); ++i) {
        Span &span = spans[order.at(i)];
        span.at = rounded(at);
        at += span.size + gap;
    }
}

void spreadCentres(Spans &spans)
{
    const QVector<int> order = orderBy(spans, centreOf);
    const double first = centreOf(spans.at(order.first()));
    const double step = (centreOf(spans.at(order.last())) - first) / (order.size() - 1);
    for (int i = 1; i + 1 < order.size(); ++i) {
        Span &span = spans[order.at(i)];
        span.at = rounded(first + step * i - span.size / 2.0);
    }
}

void equalSizes(Spans &spans, const Span &key)
{
    for (Span &span : spans)
        span.size = key.size;
}

struct KindRow
{
    enKind kind;
    Qt::Orientations axes;
    void (*apply)(Spans &spans, const Span &key);
};

const KindRow rows[] = {
    {enKind::AlignLeft, Qt::Horizontal, [](Spans &s, const Span &key) { align(s, key, 0); }},
    {enKind::AlignCentre, Qt::Horizontal, [](Spans &s, const Span &key) { align(s, key, 0.5); }},
    {enKind::AlignRight, Qt::Horizontal, [](Spans &s, const Span &key) { align(s, key, 1); }},
    {enKind::AlignTop, Qt::Vertical, [](Spans &s, const Span &key) { align(s, key, 0); }},
    {enKind::AlignMiddle, Qt::Vertical, [](Spans &s, const Span &key) { align(s, key, 0.5); }},
    {enKind::AlignBottom, Qt::Vertical, [](Spans &s, const Span &key) { align(s, key, 1); }},
    {enKind::GapsAcross, Qt::Horizontal, [](Spans &s, const Span &) { spreadGaps(s); }},
    {enKind::GapsDown, Qt::Vertical, [](Spans &s, const Span &) { spreadGaps(s); }},
    {enKind::CentresAcross, Qt::Horizontal, [](Spans &s, const Span &) { spreadCentres(s); }},
    {enKind::CentresDown, Qt::Vertical, [](Spans &s, const Span &) { spreadCentres(s); }},
    {enKind::SameWidth, Qt::Horizontal, equalSizes},
    {enKind::SameHeight, Qt::Vertical, equalSizes},
    {enKind::SameSize, Qt::Horizontal | Qt::Vertical, equalSizes},
};

} // namespace

QVector<QRect> Arrangement::arranged(enKind kind, const QVector<QRect> &rects, int key)
{
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [kind](const KindRow &known) { return known.kind == kind; });
    if (row == std::end(rows) || key < 0 || key >= rects.size() || rects.size() < 2)
        return rects;
    QVector<QRect> result = rects;
    for (const Qt::Orientation axis : {Qt::Horizontal, Qt::Vertical}) {
        if (!row->axes.testFlag(axis))
            continue;
        Spans spans = spansOf(result, axis);
        row->apply(spans, Span(spans.at(key)));
        result = withSpans(result, axis, spans);
    }
    return result;
}

} // namespace Widgets
