#include "widgets/elements/symbols/qwidgetSymbol.h"

#include "widgets/context/ActionSink.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/pictures/MissingPicture.h"
#include "widgets/elements/symbols/SymbolSigns.h"
#include "widgets/elements/symbols/SymbolStore.h"

#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "utils/convert/ValueConversions.h"

#include <QFileInfo>
#include <QPainter>

#include <cmath>
#include <limits>

namespace Widgets {

namespace {

/// Invalid for one that leaves the picture as it is drawn.
QColor ownColor(const Nodes::NColor &color)
{
    return color.alpha > 0 ? Utils::NColorToQColor(color) : QColor();
}

} // namespace

qwidgetSymbol::qwidgetSymbol(Nodes::BasicWidget *node, QWidget *parent,
                             const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_symbolNode(dynamic_cast<Nodes::widgetSymbol *>(node)),
      m_level(std::numeric_limits<double>::quiet_NaN())
{
    setAttribute(Qt::WA_NoSystemBackground);
    m_binding.bind(this, m_symbolNode.get());
    qwidgetSymbol::onUpdateProperties(nullptr);
}

qwidgetSymbol::~qwidgetSymbol() = default;

void qwidgetSymbol::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
}

const PropertyBindings &qwidgetSymbol::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetSymbol>(Then::Repaint),
        PropertyRow::takes<&qwidgetSymbol::takeBorder>(Then::Repaint, Prop::BorderColor,
                                                       Prop::BorderWidth),
        PropertyRow::takes<&qwidgetSymbol::takeBackground>(Then::Repaint, Prop::Background),
        PropertyRow::takes<&qwidgetSymbol::takeText>(
            Then::Value, Prop::FontFamily, Prop::FontSize, Prop::Bold, Prop::Italic,
            Prop::Underline, Prop::StrikeOut, Prop::Color, Prop::Align, Prop::Valign),
        PropertyRow::takes<&qwidgetSymbol::takePlace>(Then::Value, Prop::Angle, Prop::Mirrored,
                                                      Prop::KeepAspect, Prop::LevelColor),
        PropertyRow::only(Then::Value, Prop::Signal, Prop::Source, Prop::Body, Prop::Line,
                          Prop::Minimum, Prop::Maximum, Prop::ShowValue),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetSymbol::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetSymbol *symbol = m_symbolNode.get();
    m_isSourceOld = true; // the file may be another one under its name
    if (symbol && takeOver(*symbol, property))
        DirectPainting::repaint(*this);
}

void qwidgetSymbol::takePlace(const Nodes::widgetSymbol &symbol)
{
    m_place.angle = symbol.GetAngle();
    m_place.isMirrored = symbol.isMirrored();
    m_place.keepsAspect = symbol.keepsAspect();
    m_levelColor = Utils::NColorToQColor(symbol.GetLevelColor());
    m_picture = Picture();
}

void qwidgetSymbol::takeText(const Nodes::widgetSymbol &symbol)
{
    m_font = Utils::NFontToQFont(symbol.GetFont());
    m_textColor = Utils::NColorToQColor(symbol.GetTextColor());
    m_alignment = Utils::NAligmentToQtAligment(symbol.GetHorizontalAlignment(),
                                               symbol.GetVerticalAlignment());
}

void qwidgetSymbol::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_symbolNode)
        return;
    takeValue(handed);
    DirectPainting::repaint(*this);
}

void qwidgetSymbol::takeValue(const Nodes::SignalValue &handed)
{
    const Nodes::widgetSymbol &node = *m_symbolNode;
    const Nodes::SignalValue value = take(node, handed, isEditor());
    const Nodes::widgetState *state = node.GetState(value);
    m_text = ElementPainting::withLineBreaks(QString::fromStdString(node.GetDisplayText(value)));
    m_textColor = Utils::NColorToQColor(state && state->HasTextColor() ? state->GetTextColor()
                                                                       : node.GetTextColor());
    const QString shown = m_style.key() + QString::number(std::isnan(m_level));
    m_level = node.GetLevel(value);
    m_look = node.GetLook(value);
    m_stateBody =
        state && state->HasBackgroundColor() ? ownColor(state->GetBackgroundColor()) : QColor();
    takeStyle();
    const std::shared_ptr<Symbol> symbol = m_symbol;
    takeSource(value);
    if (symbol != m_symbol || shown != m_style.key() + QString::number(std::isnan(m_level)))
        m_picture = Picture();
}

void qwidgetSymbol::takeStyle()
{
    // What is stopped stays hollow whatever it is filled with while it runs.
    const QColor usual =
        m_look == Nodes::SymbolLook::Off ? QColor() : ownColor(m_symbolNode->GetBodyColor());
    m_surface = surface();
    m_style = SymbolStyle::of(m_look, m_stateBody.isValid() ? m_stateBody : usual,
                              ownColor(m_symbolNode->GetLineColor()), m_surface);
}

// A picture of the project that follows nothing stays as its author has drawn it.
SymbolStyle::Surface qwidgetSymbol::surface() const
{
    const bool isOwn = m_look == Nodes::SymbolLook::Plain && !m_symbolNode->GetSource().IsBuiltIn();
    const QColor color = Utils::NColorToQColor(m_symbolNode->GetSurface());
    return isOwn || qGray(color.rgb()) >= 96 ? SymbolStyle::Surface::Light
                                             : SymbolStyle::Surface::Dark;
}

// Everything that is read is read here: painting finds it done.
void qwidgetSymbol::takeSource(const Nodes::SignalValue &value)
{
    const Nodes::ResourceLink &source = m_symbolNode->GetSource(value);
    if (m_isSourceOld || source != m_source) // values do not ask the disk
        m_symbol = SymbolStore::getInstance().get(source);
    m_isSourceOld = false;
    m_source = source;
    m_caption.clear();
    if (!m_symbol) {
        m_caption = QStringLiteral("мнемосимвол не выбран");
        return;
    }
    if (!m_symbol->refusal().isEmpty()) {
        const QString path = QString::fromStdString(source.GetFilePath());
        m_caption = QFileInfo(path).fileName() + ": " + m_symbol->refusal();
        report(path);
        return;
    }
    m_symbol->prepare(m_style);
    if (!m_symbol->levelBox().isEmpty() && !std::isnan(m_level))
        m_symbol->prepare(filledStyle());
}

void qwidgetSymbol::report(const QString &source) const
{
    if (isRuntime())
        context().actions().journalOnce(*m_symbolNode,
                                        QStringLiteral("Мнемосимвол «%1» не показан: %2")
                                            .arg(source, m_symbol->refusal())
                                            .toStdString());
}

SymbolStyle qwidgetSymbol::filledStyle() const
{
    SymbolStyle filled = m_style;
    filled.level = m_levelColor;
    return filled;
}

QRect qwidgetSymbol::inside() const
{
    const int margin = qMax(0, m_borderWidth);
    return rect().adjusted(margin, margin, -margin, -margin);
}

// The symbol makes room for a text above or below it; one in the middle stands on it.
int qwidgetSymbol::textHeight() const
{
    if (m_text.isEmpty() || m_alignment & Qt::AlignVCenter)
        return 0;
    const int lines = m_text.count('\n') + 1;
    return qMin(lines * QFontMetrics(m_font).lineSpacing() + 2, inside().height() / 2);
}

QRect qwidgetSymbol::symbolArea() const
{
    const bool isAbove = m_alignment & Qt::AlignTop;
    return inside().adjusted(0, isAbove ? textHeight() : 0, 0, isAbove ? 0 : -textHeight());
}

const qwidgetSymbol::Picture &qwidgetSymbol::pictureFor(const SymbolPlace &place,
                                                        const QSize &pixels)
{
    if (m_picture.pixels == pixels && m_picture.place == place)
        return m_picture;
    SymbolStore &store = SymbolStore::getInstance();
    m_picture = Picture{place, pixels, store.draw(m_symbol, m_style, place, pixels), QPixmap()};
    if (!m_symbol->levelBox().isEmpty() && !std::isnan(m_level))
        m_picture.full = store.draw(m_symbol, filledStyle(), place, pixels);
    return m_picture;
}

void qwidgetSymbol::drawSymbol(QPainter &painter)
{
    const QRect area = symbolArea();
    if (area.isEmpty())
        return;
    const QTransform &device = painter.deviceTransform();
    const QSizeF covered(area.width() * std::hypot(device.m11(), device.m12()),
                         area.height() * std::hypot(device.m21(), device.m22()));
    SymbolPlace place = m_place;
    place.area = area.size();
    const Picture &picture = pictureFor(place, covered.toSize().expandedTo({1, 1}));
    if (picture.pixels != area.size())
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(area, picture.empty);
    if (!picture.full.isNull()) {
        const QRectF box = place.transform(m_symbol->size()).mapRect(m_symbol->levelBox());
        const int surface = qRound(box.bottom() - m_level * box.height());
        painter.save();
        painter.setClipRect(area.adjusted(0, surface, 0, 0), Qt::IntersectClip);
        painter.drawPixmap(area, picture.full);
        painter.restore();
    }
    SymbolSigns::draw(painter, area, m_look);
}

void qwidgetSymbol::drawText(QPainter &painter) const
{
    painter.setFont(m_font);
    painter.setPen(m_textColor);
    painter.drawText(inside(), int(m_alignment), m_text);
}

void qwidgetSymbol::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintDirectly(painter);
}

void qwidgetSymbol::paintDirectly(QPainter &painter)
{
    if (!m_symbolNode)
        return;
    painter.save();
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    if (surface() != m_surface) { // of the window, which tells elements nothing
        takeStyle();
        m_picture = Picture();
    }
    if (m_caption.isEmpty())
        drawSymbol(painter);
    else if (m_symbol || isEditor())
        MissingPicture::drawPlaceholder(painter, symbolArea(), m_caption);
    if (!m_text.isEmpty())
        drawText(painter);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
    if (m_symbolNode->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
    drawQualityMark(painter, rect(), Qt::AlignLeft);
    painter.restore();
}

bool qwidgetSymbol::event(QEvent *event)
{
    return ElementTooltip::show(event, m_symbolNode.get()) || QWidget::event(event);
}

} // namespace Widgets
