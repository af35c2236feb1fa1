#include "editor/properties/values/NumberEditor.h"

#include "editor/properties/values/NumberSpin.h"

namespace Editor {

NumberEditor::NumberEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_spin(new NumberSpin(descriptor(), this))
{
    setMain(m_spin);
    connect(m_spin, &NumberSpin::typed, this, [this] { touch(); });
    connect(m_spin, &NumberSpin::stepped, this, [this] {
        touch();
        emit stepped();
    });
}

NumberEditor::~NumberEditor() = default;

void NumberEditor::setText(const QString &text)
{
    m_spin->setNumber(text);
}

QString NumberEditor::text() const
{
    return m_spin->number();
}

} // namespace Editor
