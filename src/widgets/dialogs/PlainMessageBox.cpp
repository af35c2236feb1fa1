#include "widgets/dialogs/PlainMessageBox.h"

namespace Widgets {

PlainMessageBox::PlainMessageBox(Icon icon, const QString &title, const QString &text,
                                 StandardButtons buttons, QWidget *parent, Qt::WindowFlags flags)
    : QMessageBox(icon, title, QString(), buttons, parent, flags)
{
    setTextFormat(Qt::PlainText);
    setText(text);
}

QMessageBox::StandardButton PlainMessageBox::ask(Icon icon, const QString &title,
                                                 const QString &text, StandardButtons buttons,
                                                 QWidget *parent, StandardButton preset)
{
    PlainMessageBox box(icon, title, text, buttons, parent);
    box.setDefaultButton(preset);
    return StandardButton(box.exec());
}

} // namespace Widgets
