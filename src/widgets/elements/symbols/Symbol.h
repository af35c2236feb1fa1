#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/symbols/SymbolPlace.h"
#include "widgets/elements/symbols/SymbolStyle.h"

#include "nodes/model/links/ResourcePtr.h"

#include <QByteArray>
#include <QHash>
#include <QPixmap>

#include <memory>

class QSvgRenderer;

namespace Widgets {

/// One vector picture that is shown in many styles: each is read once. GUI thread.
class WIDGETS_EXPORT Symbol
{
public:
    /// Keeps `file` as long as `svg` may be its bytes.
    explicit Symbol(const QByteArray &svg, const Nodes::ResourcePtr &file = {});
    ~Symbol();
    Symbol(const Symbol &) = delete;
    Symbol &operator=(const Symbol &) = delete;

    /// Why it cannot be shown and what to do, in Russian; "" when it can.
    const QString &refusal() const { return m_refusal; }
    /// Own proportions; empty when it cannot be shown.
    const QSizeF &size() const { return m_size; }
    /// Of the part that is filled by a level, the whole picture being 0 to 1; empty without one.
    const QRectF &levelBox() const { return m_levelBox; }

    /// Reads it in that style, unless that is done: what has to happen before it is painted.
    void prepare(const SymbolStyle &style);
    /// Pixels of the area in that style, `pixels` of them in each direction.
    QPixmap draw(const SymbolStyle &style, const SymbolPlace &place, const QSize &pixels);

private:
    QSvgRenderer &renderer(const SymbolStyle &style);
    void measure();

    Nodes::ResourcePtr m_file;
    QByteArray m_svg;
    QString m_refusal;
    QSizeF m_size;
    QRectF m_levelBox;
    QHash<QString, std::shared_ptr<QSvgRenderer>> m_renderers; // by style
};

} // namespace Widgets
