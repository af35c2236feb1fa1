#include "widgets/dialogs/KeyButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace Widgets {

KeyButton::KeyButton(QWidget *parent) : QPushButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAutoDefault(false);
}

void KeyButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.replace(QLatin1Char('&'), QLatin1String("&&"));
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}

} // namespace Widgets
