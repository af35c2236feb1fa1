#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Editor {

/// A file of the project: its name, a window to pick one, which may be brought into the project.
class ResourceEditor : public ValueEditor
{
    Q_OBJECT

public:
    ResourceEditor(const ValueContext &context, QWidget *parent);
    ~ResourceEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void pick();
    void take(const QString &path);
    void bringIn(const QString &path);

    QLineEdit *m_line;
};

} // namespace Editor
