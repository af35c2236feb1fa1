#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// A colour: its text, the colours that the project has already, any other one, none.
class ColorEditor : public ValueEditor
{
    Q_OBJECT

public:
    ColorEditor(const ValueContext &context, QWidget *parent);
    ~ColorEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void openColors();
    void choose();
    void take(const QString &text);

    QLineEdit *m_line;
};

} // namespace Editor
