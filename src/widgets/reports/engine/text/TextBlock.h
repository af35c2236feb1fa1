#pragma once

#include "widgets/WidgetsExport.h"

#include <QRectF>
#include <QString>

#include <memory>

class QPainter;
class QTextDocument;
class QTextLayout;

namespace LimeReport {

struct TextStyle;

/// A text broken into lines for a box, to be measured, divided between pages and painted. Units are
/// 0.1 mm.
class WIDGETS_EXPORT TextBlock
{
public:
    /// `size`: of the box, margins included. The style has to outlive the block.
    TextBlock(const TextStyle &style, const QString &text, const QSizeF &size);
    ~TextBlock();
    TextBlock(const TextBlock &) = delete;
    TextBlock &operator=(const TextBlock &) = delete;

    /// That the box has to have for all of the text: height, of upright text width.
    double extent() const;
    bool fits() const;
    /// Characters in the lines that a box of that height takes; all of them when it fits, and of
    /// rich text all or none.
    int charactersWithin(double height) const;

    /// In `box`, which has the size told; changes the painter's pen. Text that the box does not
    /// take ends in an ellipsis: it is never cut so that what is left reads as if it were all.
    void paint(QPainter &painter, const QRectF &box) const;

private:
    void breakLines();
    void paintPlain(QPainter &painter, const QPointF &corner, const QSizeF &inner) const;
    void paintRich(QPainter &painter, const QSizeF &inner) const;
    int visibleLines(double height) const;
    QSizeF room() const;

    const TextStyle &m_style;
    QSizeF m_size;
    QString m_text;
    std::unique_ptr<QTextLayout> m_layout;
    std::unique_ptr<QTextDocument> m_document;
    double m_height = 0;
    bool m_isTooWide = false;
};

} // namespace LimeReport
