#include "editor/properties/values/TextWindow.h"

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace Editor {

TextWindow::TextWindow(QPlainTextEdit *edit, QWidget *parent) : QDialog(parent), m_edit(edit)
{
    setAttribute(Qt::WA_DeleteOnClose);
    m_edit->setParent(this);
    m_edit->setAccessibleName(QStringLiteral("Текст"));
}

TextWindow::TextWindow(QWidget *parent) : TextWindow(new QPlainTextEdit, parent)
{
    m_edit->setTabChangesFocus(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_edit);
    layout->addWidget(makeButtons());
    resize(640, 400);
}

TextWindow::~TextWindow() = default;

QDialogButtonBox *TextWindow::makeButtons()
{
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *take =
        buttons->addButton(QStringLiteral("Применить"), QDialogButtonBox::AcceptRole);
    take->setToolTip(QStringLiteral("Ctrl+Enter"));
    take->setDefault(true);
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(Qt::CTRL + key), this), &QShortcut::activated, this,
                &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

void TextWindow::setText(const QString &text)
{
    m_edit->setPlainText(text);
    m_given = this->text(); // ends of lines are the editor's own
}

QString TextWindow::text() const
{
    return m_edit->toPlainText();
}

void TextWindow::reject()
{
    if (text() == m_given)
        return QDialog::reject();
    const QPointer<QMessageBox> ask = new QMessageBox(
        QMessageBox::Question, windowTitle(), QStringLiteral("Текст изменён. Применить изменения?"),
        QMessageBox::NoButton, this);
    QPushButton *take = ask->addButton(QStringLiteral("Применить"), QMessageBox::AcceptRole);
    QPushButton *drop =
        ask->addButton(QStringLiteral("Не применять"), QMessageBox::DestructiveRole);
    ask->setEscapeButton(ask->addButton(QStringLiteral("Вернуться"), QMessageBox::RejectRole));
    ask->setDefaultButton(take);
    ask->exec();
    if (!ask) // the row of the text went meanwhile, and this with it
        return;
    const QAbstractButton *answer = ask->clickedButton();
    delete ask;
    if (answer == take)
        accept();
    else if (answer == drop)
        QDialog::reject();
}

} // namespace Editor
