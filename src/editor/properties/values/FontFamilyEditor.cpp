#include "editor/properties/values/FontFamilyEditor.h"

#include <QFontComboBox>
#include <QLineEdit>

namespace Editor {

FontFamilyEditor::FontFamilyEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_box(new QFontComboBox(this))
{
    setMain(m_box);
    connect(m_box, QOverload<int>::of(&QFontComboBox::activated), this, [this] { finish(); });
    connect(m_box->lineEdit(), &QLineEdit::textEdited, this, [this] { touch(); });
}

FontFamilyEditor::~FontFamilyEditor() = default;

void FontFamilyEditor::setText(const QString &text)
{
    m_box->setEditText(text);
}

QString FontFamilyEditor::text() const
{
    return m_box->currentText();
}

} // namespace Editor
