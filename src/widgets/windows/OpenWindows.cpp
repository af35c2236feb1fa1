#include "widgets/windows/OpenWindows.h"

#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/Screens.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include <algorithm>

namespace Widgets {

OpenWindows::OpenWindows(QObject *parent) : QObject(parent) {}

OpenWindows::~OpenWindows() = default;

void OpenWindows::add(const WidgetLink &link)
{
    m_links.append(link);
    connect(link.widget, &QObject::destroyed, this, [this, link] {
        remove(link);
        m_origins.remove(link.widget);
    });
}

void OpenWindows::remove(const WidgetLink &link)
{
    m_links.removeOne(link);
}

void OpenWindows::setOrigin(const QWidget &window, unsigned long origin)
{
    m_origins.insert(&window, origin);
}

QWidget *OpenWindows::find(unsigned long id) const
{
    const auto found = std::find_if(m_links.cbegin(), m_links.cend(),
                                    [id](const WidgetLink &link) { return link.id == id; });
    return found == m_links.cend() ? nullptr : found->widget;
}

QWidget *OpenWindows::find(unsigned long id, int screen) const
{
    return findAll(id, screen).value(0, nullptr);
}

QVector<QWidget *> OpenWindows::findAll(unsigned long id, int screen) const
{
    QVector<QWidget *> found;
    for (const WidgetLink &link : m_links) {
        if (link.id == id && ScreenNumber(link.widget) == screen)
            found.append(link.widget);
    }
    return found;
}

QVector<WidgetLink> OpenWindows::of(unsigned long id, int display) const
{
    const QWidget *active = QApplication::activeWindow();
    if (display == 0 && !active)
        return {};
    if (display == 0)
        display = ScreenNumber(active) + 1;
    QVector<WidgetLink> found;
    for (const WidgetLink &link : m_links) {
        const auto origin = m_origins.constFind(link.widget);
        const bool isMeant = link.id == id || (origin != m_origins.cend() && *origin == id);
        if (isMeant && (display < 0 || ScreenNumber(link.widget) + 1 == display))
            found.append(link);
    }
    return found;
}

bool OpenWindows::close(unsigned long id, QWidget *widget)
{
    const WidgetLink link(id, widget);
    if (!m_links.contains(link))
        return false;
    QWidget *outer = DesktopPlacement::outermost(widget);
    if (outer && !outer->close())
        return false;
    remove(link);
    return true;
}

void OpenWindows::closeAll(unsigned long id, int display)
{
    const QVector<WidgetLink> links = of(id, display);
    for (const WidgetLink &link : links)
        close(link.id, link.widget); // unless an earlier one took it along
}

void OpenWindows::destroyAll()
{
    QVector<QPointer<QWidget>> outermost;
    for (const WidgetLink &link : qAsConst(m_links))
        outermost.append(DesktopPlacement::outermost(link.widget));
    for (const QPointer<QWidget> &widget : qAsConst(outermost))
        delete widget;
}

} // namespace Widgets
