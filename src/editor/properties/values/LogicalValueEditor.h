#pragma once

#include "editor/properties/values/ValueEditor.h"

class QComboBox;

namespace Editor {

/// Text of a value of the signal that a node is about, where that signal is yes or no.
class LogicalValueEditor : public ValueEditor
{
    Q_OBJECT

public:
    /// Whether the signal of the context's node is yes or no.
    static bool fits(const ValueContext &context);

    LogicalValueEditor(const ValueContext &context, QWidget *parent);
    ~LogicalValueEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    QComboBox *m_box;
};

} // namespace Editor
