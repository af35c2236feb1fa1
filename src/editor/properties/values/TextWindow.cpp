#include "editor/properties/values/TextWindow.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

TextWindow::TextWindow(QWidget *parent) : QDialog(parent), m_edit(new QPlainTextEdit(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    m_edit->setAccessibleName(QStringLiteral("Текст"));
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

void TextWindow::setScript(bool isScript)
{
    m_edit->setLineWrapMode(isScript ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    m_edit->setTabChangesFocus(!isScript);
    if (!isScript)
        return;
    m_edit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_edit->setTabStopDistance(4 * m_edit->fontMetrics().horizontalAdvance(QLatin1Char(' ')));
}

void TextWindow::setText(const QString &text)
{
    m_edit->setPlainText(text);
}

QString TextWindow::text() const
{
    return m_edit->toPlainText();
}

} // namespace Editor
