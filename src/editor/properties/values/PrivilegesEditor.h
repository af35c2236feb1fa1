#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// A set of rights, ticked in a menu that stays open.
class PrivilegesEditor : public ValueEditor
{
    Q_OBJECT

public:
    PrivilegesEditor(const ValueContext &context, QWidget *parent);
    ~PrivilegesEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void openList();
    void show();

    QLineEdit *m_line;
    QString m_text;
};

} // namespace Editor
