// What the box shows. How an edit begins and goes is in qwidgetEditBoxInput.cpp, how it ends in
// qwidgetEditBoxFinish.cpp, its dialogs in qwidgetEditBoxKeyboards.cpp, which texts are values in
// qwidgetEditBoxValue.cpp, painting in qwidgetEditBoxLook.cpp.
#include "widgets/elements/qwidgetEditBox.h"

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

void qwidgetEditBox::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_editBox)
        return;
    const Nodes::SignalValue value = take(*m_editBox, handed);
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
    m_pending = m_quality == Nodes::Quality::Bad
                    ? QString()
                    : QString::fromStdString(m_editBox->GetDisplayText(value));
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
