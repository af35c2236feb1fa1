// What the box shows. How an edit begins and goes is in qwidgetEditBoxInput.cpp, how it ends in
// qwidgetEditBoxFinish.cpp, its dialogs in qwidgetEditBoxKeyboards.cpp, which texts are values in
// qwidgetEditBoxValue.cpp, painting in qwidgetEditBoxLook.cpp.
#include "widgets/elements/qwidgetEditBox.h"

#include "widgets/elements/binding/EditedValue.h"
#include "widgets/elements/binding/PropertyBindings.h"

#include "nodes/model/services/AccessCheck.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/NumberText.h"
#include "nodes/visual/elements/widgetEditBox.h"
#include "utils/convert/ValueConversions.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QValidator>

namespace Widgets {

namespace {

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

qwidgetEditBox::qwidgetEditBox(Nodes::BasicWidget *node, QWidget *parent,
                               const SceneContextPtr &context)
    : QLineEdit(parent),
      IWidget(node, context),
      m_editBox(dynamic_cast<Nodes::widgetEditBox *>(node)),
      m_up(makeButton("+", this)),
      m_down(makeButton("-", this)),
      m_keyboard(makeButton("...", this))
{
    setReadOnly(true);
    QCoreApplication::instance()->installEventFilter(this);
    setAutoFillBackground(true);
    setAcceptDrops(isEditor());
    setContextMenuPolicy(Qt::NoContextMenu);
    setFrame(false);
    setCursor(Qt::IBeamCursor);
    connect(this, &QLineEdit::textChanged, this, &qwidgetEditBox::onTextChanged);
    connect(this, &QLineEdit::editingFinished, this, &qwidgetEditBox::onEditingFinished);
    connect(m_up, &QPushButton::clicked, this, &qwidgetEditBox::onBtnUpClicked);
    connect(m_down, &QPushButton::clicked, this, &qwidgetEditBox::onBtnDownClicked);
    connect(m_keyboard, &QPushButton::clicked, this, &qwidgetEditBox::onBtnKeyboardClicked);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &qwidgetEditBox::onTimeLimit);
    m_binding.bind(this, m_editBox.get());
    qwidgetEditBox::onUpdateProperties(nullptr);
}

qwidgetEditBox::~qwidgetEditBox() = default;

void qwidgetEditBox::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    if (!on)
        abandon(QStringLiteral("Окно закрыто."));
}

QString qwidgetEditBox::shownText() const
{
    const QString &text = isHeld() ? m_previous : m_pending;
    return m_quality == Nodes::Quality::Bad ? QLatin1String(Nodes::NoValueText) : text;
}

const PropertyBindings &qwidgetEditBox::bindings() const
{
    using Prop = Node::Prop;
    // What is typed stands beside the value: whatever changes a size, a font or a text of one of
    // them lays out both anew.
    static constexpr PropertyRow rows[] = {
        PropertyRow::takes<&qwidgetEditBox::takePlace>(Then::Value, Prop::X, Prop::Y, Prop::Width,
                                                       Prop::Height),
        PropertyRow::takes<&qwidgetEditBox::takeText>(
            Then::Value, Prop::Signal, Prop::FontFamily, Prop::FontSize, Prop::Bold, Prop::Italic,
            Prop::Underline, Prop::StrikeOut, Prop::Align, Prop::Valign, Prop::WriteFont,
            Prop::WriteFontFamily, Prop::WriteFontSize, Prop::WriteBold, Prop::WriteItalic),
        PropertyRow::takes<&qwidgetEditBox::applyFrame>(
            Then::Repaint, Prop::BorderColor, Prop::BorderWidth, Prop::Background, Prop::Color),
        PropertyRow::takes<&qwidgetEditBox::takeButtons>(
            Then::Value, Prop::Signal, Prop::Type, Prop::StepButtons, Prop::KeyboardButton,
            Prop::KeyboardOnClick, Prop::X, Prop::Y, Prop::Width, Prop::Height, Prop::BorderWidth),
        PropertyRow::takes<&qwidgetEditBox::applyValidator>(Then::Value, Prop::Signal, Prop::Type,
                                                            Prop::Limits, Prop::Minimum,
                                                            Prop::Maximum, Prop::Step),
        PropertyRow::only(Then::Repaint, Prop::Angle, Prop::Disabled),
        // Read when the operator types
        PropertyRow::only(Then::Nothing, Prop::Confirm, Prop::CheckRights, Prop::EditTimeout),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetEditBox::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetEditBox *editBox = m_editBox.get();
    if (editBox && takeOver(*editBox, property))
        update();
}

void qwidgetEditBox::takePlace(const Nodes::widgetEditBox &editBox)
{
    m_geometry = Utils::NRectToQRect(editBox.GetGeometry());
    setGeometry(m_geometry);
}

void qwidgetEditBox::takeText(const Nodes::widgetEditBox &editBox)
{
    m_font = Utils::NFontToQFont(editBox.GetFont());
    m_alignment = Utils::NAligmentToQtAligment(editBox.GetHorizontalAlignment(),
                                               editBox.GetVerticalAlignment());
    setAlignment(m_alignment);
    setFont(getCurrentFont());
}

void qwidgetEditBox::takeButtons(const Nodes::widgetEditBox &editBox)
{
    const Nodes::enSignalValueType type = editBox.GetValueType();
    m_hasStepButtons = editBox.GetShowStepButtons() && isNumeric(type);
    m_hasKeyboardButton = editBox.GetShowKeyboardButton() && isNumeric(type);
    m_opensKeyboard = editBox.GetKeyboardOnClick();
    resizeButtons();
    updateButtons();
}

void qwidgetEditBox::applyFrame(const Nodes::widgetEditBox &editBox)
{
    takeBorder(editBox);
    takeBackground(editBox);
    m_textColor = Utils::NColorToQColor(editBox.GetTextColor());
    setStyleSheet(QStringLiteral("QLineEdit {border: %1px solid rgba(0, 0, 0, 0); "
                                 "background-color: rgba(0, 0, 0, 0);}")
                      .arg(m_borderWidth));
    QPalette colors = palette();
    colors.setColor(QPalette::Base, m_backgroundColor);
    colors.setColor(QPalette::Window, m_backgroundColor);
    colors.setColor(QPalette::Text, m_textColor);
    setPalette(colors);
}

void qwidgetEditBox::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_editBox)
        return;
    const Nodes::SignalValue value = take(*m_editBox, handed, isEditor());
    m_decimals = m_editBox->GetValueType() == Nodes::enSignalValueType::Double
                     ? m_editBox->GetStepDecimals()
                     : -1;
    takeShownText(value);
    if (isHeld() && !isSameUser())
        abandon(QStringLiteral("Сменился пользователь."));
    else if (m_isEditing)
        layOutTyping();
    emit shownTextChanged(shownText());
    update();
}

// The operator's text stays; what the edit goes back to is the value of now.
void qwidgetEditBox::takeShownText(const Nodes::SignalValue &value)
{
    const QString typed = m_pending;
    m_previousValue = value;
    m_pending.clear();
    if (isStandIn())
        m_pending = QString::fromStdString(
            EditedValue::formOf(m_editBox->GetDisplayText(Nodes::SignalValue(0.0))));
    else if (m_quality != Nodes::Quality::Bad)
        m_pending = QString::fromStdString(m_editBox->GetDisplayText(value));
    sepCountCalc();
    m_previous = m_pending;
    if (isHeld())
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

} // namespace Widgets
