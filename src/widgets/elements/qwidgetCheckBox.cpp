#include "widgets/elements/qwidgetCheckBox.h"

#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/pictures/MissingPicture.h"

#include "nodes/values/NumberText.h"
#include "nodes/visual/elements/widgetCheckBox.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolTip>

namespace Widgets {

namespace {

constexpr int markSide = 128; // pixels; sharp on every check box of a usual size

QString unknownText()
{
    return QStringLiteral("Состояние неизвестно, нажатие ничего не записывает.");
}

QRect fitted(const QSize &size, const QRect &rect)
{
    QRect place(QPoint(0, 0), size.scaled(rect.size(), Qt::KeepAspectRatio));
    place.moveCenter(rect.center());
    return place;
}

} // namespace

qwidgetCheckBox::qwidgetCheckBox(Nodes::BasicWidget *node, QWidget *parent,
                                 const SceneContextPtr &context)
    : QCheckBox(parent),
      IWidget(node, context),
      m_checkBox(dynamic_cast<Nodes::widgetCheckBox *>(node)),
      m_defaultMark(QIcon(QStringLiteral(":/icons/check.svg")).pixmap(markSide, markSide))
{
    setAutoFillBackground(true);
    setCheckable(true);
    m_binding.bind(this, m_checkBox.get());
    connect(this, &QCheckBox::stateChanged, this, &qwidgetCheckBox::onStateChanged);
    qwidgetCheckBox::onUpdateProperties(nullptr);
}

qwidgetCheckBox::~qwidgetCheckBox() = default;

QString qwidgetCheckBox::shownText() const
{
    if (m_quality == Nodes::Quality::Bad)
        return QLatin1String(Nodes::NoValueText);
    return isChecked() ? QStringLiteral("1") : QStringLiteral("0");
}

void qwidgetCheckBox::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
}

const PropertyBindings &qwidgetCheckBox::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetCheckBox>(Then::Repaint),
        PropertyRow::takes<&qwidgetCheckBox::takeBorder>(Then::Repaint, Prop::BorderColor,
                                                         Prop::BorderWidth),
        PropertyRow::takes<&qwidgetCheckBox::takeBackground>(Then::Repaint, Prop::Background),
        PropertyRow::takes<&qwidgetCheckBox::takeImage>(Then::Repaint, Prop::Image),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
        PropertyRow::only(Then::Value, Prop::Signal),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetCheckBox::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetCheckBox *checkBox = m_checkBox.get();
    if (checkBox && takeOver(*checkBox, property))
        update();
}

void qwidgetCheckBox::takeImage(const Nodes::widgetCheckBox &checkBox)
{
    const Nodes::ResourceLink &link = checkBox.GetImage();
    m_image = nullptr;
    if (link.GetFilePath().empty())
        return;
    m_resource = link.Load();
    m_image = m_resource ? ImageCachingManager::getInstance().getImage(m_resource) : nullptr;
    if (m_image && !m_image->isNull())
        return;
    m_image = nullptr; // the default mark stands in: the state must be seen
    MissingPicture::report(context(), checkBox, link);
}

void qwidgetCheckBox::show(int state)
{
    const QSignalBlocker blocker(this);
    setCheckState(state > 0 ? Qt::Checked : Qt::Unchecked);
}

void qwidgetCheckBox::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_checkBox)
        return;
    m_lastState =
        take(*m_checkBox, handed, isEditor()).ToDouble() > 0 ? Qt::Checked : Qt::Unchecked;
    show(m_lastState);
    update();
}

void qwidgetCheckBox::onStateChanged(int state)
{
    if (!m_checkBox)
        return;
    // Values go on coming behind the message of a refusal: back to the last of them.
    if (ValueWriter::write(*this, context(), *m_checkBox, Nodes::SignalValue(state != 0),
                           [this] { show(m_lastState); }))
        m_lastState = state;
}

bool qwidgetCheckBox::isKnown() const
{
    return !m_checkBox || m_checkBox->GetSignalLink().isEmpty() ||
           m_checkBox->GetValue().GetQuality() != Nodes::Quality::Bad;
}

// What is not known has no opposite.
void qwidgetCheckBox::nextCheckState()
{
    if (isKnown())
        QCheckBox::nextCheckState();
    else
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), unknownText());
}

bool qwidgetCheckBox::hitButton(QPoint const &point) const
{
    return rect().contains(point);
}

void qwidgetCheckBox::mousePressEvent(QMouseEvent *event)
{
    if (isRuntime())
        QCheckBox::mousePressEvent(event);
    else
        event->ignore();
}

void qwidgetCheckBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (isRuntime())
        QCheckBox::mouseReleaseEvent(event);
    else
        event->ignore();
}

void qwidgetCheckBox::drawMark(QPainter &painter, const QRect &inner) const
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!m_image) {
        painter.drawPixmap(fitted(m_defaultMark.size(), inner), m_defaultMark);
        return;
    }
    ImageCachingManager::getInstance().draw(painter, fitted(m_image->size(), inner), m_resource);
}

void qwidgetCheckBox::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
    const int b = qMax(0, m_borderWidth);
    const QRect inner = rect().adjusted(b, b, -b, -b);
    // The state of a lost device is not known: neither mark nor empty box would be true.
    if (isChecked() && m_quality != Nodes::Quality::Bad)
        drawMark(painter, inner);
    drawQualityMark(painter, inner, Qt::AlignLeft);
    if (m_checkBox && m_checkBox->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
    event->accept();
}

bool qwidgetCheckBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && !isKnown())
        return ElementTooltip::show(event, unknownText() + QLatin1Char('\n') +
                                               ElementTooltip::text(*m_checkBox));
    return ElementTooltip::show(event, m_node.get()) || QCheckBox::event(event);
}

} // namespace Widgets
