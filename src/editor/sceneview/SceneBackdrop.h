#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace Editor {

/// What a scene is edited on: to see elements that are light, dark or transparent. Never shown at
/// run time, never saved with the project.
struct SceneBackdrop
{
    enum enKind { Project, Light, Dark, Checker };

    enKind kind = Project;
    QColor projectColor = Qt::white; ///< of the window itself
    int gridStep = 0;                ///< scene pixels; 0: no grid is drawn

    /// Paints `exposed` of a scene that takes `page`: the page and, around it, what does not belong
    /// to it. Grid points closer than 10 pixels of the screen are thinned out.
    void paint(QPainter &painter, const QRectF &exposed, const QRectF &page) const;
    /// As it will be at run time: the window's own colour and no grid.
    SceneBackdrop preview() const { return {Project, projectColor, 0}; }

private:
    QColor pageColor() const;
    void paintChecker(QPainter &painter, const QRectF &area) const;
    void paintGrid(QPainter &painter, const QRectF &area) const;
};

} // namespace Editor
