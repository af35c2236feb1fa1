#pragma once

#include "editor/properties/values/ValueEditor.h"

class QComboBox;

namespace Editor {

/// One of several words.
class ChoiceEditor : public ValueEditor
{
    Q_OBJECT

public:
    ChoiceEditor(const ValueContext &context, QWidget *parent);
    ~ChoiceEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    QComboBox *m_box;
};

} // namespace Editor
