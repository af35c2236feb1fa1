#include "editor/properties/values/BoolEditor.h"

#include <QCheckBox>

namespace Editor {

BoolEditor::BoolEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_box(new QCheckBox(this))
{
    setMain(m_box);
    connect(m_box, &QCheckBox::clicked, this, [this] { finish(); });
}

BoolEditor::~BoolEditor() = default;

void BoolEditor::setText(const QString &text)
{
    m_box->setChecked(text == QLatin1String("true"));
}

QString BoolEditor::text() const
{
    return m_box->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace Editor
