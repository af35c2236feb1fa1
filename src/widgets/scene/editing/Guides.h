#pragma once

#include <QLineF>
#include <QPointF>
#include <QString>
#include <QVector>

namespace Widgets {

/// What is drawn over a scene while something is dragged: lines it sticks to and notes beside them.
/// Scene coordinates; drawn one pixel wide at any zoom.
struct Guides
{
    struct Note
    {
        QPointF at; ///< centre of the text
        QString text;
    };

    QVector<QLineF> lines;
    QVector<Note> notes;

    bool isEmpty() const { return lines.isEmpty() && notes.isEmpty(); }
    void clear()
    {
        lines.clear();
        notes.clear();
    }
};

} // namespace Widgets
