#include "widgets/elements/qwidgetComboBox.h"

#include "widgets/context/ActionSink.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/values/NumberText.h"
#include "nodes/visual/elements/widgetComboBox.h"
#include "utils/convert/ValueConversions.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>

namespace Widgets {

namespace {

constexpr double raisedZ = 100; // above every neighbour of the host
constexpr int touchHeight = 32; // pixels; rows that a finger hits
constexpr int codeSilent = 403;

QString rgba(const Nodes::NColor &color)
{
    return QStringLiteral("rgba(%1)").arg(QString::fromStdString(color.ToString(true)));
}

QString styleSheetOf(const Nodes::widgetComboBox &node)
{
    const QString arrow = QString::fromLatin1(node.isPopupUpward() ? "url(:/icons/arrow_up.svg)"
                                                                   : "url(:/icons/arrow_down.svg)");
    return QStringLiteral("QComboBox { border: %1px solid %2; color: %3; background-color:%4; } "
                          "QListView { color: %3; background-color:%4; } "
                          "QComboBox::drop-down:button{border: 0px; background:%4;} "
                          "QComboBox::down-arrow { padding: 0px 1px 0px 1px; image: %5; "
                          "width: 14px; height: 14px;}")
        .arg(QString::number(node.GetBorderWidth()), rgba(node.GetBorderColor()),
             rgba(node.GetTextColor()), rgba(node.GetBackgroundColor()), arrow);
}

} // namespace

qwidgetComboBox::qwidgetComboBox(Nodes::widgetComboBox *node, QWidget *parent,
                                 const SceneContextPtr &context)
    : QComboBox(parent), IWidget(node, context), m_comboBox(node)
{
    // Editable for the sake of the alignment only: the operator chooses, never types.
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(NoInsert);
    setDuplicatesEnabled(true);
    lineEdit()->setReadOnly(true);
    lineEdit()->setPlaceholderText(QLatin1String(Nodes::NoValueText));
    lineEdit()->setFocusPolicy(Qt::NoFocus);
    lineEdit()->installEventFilter(this);
    connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &qwidgetComboBox::onCurrentIndexChanged);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &qwidgetComboBox::onTimeLimit);
    connect(this, qOverload<int>(&QComboBox::highlighted), this, &qwidgetComboBox::restartLimit);
    m_binding.bind(this, m_comboBox.get());
    qwidgetComboBox::onUpdateProperties(nullptr);
}

qwidgetComboBox::~qwidgetComboBox() = default;

void qwidgetComboBox::setProxy(QGraphicsProxyWidget *proxy)
{
    m_proxy = proxy;
}

QString qwidgetComboBox::shownText() const
{
    return currentIndex() < 0 ? lineEdit()->placeholderText() : currentText();
}

void qwidgetComboBox::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
}

const PropertyBindings &qwidgetComboBox::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetComboBox>(Then::Nothing),
        PropertyRow::takes<&qwidgetComboBox::applyStyle>(
            Then::Repaint, Prop::PopupUp, Prop::BorderColor, Prop::BorderWidth, Prop::Background,
            Prop::Color, Prop::SelectionColor, Prop::FontFamily, Prop::FontSize, Prop::Bold,
            Prop::Italic, Prop::Underline, Prop::StrikeOut, Prop::Align, Prop::Valign),
        PropertyRow::takes<&qwidgetComboBox::applyItems>(
            Then::Repaint, Prop::Signal, Prop::Background, Prop::Align, Prop::Valign),
        PropertyRow::takes<&qwidgetComboBox::takeIndex>(Then::Nothing, Prop::Index),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
        // Read when the operator chooses
        PropertyRow::only(Then::Nothing, Prop::Targets, Prop::Confirm, Prop::EditTimeout),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetComboBox::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetComboBox *comboBox = m_comboBox.get();
    if (comboBox && takeOver(*comboBox, property))
        update();
}

// At run time it is the last choice, already shown; the device may not have it yet.
void qwidgetComboBox::takeIndex(const Nodes::widgetComboBox &)
{
    if (!isRuntime())
        selectShown();
}

void qwidgetComboBox::applyStyle(const Nodes::widgetComboBox &comboBox)
{
    m_alignment = Utils::NAligmentToQtAligment(comboBox.GetHorizontalAlignment(),
                                               comboBox.GetVerticalAlignment());
    lineEdit()->setAlignment(m_alignment);
    setStyleSheet(styleSheetOf(comboBox));
    // Under a style sheet the parts do not inherit it on every platform.
    const QFont font = Utils::NFontToQFont(comboBox.GetFont());
    setFont(font);
    lineEdit()->setFont(font);
    view()->setFont(font);
    QPalette colors = view()->palette();
    colors.setColor(QPalette::Highlight, Utils::NColorToQColor(comboBox.GetSelectionColor()));
    colors.setColor(QPalette::HighlightedText, Utils::NColorToQColor(comboBox.GetTextColor()));
    view()->setPalette(colors);
}

void qwidgetComboBox::applyItems(const Nodes::widgetComboBox &comboBox)
{
    QSignalBlocker blocker(this); // rebuilding the list is no choice of the operator's
    const QSize row(width(), qMax(height(), touchHeight));
    const QColor background = Utils::NColorToQColor(comboBox.GetBackgroundColor());
    clear();
    for (const auto &[text, value] : comboBox.GetItems()) {
        addItem(QString::fromStdString(text), QVariant::fromValue(value));
        setItemData(count() - 1, row, Qt::SizeHintRole);
        setItemData(count() - 1, background, Qt::BackgroundRole);
        setItemData(count() - 1, int(m_alignment), Qt::TextAlignmentRole);
    }
    blocker.unblock();
    selectShown();
}

void qwidgetComboBox::selectShown()
{
    if (isEditor())
        select(m_comboBox->GetCurrentIndex());
    else if (m_comboBox->GetSignalLink().isEmpty())
        select(m_previousIndex); // no value tells it: the last choice stands
    else
        onValueUpdated(m_comboBox->GetValue());
}

void qwidgetComboBox::select(int index)
{
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
    m_previousIndex = currentIndex();
}

void qwidgetComboBox::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_comboBox)
        return;
    const Nodes::SignalValue value = take(*m_comboBox, handed, isEditor());
    select(isStandIn() ? m_comboBox->GetCurrentIndex()
                       : Nodes::widgetComboBox::FindItem(m_comboBox->GetItems(), value));
    update();
}

void qwidgetComboBox::onCurrentIndexChanged(int index)
{
    if (!m_comboBox || index < 0)
        return;
    const auto value = itemData(index).value<Nodes::SignalValue>();
    const QPointer<qwidgetComboBox> alive(this);
    if (m_comboBox->isConfirmed() && !confirmed(index)) {
        if (alive)
            select(m_previousIndex);
        return;
    }
    // Each question and message lets time pass, in which the node may go.
    const Outcome outcome = alive ? writeAll(index, value) : Outcome::Silenced;
    if (!alive || !m_comboBox || outcome == Outcome::Silenced || outcome == Outcome::Refused)
        return;
    UpdateNodePropertyCurrentIndex(index);
    if (outcome == Outcome::WrittenElsewhere)
        selectShown(); // the choice is not what the box shows
    ValueWriter::runAfterWrite(*this, context(), *m_comboBox);
}

// The order of the targets counts: a silent refusal ends the whole, any other only its own target.
qwidgetComboBox::Outcome qwidgetComboBox::writeAll(int index, const Nodes::SignalValue &value)
{
    const QPointer<qwidgetComboBox> alive(this);
    if (!m_comboBox)
        return Outcome::Silenced;
    Nodes::NodesArray targets;
    m_comboBox->GetWriteNodes(targets);
    Outcome outcome = Outcome::Refused;
    for (const Nodes::NodeLink &target : targets) {
        const Nodes::Result result = context().actions().write(
            *m_comboBox, [&] { return m_comboBox->WriteNode(target, value); });
        if (result) {
            if (target == m_comboBox->GetSignalLink() || m_comboBox->GetSignalLink().isEmpty())
                outcome = Outcome::Written;
            else if (outcome == Outcome::Refused)
                outcome = Outcome::WrittenElsewhere;
            select(index);
            continue;
        }
        ValueWriter::report(context(), result);
        if (!alive || !m_comboBox)
            return Outcome::Silenced;
        select(m_previousIndex); // of now: values went on coming behind the message
        if (result.GetCode() == codeSilent)
            return Outcome::Silenced;
    }
    if (targets.empty()) {
        ValueWriter::report(context(), m_comboBox->WriteValue(value)); // tells what is missing
        if (alive)
            select(m_previousIndex);
    }
    return outcome;
}

void qwidgetComboBox::UpdateNodePropertyCurrentIndex(int index)
{
    if (m_comboBox->GetPropertyByValueId(Nodes::widgetComboBox::Prop::Index))
        (void)m_comboBox->SetProperty(Nodes::widgetComboBox::Prop::Index, index);
    else
        m_comboBox->SetCurrentIndex(index);
}

void qwidgetComboBox::showPopup()
{
    QComboBox::showPopup();
    if (!view()->isVisible())
        return; // there is nothing to choose from
    if (m_proxy && !m_isListOpen) {
        m_savedZ = m_proxy->zValue();
        m_proxy->setZValue(raisedZ);
    }
    m_isListOpen = true;
    restartLimit();
    auto *popup = findChild<QFrame *>(QString(), Qt::FindDirectChildrenOnly);
    if (!popup)
        return;
    popup->installEventFilter(this);
    placeList(*popup);
    popup->raise();
}

// Where there is no room below, Qt shows a list on the screen above already. One in a scene it
// always shows below, in the scene's coordinates, where the edge of the view may cut it off.
void qwidgetComboBox::placeList(QWidget &popup)
{
    const bool isUpward = m_comboBox && m_comboBox->isPopupUpward();
    QGraphicsProxyWidget *list = popup.graphicsProxyWidget();
    if (!list || !list->scene()) {
        if (isUpward && popup.y() >= mapToGlobal(QPoint(0, 0)).y())
            popup.move(popup.x(), popup.y() - height() - popup.height());
        return;
    }
    const QRectF below = list->sceneBoundingRect();
    const double above = below.top() - height() - below.height();
    const QRectF scene = list->scene()->sceneRect();
    if (isUpward || (below.bottom() > scene.bottom() && above >= scene.top()))
        list->moveBy(0, above - below.top());
}

void qwidgetComboBox::hidePopup()
{
    QComboBox::hidePopup();
    onListHidden();
}

void qwidgetComboBox::onListHidden()
{
    if (!m_isListOpen || view()->isVisible())
        return;
    m_isListOpen = false;
    if (!m_question)
        m_limit.stop();
    if (m_proxy)
        m_proxy->setZValue(m_savedZ);
    if (isRuntime() && m_comboBox)
        selectShown();
}

// A click on the text opens the list, like one on the arrow.
bool qwidgetComboBox::eventFilter(QObject *watched, QEvent *event)
{
    // A view that is left closes the lists in it without a word to their boxes. Later: whatever
    // hides the list now may not have told yet what was chosen.
    if (event->type() == QEvent::Hide && watched != lineEdit())
        QMetaObject::invokeMethod(this, &qwidgetComboBox::onListHidden, Qt::QueuedConnection);
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (watched != lineEdit() || (!isPress && event->type() != QEvent::MouseButtonRelease))
        return QComboBox::eventFilter(watched, event);
    if (isPress) {
        QStyleOptionComboBox option;
        initStyleOption(&option);
        const QRect arrow =
            style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
        QCoreApplication::postEvent(this, new QMouseEvent(QEvent::MouseButtonPress, arrow.center(),
                                                          Qt::LeftButton, Qt::LeftButton,
                                                          Qt::NoModifier));
    }
    return true;
}

void qwidgetComboBox::mousePressEvent(QMouseEvent *event)
{
    if (isRuntime())
        QComboBox::mousePressEvent(event);
    else
        event->ignore();
}

void qwidgetComboBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (isRuntime())
        QComboBox::mouseReleaseEvent(event);
    else
        event->ignore();
}

// A row is chosen in the list only, where it is seen beside the others.
void qwidgetComboBox::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (isRuntime() && isEnabled())
            showPopup();
        else
            event->ignore();
        break;
    default:
        QComboBox::keyPressEvent(event);
    }
}

// A wheel that passes over the box must not write.
void qwidgetComboBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void qwidgetComboBox::paintEvent(QPaintEvent *event)
{
    QComboBox::paintEvent(event);
    if (!m_comboBox)
        return;
    QPainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect text =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    drawQualityMark(painter, text, m_alignment);
    if (m_comboBox->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
}

bool qwidgetComboBox::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QComboBox::event(event);
}

} // namespace Widgets
