#pragma once

#include "editor/properties/values/ValueEditor.h"

namespace Editor {

class NumberSpin;

/// A number; spinning it is one undoable step.
class NumberEditor : public ValueEditor
{
    Q_OBJECT

public:
    NumberEditor(const ValueContext &context, QWidget *parent);
    ~NumberEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    NumberSpin *m_spin;
};

} // namespace Editor
