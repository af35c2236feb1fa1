// What the box shows and when it edits; how the edit goes is in qwidgetEditBoxInput.cpp, which
// texts are values in qwidgetEditBoxValue.cpp.
#include "widgets/elements/qwidgetEditBox.h"

#include "widgets/elements/ElementPainting.h"
#include "widgets/elements/ElementTooltip.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/auth/AccessCheck.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/NumberText.h"
#include "nodes/visual/widgetEditBox.h"
#include "utils/ValueConversions.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QToolTip>
#include <QValidator>
#include <QtMath>

namespace Widgets {

namespace {

const QColor problemColor(198, 40, 40);

bool isRuntime()
{
    return WindowManager::GetWorkMode() == Nodes::WorkModeRuntime;
}

bool isNumeric(Nodes::enSignalValueType type)
{
    return type == Nodes::enSignalValueType::Int || type == Nodes::enSignalValueType::Double ||
           type == Nodes::enSignalValueType::ULong;
}

QPushButton *makeButton(const char *text, QWidget *parent)
{
    auto *button = new QPushButton(QLatin1String(text), parent);
    button->setFocusPolicy(Qt::NoFocus); // a press on it must not end the edit
    button->setCursor(Qt::ArrowCursor);
    button->hide();
    return button;
}

} // namespace

qwidgetEditBox::qwidgetEditBox(Nodes::BasicWidget *node, QWidget *parent)
    : QLineEdit(parent),
      IWidget(node),
      m_editBox(dynamic_cast<Nodes::widgetEditBox *>(node)),
      m_up(makeButton("+", this)),
      m_down(makeButton("-", this)),
      m_keyboard(makeButton("...", this))
{
    setReadOnly(true);
    QCoreApplication::instance()->installEventFilter(this);
    setAutoFillBackground(true);
    setAcceptDrops(WindowManager::GetWorkMode() == Nodes::WorkModeEditing);
    setContextMenuPolicy(Qt::NoContextMenu);
    setFrame(false);
    setCursor(Qt::IBeamCursor);
    connect(this, &QLineEdit::textChanged, this, &qwidgetEditBox::onTextChanged);
    connect(this, &QLineEdit::editingFinished, this, &qwidgetEditBox::onEditingFinished);
    connect(m_up, &QPushButton::clicked, this, &qwidgetEditBox::onBtnUpClicked);
    connect(m_down, &QPushButton::clicked, this, &qwidgetEditBox::onBtnDownClicked);
    connect(m_keyboard, &QPushButton::clicked, this, &qwidgetEditBox::onBtnKeyboardClicked);
    m_binding.bind(this, m_editBox.get());
    qwidgetEditBox::onUpdateProperties(nullptr);
}

qwidgetEditBox::~qwidgetEditBox() = default;

void qwidgetEditBox::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    if (!on)
        cancelEditing();
}

QString qwidgetEditBox::shownText() const
{
    const QString &text = m_isEditing ? m_previous : m_pending;
    return m_quality == Nodes::Quality::Bad ? QLatin1String(Nodes::NoValueText) : text;
}

void qwidgetEditBox::onUpdateProperties(Nodes::BasicProperty *)
{
    if (!m_editBox)
        return;
    m_font = Utils::NFontToQFont(m_editBox->GetFont());
    m_alignment = Utils::NAligmentToQtAligment(m_editBox->GetHorizontalAlignment(),
                                               m_editBox->GetVerticalAlignment());
    setAlignment(m_alignment);
    m_textColor = Utils::NColorToQColor(m_editBox->GetTextColor());
    m_geometry = Utils::NRectToQRect(m_editBox->GetGeometry());
    const Nodes::enSignalValueType type = m_editBox->GetValueType();
    m_hasStepButtons = m_editBox->GetShowStepButtons() && isNumeric(type);
    m_hasKeyboardButton = m_editBox->GetShowKeyboardButton() && isNumeric(type);
    m_opensKeyboard = m_editBox->GetKeyboardOnClick();
    applyValidator();
    setGeometry(m_geometry);
    setFont(getCurrentFont());
    applyFrame();
    resizeButtons();
    updateButtons();
    onValueUpdated(Nodes::SignalValue());
    update();
}

void qwidgetEditBox::applyFrame()
{
    m_borderWidth = m_editBox->GetBorderWidth();
    m_borderColor = Utils::NColorToQColor(m_editBox->GetBorderColor());
    m_backgroundColor = Utils::NColorToQColor(m_editBox->GetBackgroundColor());
    setStyleSheet(QStringLiteral("QLineEdit {border: %1px solid rgba(0, 0, 0, 0); "
                                 "background-color: rgba(0, 0, 0, 0);}")
                      .arg(m_borderWidth));
    QPalette colors = palette();
    colors.setColor(QPalette::Base, m_backgroundColor);
    colors.setColor(QPalette::Window, m_backgroundColor);
    colors.setColor(QPalette::Text, m_textColor);
    setPalette(colors);
}

void qwidgetEditBox::onValueUpdated(Nodes::SignalValue)
{
    if (!m_editBox)
        return;
    m_quality = m_editBox->GetSignalLink().isEmpty() ? Nodes::Quality::Good
                                                     : m_editBox->GetValue().GetQuality();
    m_decimals = m_editBox->GetValueType() == Nodes::enSignalValueType::Double
                     ? m_editBox->GetStepDecimals()
                     : -1;
    takeShownText();
    update();
}

// The operator's text stays; what the edit goes back to is the value of now.
void qwidgetEditBox::takeShownText()
{
    const bool isHeld = m_isUnfinished || m_isDialogOpen;
    const QString typed = m_pending;
    m_previousValue = m_editBox->GetValue();
    m_pending = m_quality == Nodes::Quality::Bad
                    ? QString()
                    : QString::fromStdString(m_editBox->GetDisplayText());
    sepCountCalc();
    m_previous = m_pending;
    if (isHeld)
        m_pending = typed;
}

bool qwidgetEditBox::UserHaveWritePermissions() const
{
    Nodes::NodesArray nodes;
    m_editBox->GetWriteNodes(nodes);
    const Nodes::ConfigNode *target = nodes.empty() ? nullptr : nodes[0].GetNode();
    return !target || Nodes::CheckAccess(Nodes::PrivilegeWrite, *target);
}

bool qwidgetEditBox::isInputAllowed() const
{
    return !m_editBox->GetCheckRights() || UserHaveWritePermissions();
}

QFont qwidgetEditBox::getCurrentFont() const
{
    const bool isOwn =
        m_editBox->GetFontSelector() == 1 && isRuntime() && UserHaveWritePermissions();
    return isOwn ? Utils::NFontToQFont(m_editBox->GetWriteFont()) : m_font;
}

void qwidgetEditBox::resizeButtons()
{
    const int b = qMax(0, m_borderWidth);
    const QRect inner = rect().adjusted(b, b, -b, -b);
    const int side = qCeil(inner.height() * 0.5) + 2;
    QRect key(0, 0, inner.height() + 2, inner.height() + 2);
    key.moveTopRight(QPoint(inner.right() + 1, inner.top() - 1));
    QRect up(0, 0, side, side);
    up.moveTopRight(QPoint(m_hasKeyboardButton ? key.left() + 1 : key.right(), key.top()));
    QRect down(0, 0, side, inner.height() / 2 + 2);
    down.moveBottomRight(QPoint(up.right(), inner.bottom() + 1));
    m_keyboard->setGeometry(key);
    m_up->setGeometry(up);
    m_down->setGeometry(down);
    const QFont signs(QStringLiteral("Arial"), qMax(1, int(height() * 0.4)));
    m_up->setFont(signs);
    m_down->setFont(signs);
}

void qwidgetEditBox::updateButtons()
{
    const bool isShown = m_isEditing || WindowManager::GetWorkMode() == Nodes::WorkModeEditing;
    m_up->setVisible(isShown && m_hasStepButtons);
    m_down->setVisible(isShown && m_hasStepButtons);
    m_keyboard->setVisible(isShown && m_hasKeyboardButton);
    const QPushButton *leftmost = m_hasStepButtons ? m_up : m_keyboard;
    const bool isCovered = isShown && (m_hasStepButtons || m_hasKeyboardButton);
    setTextMargins(0, 0, isCovered ? width() - leftmost->x() : 0, 0);
}

void qwidgetEditBox::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    resizeButtons();
}

void qwidgetEditBox::drawRotatedText(QPainter *painter)
{
    QFont font = getCurrentFont();
    font.setItalic(font.italic() || m_quality == Nodes::Quality::Stale);
    m_layout.setFont(font);
    m_layout.draw(*painter,
                  {m_geometry.size(), QPoint(m_geometry.width() / 2, m_geometry.height() / 2),
                   m_editBox->GetAngle(), m_borderWidth, int(m_alignment)},
                  shownText());
}

void qwidgetEditBox::drawValue(QPainter &painter)
{
    sepCountCalc();
    painter.setPen(m_editBox->isDisabled()
                       ? palette().color(QPalette::Disabled, QPalette::ButtonText)
                       : m_textColor);
    drawRotatedText(&painter);
    ElementPainting::drawQualityMark(painter, rect(), m_quality, m_alignment);
}

void qwidgetEditBox::drawProblem(QPainter &painter) const
{
    ElementPainting::drawBorder(painter, size(), qMax(2, m_borderWidth), problemColor);
    QRect sign(0, 0, 14, 14);
    sign.moveTopLeft(m_alignment & Qt::AlignRight ? QPoint(2, 2) : QPoint(width() - 16, 2));
    painter.fillRect(sign, problemColor);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(sign, Qt::AlignCenter, QStringLiteral("!"));
}

void qwidgetEditBox::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(rect(), m_backgroundColor);
    QLineEdit::paintEvent(event);
    if (!m_editBox)
        return;
    QPainter painter(this);
    if (!m_isEditing)
        drawValue(painter);
    ElementPainting::drawBorder(painter, m_geometry.size(), m_borderWidth, m_borderColor);
    if (m_isEditing && !inputProblem().isEmpty())
        drawProblem(painter);
    if (m_editBox->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
}

// What hides a box in the middle of an edit, and the focus that Qt then moves on, writes nothing.
void qwidgetEditBox::hideEvent(QHideEvent *event)
{
    cancelEditing();
    QLineEdit::hideEvent(event);
}

bool qwidgetEditBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && m_isEditing && !inputProblem().isEmpty()) {
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), inputProblem());
        return true;
    }
    const QPointer<qwidgetEditBox> alive(this);
    if (event->type() == QEvent::KeyPress && m_isUnfinished)
        moveOn(*static_cast<QKeyEvent *>(event));
    if (!alive)
        return true;
    return ElementTooltip::show(event, m_node.get()) || QLineEdit::event(event);
}

} // namespace Widgets
