#include "widgets/elements/InputNotice.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTimer>

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

QPoint placeFor(const QSize &size, const QRect &element)
{
    const QScreen *screen = QApplication::screenAt(element.center());
    const QRect room = (screen ? screen : QApplication::primaryScreen())->availableGeometry();
    const bool fitsBelow = element.bottom() + gap + size.height() <= room.bottom();
    const int y = fitsBelow ? element.bottom() + gap : element.top() - gap - size.height();
    return {qBound(room.left(), element.left(), qMax(room.left(), room.right() - size.width())),
            qMax(room.top(), y)};
}

QLabel *makeLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(parent, Qt::ToolTip | Qt::WindowTransparentForInput |
                                         Qt::WindowDoesNotAcceptFocus);
    label->setObjectName(QStringLiteral("inputNotice"));
    label->setAttribute(Qt::WA_ShowWithoutActivating);
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
    delete shown();
    const QGraphicsView *view = viewOf(element);
    QLabel *label = makeLabel(text, view ? view->window() : element.window());
    shown() = label;
    label->adjustSize();
    label->move(placeFor(label->size(), globalRect(element)));
    label->show();
    QTimer::singleShot(lifetime, label, &QObject::deleteLater);
}

} // namespace Widgets
