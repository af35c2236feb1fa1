#include "widgets/elements/qbuttonBasic.h"

#include "widgets/context/ActionSink.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/pictures/MissingPicture.h"

#include "nodes/visual/elements/widgetButton.h"
#include "utils/convert/ValueConversions.h"

#include <QFocusEvent>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace Widgets {

namespace {

// Legible also below the cover of a disabled element.
const QColor disabledTextColor(60, 66, 72);

} // namespace

qbuttonBasic::qbuttonBasic(Nodes::BasicWidget *node, QWidget *parent,
                           const SceneContextPtr &context)
    : QPushButton(parent),
      IWidget(node, context),
      m_button(dynamic_cast<Nodes::widgetButton *>(node))
{
    setMouseTracking(true);
    QPalette legible = palette();
    legible.setColor(QPalette::Disabled, QPalette::ButtonText, disabledTextColor);
    setPalette(legible);
    // In the editor the keys belong to the editor.
    if (m_button && !isEditor() && !m_button->GetHotKey().empty())
        setShortcut(QKeySequence::fromString(QString::fromStdString(m_button->GetHotKey()),
                                             QKeySequence::PortableText));
    qbuttonBasic::onUpdateProperties(nullptr);
    if (m_node)
        setGeometry(Utils::NRectToQRect(m_node->GetGeometry()));
    m_binding.bind(this, m_node.get());
    connect(this, &QAbstractButton::pressed, this, &qbuttonBasic::onPressed);
    connect(this, &QAbstractButton::released, this, &qbuttonBasic::onReleased);
    connect(&m_hold, &ButtonHold::lost, this, &qbuttonBasic::releaseHeld);
}

qbuttonBasic::~qbuttonBasic()
{
    m_owed.reset();
    // The own style goes before the widget that uses it.
    if (m_ownStyle)
        setStyle(nullptr);
}

void qbuttonBasic::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    if (!on)
        releaseHeld();
}

void qbuttonBasic::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_button)
        return;
    const Nodes::Quality marked = m_quality;
    const Nodes::SignalValue value = take(*m_button, handed, isEditor());
    const QString caption = QString::fromStdString(m_button->GetDisplayText(value));
    if (marked == m_quality && caption == m_caption)
        return;
    m_caption = caption;
    update();
}

ActionTrigger qbuttonBasic::triggerHere() const
{
    ActionTrigger trigger = context().actions().triggerAt(this, mapToGlobal(QPoint(0, height())),
                                                          ActionOrigin::Gesture);
    trigger.element = Nodes::NodeLink(m_button.get());
    return trigger;
}

void qbuttonBasic::onPressed()
{
    m_isHeld = true;
    m_hold.begin();
    if (!m_button || !isRuntime())
        return;
    const ActionTrigger trigger = triggerHere();
    context().actions().push(m_button->GetPressActions(), trigger);
    m_owed = context().actions().owe(m_button->GetReleaseActions(), trigger);
}

void qbuttonBasic::onReleased()
{
    if (!m_isHeld)
        return;
    m_isHeld = false;
    m_hold.end();
    m_owed.reset();
}

// Qt releases a button that is disabled or left by the focus, but not one that loses the pointer
// or goes away.
void qbuttonBasic::releaseHeld()
{
    if (!m_isHeld)
        return;
    setDown(false);
    onReleased();
}

void qbuttonBasic::mousePressEvent(QMouseEvent *event)
{
    if (isRuntime())
        QPushButton::mousePressEvent(event);
    else
        event->ignore();
}

void qbuttonBasic::mouseReleaseEvent(QMouseEvent *event)
{
    if (isRuntime())
        QPushButton::mouseReleaseEvent(event);
    else
        event->ignore();
}

void qbuttonBasic::focusOutEvent(QFocusEvent *event)
{
    if (m_button && isRuntime())
        context().actions().push(m_button->GetFocusLossActions(), triggerHere());
    QPushButton::focusOutEvent(event);
}

void qbuttonBasic::hideEvent(QHideEvent *event)
{
    QPushButton::hideEvent(event);
    releaseHeld();
}

bool qbuttonBasic::event(QEvent *event)
{
    if (event->type() == QEvent::Shortcut)
        setShortcutAutoRepeat(static_cast<QShortcutEvent *>(event)->shortcutId(), false);
    else if (event->type() == QEvent::UngrabMouse)
        releaseHeld();
    return ElementTooltip::show(event, m_node.get()) || QPushButton::event(event);
}

void qbuttonBasic::paintEvent(QPaintEvent *event)
{
    QPushButton::paintEvent(event);
    if (!m_button)
        return;
    QPainter painter(this);
    if (m_isPictureMissing)
        MissingPicture::draw(context(), painter, rect(), m_button->GetImage());
    const bool isDisabled = m_button->isDisabled();
    painter.setPen(isDisabled ? palette().color(QPalette::Disabled, QPalette::ButtonText)
                              : m_textColor);
    drawRotatedText(&painter, float(m_button->GetAngle()), width() / 2, height() / 2, m_caption);
    if (isDisabled)
        ElementPainting::drawDisabledCover(painter, rect());
    drawQualityMark(painter, rect(), Qt::AlignLeft);
}

void qbuttonBasic::drawRotatedText(QPainter *painter, float angle, int cx, int cy,
                                   QString const &text)
{
    painter->setFont(font());
    ElementPainting::drawRotatedText(*painter, size(), {cx, cy}, double(angle), 0, m_alignmentFlags,
                                     text);
}

} // namespace Widgets
