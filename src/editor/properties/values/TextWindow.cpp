#include "editor/properties/values/TextWindow.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

TextWindow::TextWindow(QWidget *parent) : QDialog(parent), m_edit(new QPlainTextEdit(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    m_edit->setAccessibleName(QStringLiteral("Текст"));
    m_edit->setTabChangesFocus(true);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *take =
        buttons->addButton(QStringLiteral("Применить"), QDialogButtonBox::AcceptRole);
    take->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_Return));
    take->setToolTip(QStringLiteral("Ctrl+Enter"));
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_edit);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(640, 400);
}

TextWindow::~TextWindow() = default;

void TextWindow::setText(const QString &text)
{
    m_edit->setPlainText(text);
}

QString TextWindow::text() const
{
    return m_edit->toPlainText();
}

} // namespace Editor
