#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// A combination of keys as a button of an element takes it: typed, or pressed in a window.
class KeysEditor : public ValueEditor
{
    Q_OBJECT

public:
    KeysEditor(const ValueContext &context, QWidget *parent);
    ~KeysEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void check();
    void openWindow();

    QLineEdit *m_line;
};

} // namespace Editor
