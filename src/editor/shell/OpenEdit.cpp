#include "editor/shell/OpenEdit.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextEdit>

namespace Editor {

namespace {

bool isInView(const QWidget &field)
{
    const QWidget *viewport = field.parentWidget();
    const auto *view =
        viewport ? qobject_cast<const QAbstractItemView *>(viewport->parentWidget()) : nullptr;
    return view && view->viewport() == viewport;
}

} // namespace

bool OpenEdit::isPossible()
{
    const QWidget *field = QApplication::focusWidget();
    return field &&
           (isInView(*field) || qobject_cast<const QLineEdit *>(field) ||
            qobject_cast<const QAbstractSpinBox *>(field) ||
            qobject_cast<const QComboBox *>(field) || qobject_cast<const QPlainTextEdit *>(field) ||
            qobject_cast<const QTextEdit *>(field));
}

void OpenEdit::take()
{
    if (!isPossible())
        return;
    const QPointer<QWidget> field = QApplication::focusWidget();
    field->clearFocus();
    if (field && field->isVisible() && !QApplication::focusWidget())
        field->setFocus(Qt::OtherFocusReason);
}

} // namespace Editor
