#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;
class QToolButton;

namespace Editor {

/// A line of text. Several lines are edited in a window of their own; so is what has them already.
class StringEditor : public ValueEditor
{
    Q_OBJECT

public:
    StringEditor(const ValueContext &context, QWidget *parent);
    ~StringEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    bool isMultiLine() const;
    void openWindow();

    QLineEdit *m_line;
    QToolButton *m_button;
    QString m_text; ///< what the line cannot show: several lines
};

} // namespace Editor
