#pragma once

#include <QAccessible>
#include <QApplication>
#include <QHash>
#include <QStringList>
#include <QWidget>

/// What a keyboard user and a screen reader would find wrong in a window: a list of complaints.
class FocusChain
{
public:
    explicit FocusChain(const QWidget &window) : m_window(window)
    {
        const QWidget *widget = window.nextInFocusChain();
        for (; widget && widget != &window; widget = widget->nextInFocusChain()) {
            const bool isStop = (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() &&
                                widget->isVisible() && window.isAncestorOf(widget);
            if (isStop && !isPartOfControl(*widget))
                m_stops.append(widget);
        }
    }

    int count() const { return m_stops.size(); }

    /// Tab goes from left to right and from above to below.
    QStringList outOfOrder() const
    {
        QStringList found;
        for (int i = 1; i < m_stops.size(); ++i) {
            if (isBefore(place(*m_stops[i]), place(*m_stops[i - 1])))
                found << nameOf(*m_stops[i - 1]) + " -> " + nameOf(*m_stops[i]);
        }
        return found;
    }

    /// Controls that nothing says the purpose of.
    QStringList nameless() const
    {
        QStringList found;
        for (const QWidget *stop : m_stops) {
            auto *interface = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(stop));
            const QString name = interface ? interface->text(QAccessible::Name) : QString();
            if (name.isEmpty() && stop->toolTip().isEmpty())
                found << nameOf(*stop);
        }
        return found;
    }

private:
    // The line of a spin box or of a combo box is one control with it.
    bool isPartOfControl(const QWidget &widget) const
    {
        const QWidget *parent = widget.parentWidget();
        return parent && parent != &m_window &&
               (parent->inherits("QAbstractSpinBox") || parent->inherits("QComboBox"));
    }

    QRect place(const QWidget &widget) const
    {
        return {widget.mapTo(&m_window, QPoint()), widget.size()};
    }

    /// A whole row above, or further left in the same row.
    static bool isBefore(const QRect &next, const QRect &now)
    {
        const int shared = qMin(next.bottom(), now.bottom()) - qMax(next.top(), now.top());
        const bool isSameRow = 2 * shared > qMin(next.height(), now.height());
        if (isSameRow)
            return next.right() <= now.left();
        const bool isOtherColumn = next.left() >= now.right();
        return next.bottom() <= now.top() && !isOtherColumn;
    }

    static QString nameOf(const QWidget &widget)
    {
        return QString("%1(%2 %3,%4)")
            .arg(widget.metaObject()->className(),
                 widget.objectName() + widget.property("text").toString())
            .arg(widget.mapTo(widget.window(), QPoint()).x())
            .arg(widget.mapTo(widget.window(), QPoint()).y());
    }

    const QWidget &m_window;
    QVector<const QWidget *> m_stops;
};
