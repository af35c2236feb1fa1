#pragma once

#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/painting/DirectPainting.h"
#include "widgets/elements/painting/LabelText.h"
#include "widgets/elements/qlabelBasic.h"

#include "nodes/values/Quality.h"

namespace Nodes {
class widgetLabel;
class widgetMultiLabel;
} // namespace Nodes

namespace Widgets {

/// Text of a Nodes::widgetLabel, fixed or of a live value: font, alignment, wrap, turned by any
/// angle, with background and border. A value that is not good is marked (ElementPainting). For a
/// node of another class only the background is drawn.
class WIDGETS_EXPORT qwidgetLabel : public qlabelBasic, public DirectPainting, public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetLabel;

    qwidgetLabel(Nodes::BasicWidget *node, QWidget *parent,
                 const SceneContextPtr &context = SceneContext::process());
    ~qwidgetLabel() override;

    QString shownText() const override { return m_labelText; }
    const QColor &textColor() const { return m_textColor; }
    const QColor &backgroundColor() const { return m_backgroundColor; }

    const PropertyBindings &bindings() const override;
    void paintDirectly(QPainter &painter) override;

public slots:
    void onValueUpdated(Nodes::SignalValue value) override;
    void onUpdateProperties(Nodes::BasicProperty *property) override;

protected:
    void takeColors(const Nodes::widgetLabel &label);
    void paintEvent(QPaintEvent *event) override;
    /// Shows all that follows from that value, whose quality is taken over already.
    virtual void showValue(const Nodes::SignalValue &value);
    /// With the label's own font about the point (cx, cy), the painter's pen.
    void drawRotatedText(QPainter *painter, float angle, int cx, int cy, QString const &text);

private:
    void takeFont(const Nodes::widgetLabel &label);
    void takeLayout(const Nodes::widgetLabel &label);
    void takeDisabled(const Nodes::widgetLabel &label);
    void takeStateColors(const Nodes::widgetMultiLabel &node, const Nodes::SignalValue &value);
    void applyBackground(const QColor &color);
    void draw(QPainter &painter);
    void applyFont();
    int textFlags() const;

    /// What a value decides; a value that changes none of it repaints nothing.
    struct Look
    {
        QString text;
        Nodes::Quality quality;
        QRgb textColor;
        QRgb background;
        bool operator==(const Look &o) const
        {
            return text == o.text && quality == o.quality && textColor == o.textColor &&
                   background == o.background;
        }
    };
    Look look() const;

    QFont m_font;
    QColor m_textColor;
    Qt::Alignment m_alignment;
    bool m_isWrapped = false;
    float m_angle = 0;
    bool m_hasPalette = false;
    bool m_isDisabled = false;
    Utils::WatchedNode<Nodes::widgetLabel> m_label;       ///< null also for another class
    Utils::WatchedNode<Nodes::widgetMultiLabel> m_states; ///< null for a plain label
    LabelText m_layout;
};

} // namespace Widgets
