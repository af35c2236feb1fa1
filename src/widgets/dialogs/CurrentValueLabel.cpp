#include "widgets/dialogs/CurrentValueLabel.h"

namespace Widgets {

namespace {

constexpr int fontPixels = 16;

} // namespace

CurrentValueLabel::CurrentValueLabel(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("lblCurrent"));
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setWordWrap(true);
    QFont own = font();
    own.setPixelSize(fontPixels);
    setFont(own);
    hide();
}

void CurrentValueLabel::showValue(const QString &text)
{
    m_value = text;
    compose();
}

void CurrentValueLabel::showHint(const QString &hint)
{
    m_hint = hint;
    compose();
}

void CurrentValueLabel::compose()
{
    const QString value = m_value.isEmpty() ? QString() : QStringLiteral("Сейчас: ") + m_value;
    setText(m_hint.isEmpty() ? value : value + QLatin1Char('\n') + m_hint);
    setVisible(!text().isEmpty());
}

} // namespace Widgets
