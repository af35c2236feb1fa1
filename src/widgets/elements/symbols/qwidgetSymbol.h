#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/painting/DirectPainting.h"
#include "widgets/elements/symbols/SymbolPlace.h"
#include "widgets/elements/symbols/SymbolStyle.h"

#include "nodes/model/links/ResourceLink.h"

#include <QPixmap>
#include <QWidget>

namespace Nodes {
class widgetSymbol;
}

namespace Widgets {

class Symbol;

/// Picture of a Nodes::widgetSymbol in the look of its value: state, level, text, quality. The
/// picture is read when a value wants another one and drawn once a size; painting copies pixels.
/// One that cannot be shown is told by a crossed frame with the reason, in the journal as well.
/// GUI thread.
class WIDGETS_EXPORT qwidgetSymbol : public QWidget,
                                     public IWidget,
                                     public DirectPainting,
                                     public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetSymbol;

    qwidgetSymbol(Nodes::BasicWidget *node, QWidget *parent,
                  const SceneContextPtr &context = SceneContext::process());
    ~qwidgetSymbol() override;

    QString shownText() const override { return m_text; }
    Nodes::SymbolLook shownLook() const { return m_look; }
    /// 0 to 1; NaN while none is shown.
    double shownLevel() const { return m_level; }
    void paintDirectly(QPainter &painter) override;

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    /// Pixels of one look at one size, kept until either is another.
    struct Picture
    {
        SymbolPlace place;
        QSize pixels;
        QPixmap empty;
        QPixmap full; ///< null without a level
    };

    void takePlace(const Nodes::widgetSymbol &symbol);
    void takeText(const Nodes::widgetSymbol &symbol);
    void takeValue(const Nodes::SignalValue &handed);
    void takeSource(const Nodes::SignalValue &value);
    void report(const QString &source) const;
    void takeStyle();
    SymbolStyle::Surface surface() const;
    SymbolStyle filledStyle() const;
    QRect inside() const;
    int textHeight() const;
    QRect symbolArea() const;
    const Picture &pictureFor(const SymbolPlace &place, const QSize &pixels);
    void drawSymbol(QPainter &painter);
    void drawText(QPainter &painter) const;

    Utils::WatchedNode<Nodes::widgetSymbol> m_symbolNode; ///< null also for another class
    Nodes::ResourceLink m_source;                         ///< that of m_symbol
    bool m_isSourceOld = true;
    std::shared_ptr<Symbol> m_symbol; ///< null while none is chosen
    QString m_caption;                ///< in place of one that cannot be shown
    Nodes::SymbolLook m_look = Nodes::SymbolLook::Plain;
    QColor m_stateBody; ///< of the state; invalid without one
    SymbolStyle::Surface m_surface = SymbolStyle::Surface::Light;
    SymbolStyle m_style;
    SymbolPlace m_place; ///< but for its area
    QColor m_levelColor;
    double m_level;
    Picture m_picture;
    QString m_text;
    QFont m_font;
    QColor m_textColor;
    Qt::Alignment m_alignment;
    ElementBinding m_binding;
};

} // namespace Widgets
