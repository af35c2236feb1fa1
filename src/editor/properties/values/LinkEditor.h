#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// A node of the project: its path, a window to pick another one, the way to it.
class LinkEditor : public ValueEditor
{
    Q_OBJECT

public:
    LinkEditor(const ValueContext &context, QWidget *parent);
    ~LinkEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void pick();

    QLineEdit *m_line;
    QString m_text; ///< id
};

} // namespace Editor
