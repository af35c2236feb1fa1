#include "editor/properties/values/LinksEditor.h"

#include "editor/properties/PropertyTexts.h"

#include <QLineEdit>
#include <QToolButton>

namespace Editor {

LinksEditor::LinksEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setReadOnly(true);
    m_line->setFrame(false);
    setMain(m_line);
    QToolButton *button = addButton(QStringLiteral("…"), QStringLiteral("Изменить список"));
    connect(button, &QToolButton::clicked, this, &LinksEditor::windowRequested);
}

LinksEditor::~LinksEditor() = default;

void LinksEditor::setText(const QString &text)
{
    m_text = text;
    m_line->setText(PropertyTexts::shown(descriptor(), text, context().project));
}

QString LinksEditor::text() const
{
    return m_text;
}

} // namespace Editor
