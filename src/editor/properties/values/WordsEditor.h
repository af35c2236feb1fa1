#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// Words out of a given set, in an order: ticked and moved in a window.
class WordsEditor : public ValueEditor
{
    Q_OBJECT

public:
    WordsEditor(const ValueContext &context, QWidget *parent);
    ~WordsEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void openWindow();

    QLineEdit *m_line;
    QString m_text{};
};

} // namespace Editor
