#include "editor/properties/values/ValueEditor.h"

#include "editor/properties/PropertyTexts.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>
#include <QToolTip>

namespace Editor {

ValueEditor::ValueEditor(const ValueContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(1);
    setAutoFillBackground(true);
}

ValueEditor::~ValueEditor() = default;

void ValueEditor::setMain(QWidget *widget)
{
    m_layout->insertWidget(0, widget, 1);
    widget->setMinimumWidth(20);
    widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    setFocusProxy(widget);
    widget->installEventFilter(this);
}

// Who turns the wheel over a table scrolls it, and does not mean the value that happens to be open.
bool ValueEditor::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}

QToolButton *ValueEditor::addButton(const QString &text, const QString &tip)
{
    auto *button = new QToolButton(this);
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFixedWidth(22);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    button->setFocusPolicy(Qt::NoFocus);
    m_layout->addWidget(button);
    return button;
}

void ValueEditor::showValue(const QString &text, bool isMixed)
{
    setText(text);
    if (!isMixed)
        return;
    auto *box = findChild<QComboBox *>();
    auto *line = findChild<QLineEdit *>();
    if (line) {
        line->clear();
        line->setPlaceholderText(PropertyTexts::mixed());
    } else if (box) {
        box->setPlaceholderText(PropertyTexts::mixed());
        box->setCurrentIndex(-1); // the choice of the first one is not that of all
    }
    setTouched(false); // else leaving the row would empty them all
}

void ValueEditor::showError(const QString &reason)
{
    m_error = reason;
    tell(reason, QColor(0xfd, 0xd9, 0xd5));
}

void ValueEditor::showRemark(const QString &text)
{
    tell(text, QColor(0xff, 0xf1, 0xcf));
}

void ValueEditor::tell(const QString &text, const QColor &ground)
{
    QPalette colors;
    if (!text.isEmpty())
        colors.setColor(QPalette::Base, ground);
    for (QWidget *part : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        part->setPalette(colors);
    if (!isVisible())
        return;
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(mapToGlobal(QPoint(0, height())), text, this);
}

void ValueEditor::finish()
{
    touch();
    emit finished();
}

void ValueEditor::takeText(const QString &given)
{
    if (given == text())
        return;
    setText(given);
    finish();
}

} // namespace Editor
