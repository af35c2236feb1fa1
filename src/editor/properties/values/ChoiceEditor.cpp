#include "editor/properties/values/ChoiceEditor.h"

#include "nodes/model/properties/PropertyDescriptor.h"

#include <QComboBox>

namespace Editor {

ChoiceEditor::ChoiceEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_box(new QComboBox(this))
{
    for (const Nodes::PropertyChoice &choice : descriptor().choices)
        m_box->addItem(QString::fromStdString(choice.nameRu), QString::fromStdString(choice.token));
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMain(m_box);
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, [this] { finish(); });
}

ChoiceEditor::~ChoiceEditor() = default;

// A code that is no choice is kept as it is.
void ChoiceEditor::setText(const QString &text)
{
    int place = m_box->findData(text);
    if (place < 0) {
        m_box->addItem(text, text);
        place = m_box->count() - 1;
    }
    m_box->setCurrentIndex(place);
}

QString ChoiceEditor::text() const
{
    return m_box->currentData().toString();
}

} // namespace Editor
