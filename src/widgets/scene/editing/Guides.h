#pragma once

#include <QLineF>
#include <QPointF>
#include <QRectF>
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
    QVector<QRectF> places; ///< where something is going to stand

    bool isEmpty() const { return lines.isEmpty() && notes.isEmpty() && places.isEmpty(); }
    void clear()
    {
        lines.clear();
        notes.clear();
        places.clear();
    }
};

} // namespace Widgets
