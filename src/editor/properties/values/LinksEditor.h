#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// Names of the nodes of a list; the list itself has a window (LinksWindow), asked for by a button.
class LinksEditor : public ValueEditor
{
    Q_OBJECT

public:
    LinksEditor(const ValueContext &context, QWidget *parent);
    ~LinksEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

signals:
    void windowRequested();

private:
    QLineEdit *m_line;
    QString m_text; ///< ids
};

} // namespace Editor
