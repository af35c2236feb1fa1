#include "widgets/dialogs/VirtualKeyboard.h"

#include "widgets/dialogs/CurrentValueLabel.h"
#include "widgets/dialogs/VirtualKeyboardForm.h"

#include <QPushButton>
#include <QScreen>
#include <QValidator>

namespace Widgets {

namespace {

constexpr int unlimitedLength = 32767;
constexpr int keysInRow = 15;
constexpr int rowCount = 7;
constexpr QSize largestSize(1440, 600);

// Most of the screen's width: keys that a finger hits, at the size of a real keyboard's at most.
QSize sizeOn(const QScreen &screen)
{
    const QSize area = screen.availableSize();
    return QSize(area.width() * 23 / 25, area.height() * 11 / 20).boundedTo(largestSize);
}

} // namespace

VirtualKeyboard::VirtualKeyboard(QWidget *parent)
    : BasicDialog(parent), m_form(std::make_unique<VirtualKeyboardForm>())
{
    m_form->setupUi(this);
    setWindowTitle(tr("Ввод значения"));
    m_keys = findChildren<QPushButton *>();
    connectKeys();
    updateKeys();
    resize(sizeOn(*(parent ? parent : this)->screen()));
    m_form->edValue->setFocus();
}

VirtualKeyboard::~VirtualKeyboard() = default;

void VirtualKeyboard::connectKeys()
{
    for (QPushButton *key : qAsConst(m_keys))
        connect(key, &QPushButton::clicked, this, &VirtualKeyboard::onButtonClicked);
    connect(m_form->btn_lang, &QPushButton::clicked, this, &VirtualKeyboard::changeLanguage);
    connect(m_form->btn_lshift, &QPushButton::toggled, this, &VirtualKeyboard::changeShiftMode);
    connect(m_form->btn_rshift, &QPushButton::toggled, this, &VirtualKeyboard::changeShiftMode);
    connect(m_form->btn_caps, &QPushButton::toggled, this, &VirtualKeyboard::changeCapsMode);
    connect(m_form->edValue, &QLineEdit::returnPressed, this, &VirtualKeyboard::enterClicked);
}

void VirtualKeyboard::configure(QVariant value, int maxLength, bool)
{
    m_isMultiLine = false;
    m_form->edValue->setMaxLength(maxLength > 0 ? maxLength : unlimitedLength);
    m_form->edValue->setText(value.toString());
}

QString VirtualKeyboard::getData()
{
    return m_form->edValue->text();
}

void VirtualKeyboard::setEchoMode(QLineEdit::EchoMode mode)
{
    m_form->edValue->setEchoMode(mode);
}

void VirtualKeyboard::setValidator(QValidator const *validator)
{
    m_form->edValue->setValidator(validator);
}

void VirtualKeyboard::showCurrent(const QString &text)
{
    m_form->current->showValue(text);
}

void VirtualKeyboard::accept()
{
    QVariant value = getData();
    emit dataSet(&value);
    BasicDialog::accept();
}

void VirtualKeyboard::resizeEvent(QResizeEvent *event)
{
    m_form->fitKeys(width() / keysInRow, height() / rowCount);
    BasicDialog::resizeEvent(event);
}

void VirtualKeyboard::onButtonClicked()
{
    const auto *key = qobject_cast<QPushButton *>(sender());
    QLineEdit *edit = m_form->edValue;
    if (key == m_form->btn_backspace)
        backspaceClicked();
    else if (key == m_form->btn_prev)
        edit->cursorBackward(false, 1);
    else if (key == m_form->btn_next)
        edit->cursorForward(false, 1);
    else if (key == m_form->btn_space)
        addText(QStringLiteral(" "));
    else if (key == m_form->btn_tab)
        addText(QStringLiteral("\t"));
    else if (key == m_form->btn_clear)
        edit->clear();
    else if (key == m_form->btn_enter)
        enterClicked();
    else if (key == m_form->btn_esc)
        reject();
    else if (key && key->property("btnData").isValid()) {
        addText(key->text());
        if (m_form->btn_lshift->isChecked() || m_form->btn_rshift->isChecked())
            changeShiftMode(false);
    }
}

// Neither a full field nor a validator lets the hardware keyboard through; nor does it these keys.
bool VirtualKeyboard::isAdmitted(QString text, int cursor) const
{
    if (text.size() > m_form->edValue->maxLength())
        return false;
    const QValidator *validator = m_form->edValue->validator();
    return !validator || validator->validate(text, cursor) != QValidator::Invalid;
}

void VirtualKeyboard::addText(QString text)
{
    const int cursor = m_form->edValue->cursorPosition();
    const QString whole = m_form->edValue->text().insert(cursor, text);
    if (!isAdmitted(whole, cursor + 1))
        return;
    m_form->edValue->setText(whole);
    m_form->edValue->setCursorPosition(cursor + 1);
}

void VirtualKeyboard::backspaceClicked()
{
    const int cursor = m_form->edValue->cursorPosition();
    if (cursor == 0)
        return;
    m_form->edValue->setText(m_form->edValue->text().remove(cursor - 1, 1));
    m_form->edValue->setCursorPosition(cursor - 1);
}

void VirtualKeyboard::enterClicked()
{
    if (m_isMultiLine)
        addText(QStringLiteral("\n"));
    else
        accept();
}

void VirtualKeyboard::changeLanguage()
{
    const int count = property("Languages").toStringList().size();
    const uint next = property("LangMode").toUInt() + 1;
    const uint language = int(next) < count ? next : 0;
    setProperty("LangMode", language);
    m_form->markLetters(int(language));
    updateKeys();
}

void VirtualKeyboard::changeShiftMode(bool isOn)
{
    m_form->btn_lshift->setChecked(isOn);
    m_form->btn_rshift->setChecked(isOn);
    m_isShift = isOn;
    setProperty("ShiftMode", isOn);
    updateKeys();
}

void VirtualKeyboard::changeCapsMode(bool isOn)
{
    m_form->btn_caps->setChecked(isOn);
    m_isCaps = isOn;
    setProperty("CapsMode", isOn);
    updateKeys();
}

void VirtualKeyboard::updateKeys()
{
    const int first = 2 * property("LangMode").toInt();
    for (QPushButton *key : qAsConst(m_keys)) {
        const QStringList characters = key->property("btnData").toStringList();
        if (characters.isEmpty())
            continue;
        const bool followsCaps = key->property("btnMode").isValid();
        const bool isUpper = followsCaps ? m_isShift != m_isCaps : m_isShift;
        key->setText(characters.value(first + int(isUpper)));
    }
}

} // namespace Widgets
