#include "widgets/dialogs/DialogLook.h"

#include <QAbstractButton>
#include <QIcon>

namespace Widgets {

namespace {

constexpr const char *keyStyle =
    "QLineEdit { background: #ffffff; border: 1px solid #6b757d; border-radius: 3px;"
    " padding: 0 8px; selection-background-color: #4a535b; selection-color: #ffffff; }"
    "QLineEdit:focus { border: 2px solid #37424b; padding: 0 7px; }"
    "QAbstractItemView { background: #ffffff; color: #20262c;"
    " selection-background-color: #4a535b; selection-color: #ffffff; }"
    "QPushButton { background: #f4f6f7; color: #20262c; border: 1px solid #8a949b;"
    " border-radius: 4px; }"
    "QPushButton[isControlKey=\"true\"] { background: #e3e7ea; }"
    "QPushButton:hover { border-color: #37424b; }"
    "QPushButton:focus, QPushButton:default { border: 2px solid #37424b; }"
    "QPushButton:pressed { background: #b4bdc4; }"
    "QPushButton:checked { background: #37424b; color: #ffffff; }"
    "QPushButton:disabled { background: #dde0e2; color: #7d868d; border-color: #b4bdc4; }";

QPalette greys()
{
    const QColor text(0x20, 0x26, 0x2c);
    QPalette palette(QColor(0xe3, 0xe7, 0xea), QColor(0xd5, 0xd9, 0xdc));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x4a, 0x53, 0x5b));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

void ApplyDialogLook(QWidget &dialog)
{
    dialog.setPalette(greys());
    dialog.setAutoFillBackground(true); // also where the dialog is hosted by another window
    dialog.setStyleSheet(QLatin1String(keyStyle));
}

void MakeLegible(QWidget &widget)
{
    constexpr int points = 11;
    QFont font = widget.font();
    if (font.pointSize() >= points)
        return;
    font.setPointSize(points);
    widget.setFont(font);
}

void MakeTouchable(QAbstractButton &button)
{
    constexpr int margins = 32;
    button.ensurePolished();
    MakeLegible(button);
    button.setIcon(QIcon()); // the desktop's own would differ from panel to panel
    const int text = button.fontMetrics().horizontalAdvance(button.text());
    button.setMinimumSize(TouchButton.expandedTo(QSize(text + margins, 0)));
}

} // namespace Widgets
