#include "widgets/charts/menus/TouchMenu.h"

#include "widgets/dialogs/DialogLook.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>

namespace Widgets {

namespace {

constexpr const char *look =
    "QMenu { background: #f4f6f7; color: #20262c; border: 1px solid #6b757d; padding: 2px; }"
    "QMenu::item { min-height: 30px; padding: 2px 28px 2px 32px; }"
    "QMenu::item:selected { background: #4a535b; color: #ffffff; }"
    "QMenu::item:disabled { color: #7d868d; }"
    "QMenu::indicator { left: 8px; width: 16px; height: 16px; }"
    "QMenu::separator { height: 1px; background: #b4bdc4; margin: 3px 8px; }";

} // namespace

TouchMenu::TouchMenu(const QWidget *near) : QMenu(windowOf(near))
{
    setStyleSheet(QLatin1String(look));
    MakeLegible(*this);
    setToolTipsVisible(true);
}

TouchMenu::TouchMenu(const QString &title, QWidget *parent) : QMenu(title, parent)
{
    setStyleSheet(QLatin1String(look));
    MakeLegible(*this);
    setToolTipsVisible(true);
}

void TouchMenu::openAt(const QPoint &place)
{
    connect(this, &QMenu::aboutToHide, this, &QObject::deleteLater);
    popup(place);
}

QWidget *TouchMenu::windowOf(const QWidget *widget)
{
    if (!widget)
        return nullptr;
    QWidget *window = widget->window();
    const QGraphicsProxyWidget *proxy = window->graphicsProxyWidget();
    if (!proxy || !proxy->scene() || proxy->scene()->views().isEmpty())
        return window;
    return windowOf(proxy->scene()->views().first());
}

} // namespace Widgets
