#include "widgets/elements/input/InputNotice.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace Widgets {

namespace {

constexpr int lifetime = 6000; // ms; long enough to look up from the keyboard and read it
constexpr int gap = 4;         // pixels

QPointer<QLabel> &shown()
{
    static QPointer<QLabel> notice;
    return notice;
}

QGraphicsView *viewOf(const QWidget &element)
{
    const QGraphicsProxyWidget *host = element.window()->graphicsProxyWidget();
    if (!host || !host->scene())
        return nullptr;
    QGraphicsView *found = nullptr;
    for (QGraphicsView *view : host->scene()->views()) {
        if (!found || (view->isVisible() && view->isActiveWindow()))
            found = view;
    }
    return found;
}

/// The window to stand in: no window of its own, which would take clicks from what lies below.
QWidget *windowFor(const QWidget &element, const QGraphicsView *view)
{
    QWidget *own = view ? view->window() : element.window();
    QWidget *active = QApplication::activeWindow();
    return own->isVisible() || !active ? own : active; // the element goes, what is told stays
}

QRect roomIn(const QWidget &window)
{
    const QRect inside(window.mapToGlobal(QPoint(0, 0)), window.size());
    const QScreen *screen = QApplication::screenAt(inside.center());
    return screen ? inside & screen->availableGeometry() : inside;
}

/// How much of what the operator looks at the place would cover: elements, first of all the one
/// under the pointer.
int coveredBy(const QRect &place, const QGraphicsView *view, const QWidget &element)
{
    constexpr int underPointer = 1000;
    const int pointed = place.contains(QCursor::pos()) ? underPointer : 0;
    if (!view)
        return pointed;
    const QRect local(view->viewport()->mapFromGlobal(place.topLeft()), place.size());
    const QList<QGraphicsItem *> items = view->items(local);
    return pointed + int(std::count_if(items.begin(), items.end(), [&element](QGraphicsItem *item) {
               const auto *host = dynamic_cast<const QGraphicsProxyWidget *>(item);
               return host && host->widget() && host->widget() != element.window();
           }));
}

// Beside the element, where it hides least of what stands around: a value hidden by a notice
// cannot be read, and the box that was pressed next must be seen.
QPoint placeFor(const QSize &size, const QRect &room, const QWidget &element,
                const QGraphicsView *view)
{
    const QRect own = InputNotice::globalRect(element);
    const QPoint places[] = {
        {own.left(), own.bottom() + gap},
        {own.left(), own.top() - gap - size.height()},
        {own.right() + gap, own.center().y() - size.height() / 2},
        {own.left() - gap - size.width(), own.center().y() - size.height() / 2},
        {own.right() + 1 - size.width(), own.bottom() + gap}};
    QPoint best(
        qBound(room.left(), own.left(), qMax(room.left(), room.right() - size.width())),
        qBound(room.top(), own.bottom() + gap, qMax(room.top(), room.bottom() - size.height())));
    int fewest = std::numeric_limits<int>::max();
    for (const QPoint &place : places) {
        const QRect rect(place, size);
        const int covered = coveredBy(rect, view, element);
        if (room.contains(rect) && covered < fewest) {
            best = place;
            fewest = covered;
        }
    }
    return best;
}

QLabel *makeLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QStringLiteral("inputNotice"));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setStyleSheet(QStringLiteral("QLabel { background: #ffffff; color: #20262c; "
                                        "border: 2px solid #37424b; padding: 4px 8px; "
                                        "font: 14px 'DejaVu Sans'; }"));
    return label;
}

} // namespace

QRect InputNotice::globalRect(const QWidget &element)
{
    const QGraphicsView *view = viewOf(element);
    if (!view)
        return {element.mapToGlobal(QPoint(0, 0)), element.size()};
    const QRectF place(element.mapTo(element.window(), QPoint(0, 0)), element.size());
    const QPolygonF inScene = element.window()->graphicsProxyWidget()->mapToScene(place);
    const QRect inView = view->mapFromScene(inScene).boundingRect();
    return {view->viewport()->mapToGlobal(inView.topLeft()), inView.size()};
}

QLabel *InputNotice::current()
{
    return shown() && shown()->isVisible() ? shown().data() : nullptr;
}

void InputNotice::show(const QWidget &element, const QString &text)
{
    // Not at once: it may be what an event is being delivered to.
    if (QLabel *last = shown()) {
        last->hide();
        last->deleteLater();
    }
    const QGraphicsView *view = viewOf(element);
    QWidget *window = windowFor(element, view);
    QLabel *label = makeLabel(text, window);
    shown() = label;
    const QRect room = roomIn(*window);
    label->setWordWrap(label->sizeHint().width() > room.width());
    label->setMaximumWidth(room.width());
    label->adjustSize();
    label->move(window->mapFromGlobal(placeFor(label->size(), room, element, view)));
    label->raise();
    label->show();
    QTimer::singleShot(lifetime, label, &QObject::deleteLater);
}

} // namespace Widgets
