#include "editor/workspace/KeyboardAccess.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QVector>

namespace Editor {

namespace {

class AllRowsKey : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return QObject::eventFilter(watched, event);
        const auto &key = static_cast<const QKeyEvent &>(*event);
        if (key.matches(QKeySequence::SelectAll))
            event->accept();
        return QObject::eventFilter(watched, event);
    }
};

void collect(const QLayout &layout, QVector<QWidget *> &found);

void collect(QWidget &widget, QVector<QWidget *> &found)
{
    if (widget.focusPolicy() != Qt::NoFocus && !widget.focusProxy())
        found.append(&widget); // with the parts it is made of
    else if (widget.layout())
        collect(*widget.layout(), found);
}

void collect(const QLayout &layout, QVector<QWidget *> &found)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (item->widget())
            collect(*item->widget(), found);
        else if (item->layout())
            collect(*item->layout(), found);
    }
}

} // namespace

void KeyboardAccess::followLayouts(QWidget &window)
{
    QVector<QWidget *> stops;
    if (window.layout())
        collect(*window.layout(), stops);
    // The last one first, each behind the first stop: one behind the other Qt 5.15 leaves some out.
    for (int i = stops.size() - 1; i > 0; --i)
        QWidget::setTabOrder(stops[0], stops[i]);
}

void KeyboardAccess::makeSearchLine(QLineEdit &line, const QString &text)
{
    line.setPlaceholderText(text);
    line.setAccessibleName(text);
    line.setClearButtonEnabled(true);
}

void KeyboardAccess::keepAllRowsKey(QAbstractItemView &table)
{
    table.installEventFilter(new AllRowsKey(&table));
}

} // namespace Editor
