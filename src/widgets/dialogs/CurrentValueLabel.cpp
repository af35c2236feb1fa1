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
    QFont own = font();
    own.setPixelSize(fontPixels);
    setFont(own);
    hide();
}

void CurrentValueLabel::showValue(const QString &text)
{
    setText(QStringLiteral("Сейчас: ") + text);
    setVisible(!text.isEmpty());
}

} // namespace Widgets
