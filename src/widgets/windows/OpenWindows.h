#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/WidgetLink.h"

#include <QHash>
#include <QObject>
#include <QVector>

namespace Widgets {

/// The windows that are open, by the ids of their nodes, whatever they show. A node may be open
/// several times. Windows are not owned: one that is closed or destroyed is forgotten. GUI thread.
class WIDGETS_EXPORT OpenWindows : public QObject
{
    Q_OBJECT

public:
    explicit OpenWindows(QObject *parent = nullptr);
    ~OpenWindows() override;

    /// In creation order.
    const QVector<WidgetLink> &links() const { return m_links; }

    void add(const WidgetLink &link);
    /// Forgets a window that was closed but lives on for a while.
    void remove(const WidgetLink &link);
    /// The window shows an instance made from that node: `of` finds it by both.
    void setOrigin(const QWidget &window, unsigned long origin);

    /// First open window with that id; null when there is none. Screens count from 0.
    QWidget *find(unsigned long id) const;
    QWidget *find(unsigned long id, int screen) const;
    QVector<QWidget *> findAll(unsigned long id, int screen) const;
    /// Windows of that node and of instances made from it. Displays count from 1; 0 means that of
    /// the active window, a negative one all.
    QVector<WidgetLink> of(unsigned long id, int display) const;

    /// Closes the window with its decoration and forgets it. False, and nothing forgotten, when it
    /// is not open or refuses to close.
    bool close(unsigned long id, QWidget *widget);
    /// Closes what `of` finds.
    void closeAll(unsigned long id, int display);
    /// Deletes all, whoever may close them.
    void destroyAll();

private:
    QVector<WidgetLink> m_links;
    QHash<const QObject *, unsigned long> m_origins; // of instances, by their window
};

} // namespace Widgets
