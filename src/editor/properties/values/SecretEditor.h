#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// A password: it is set or taken away, never shown. What is kept is its hash.
class SecretEditor : public ValueEditor
{
    Q_OBJECT

public:
    SecretEditor(const ValueContext &context, QWidget *parent);
    ~SecretEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void change();

    QLineEdit *m_line;
    QString m_text; ///< the hash
};

} // namespace Editor
