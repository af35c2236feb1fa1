#include "editor/properties/values/SharedTextEditor.h"

#include "editor/properties/values/ProjectTexts.h"

#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>

namespace Editor {

SharedTextEditor::SharedTextEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_box(new QComboBox(this))
{
    m_box->setEditable(true);
    m_box->setInsertPolicy(QComboBox::NoInsert);
    m_box->addItems(projectTexts(context.project, descriptor()));
    m_box->setFrame(false);
    m_box->completer()->setFilterMode(Qt::MatchContains);
    m_box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    setMain(m_box);
    connect(m_box, &QComboBox::editTextChanged, this, [this] { touch(); });
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, [this] { finish(); });
}

SharedTextEditor::~SharedTextEditor() = default;

void SharedTextEditor::setText(const QString &text)
{
    const QSignalBlocker block(m_box);
    m_box->setEditText(text);
}

QString SharedTextEditor::text() const
{
    return m_box->currentText();
}

} // namespace Editor
