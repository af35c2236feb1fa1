#include "widgets/eventlist/EventListLook.h"

#include "widgets/charts/menus/TouchMenu.h"

namespace Widgets {

// What is latched differs by a thick dark frame, not by a shade alone.
QString EventListLook::toolBarStyle()
{
    return QStringLiteral(
        "QToolBar { background: transparent; border: none; padding: 0; spacing: 8px; }"
        "QToolButton { background: #f4f6f7; color: #20262c; border: 1px solid #8a949b;"
        " border-radius: 4px; padding: 0 12px; font-size: 17px; }"
        "QToolButton:hover { border-color: #37424b; }"
        "QToolButton:pressed { background: #b4bdc4; }"
        "QToolButton:checked { background: #cfd6db; border: 3px solid #37424b; }"
        "QToolButton:disabled { background: #dde0e2; color: #59636b; }");
}

QString EventListLook::partsStyle()
{
    return QStringLiteral(
        "QLineEdit { background: #ffffff; color: #20262c; border: 1px solid #6b757d;"
        " border-radius: 4px; padding: 0 8px; font-size: 17px; min-height: 38px; }"
        "QLineEdit:focus { border: 2px solid #37424b; padding: 0 7px; }"
        "QPushButton { background: #f4f6f7; color: #20262c; border: 1px solid #8a949b;"
        " border-radius: 4px; padding: 0 12px; font-size: 17px; min-height: 38px; }"
        "QPushButton:hover, QPushButton:focus { border-color: #37424b; }"
        "QPushButton:pressed { background: #b4bdc4; }"
        "QPushButton[isLatched=\"true\"], QPushButton:checked { background: #cfd6db;"
        " border: 3px solid #37424b; padding: 0 10px; min-height: 34px; }"
        "QTableView { background: #ffffff; color: #000000; selection-background-color: #4a535b;"
        " selection-color: #ffffff; }"
        "QHeaderView::section { padding: 0 8px; }"
        "QPushButton:disabled { background: #dde0e2; color: #59636b; }"
        "QLabel { color: #20262c; font-size: 17px; }"
        "QPlainTextEdit { background: #ffffff; color: #20262c; border: 1px solid #6b757d;"
        " font-size: 17px; }");
}

QWidget *EventListLook::desktopWindowOf(const QWidget *widget)
{
    return TouchMenu::windowOf(widget);
}

} // namespace Widgets
